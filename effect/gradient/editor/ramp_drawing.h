// Paints a gradient control through the host's drawing suites.
#pragma once

#include "effect/gradient/editor/ramp_geometry.h"
#include "effect/gradient/value/gradient.h"
#include "effect/suites/drawbot_suites.h"
#include "effect_api/suites.h"

namespace flumo {

/// Where and with what to paint. Suites and references stay the host's.
struct RampCanvas {
    const DrawbotSuites& drawbot;
    const PF_HandleSuite1& handles;
    DRAWBOT_SupplierRef supplier;
    DRAWBOT_SurfaceRef surface;
    DRAWBOT_ColorRGBA background;
    DRAWBOT_ColorRGBA outline;
};

/// Paints the background, the ramp's image and one marker for each stop, later stops over earlier ones.
/// Throws DRAWBOT_Exception with the status of the first drawing call that fails and paints nothing after it;
/// throws PF_Err_OUT_OF_MEMORY when the supplier accepts neither pixel layout, or when the pixels get no
/// handle or no lock. What was made is released in any case.
void PaintRamp(const RampCanvas& canvas, const RampGeometry& ramp, const GradientStopMap& stops);

}  // namespace flumo
