// The pixels of the ramp in the panel.
#pragma once

#include <cstdint>

#include "effect/gradient/value/gradient.h"
#include "effect_api/drawbot.h"

namespace flumo {

/// Fills `width` x `height` pixels of four bytes in rows without padding: column i shows the gradient at
/// i / width, opaque whatever the stops' alpha. `layout` is kDRAWBOT_PixelLayout_32RGB (bytes A R G B)
/// or kDRAWBOT_PixelLayout_32BGR (bytes B G R A). A channel above 1 or below 0 wraps at the byte.
void FillRampPixels(const GradientStopMap& stops, A_long width, A_long height, DRAWBOT_PixelLayout layout,
                    void* pixels);

}  // namespace flumo
