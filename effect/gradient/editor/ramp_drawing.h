// Paints a gradient control through the host's drawing suites.
#pragma once

#include "effect/gradient/editor/ramp_geometry.h"
#include "effect/gradient/value/gradient.h"
#include "effect/suites/drawbot_suites.h"
#include "effect_api/suites.h"

namespace flumo {

/// Where and with what to paint. Everything belongs to the host and is only borrowed.
struct RampCanvas {
    const DrawbotSuites& drawbot;
    const PF_HandleSuite1& handles;
    DRAWBOT_SupplierRef supplier;
    DRAWBOT_SurfaceRef surface;
    DRAWBOT_ColorRGBA background;
    DRAWBOT_ColorRGBA outline;
};

/// Paints the background, the ramp's image and one marker for each stop, later stops over earlier ones.
/// Returns the first failing call's status and stops painting there; PF_Err_OUT_OF_MEMORY when the
/// supplier takes neither pixel layout or the pixels get no handle. Throws DRAWBOT_Exception when a
/// drawing object cannot be made or given back and PF_Err 4 when the pixels cannot be locked. Whatever
/// was made is given back on every way out.
PF_Err PaintRamp(const RampCanvas& canvas, const RampGeometry& ramp, const GradientStopMap& stops);

}  // namespace flumo
