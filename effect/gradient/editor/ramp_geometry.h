// The position of the ramp and its markers in the control's frame.
#pragma once

#include "effect_api/types.h"

namespace flumo {

/// All in panel pixels. The ramp keeps six pixels free at each side, the markers take the lowest
/// sixteen rows. Too small a frame gives a width or height below one.
struct RampGeometry {
    A_long left;
    A_long top;
    A_long right;
    A_long bottom;
    A_long x0;         // pixel of ramp position 0
    A_long w;          // ramp width; position 1 is at x0 + w
    A_long markerTop;  // first row of the marker strip
    A_long h;          // ramp height
};

/// Geometry of a control whose frame spans left to right and top to bottom.
RampGeometry MakeRampGeometry(const PF_Rect& frame);

}  // namespace flumo
