// The gradient between two keyframes.
#pragma once

#include "effect/gradient/value/gradient.h"

namespace flumo {

/// Blends `left` (t = 0) with `right` (t = 1); t is not clamped. Stops are paired by their order, never
/// by nearness; surplus stops of one side pair with the other side's last stop. Positions and colours
/// blend, the kind is the left stop's. Against a side without stops the other's positions stay, its
/// colours blend with (0, 0, 0, 1), and the kind is kStopSin where the left is the empty side.
/// Positions that come out equal leave one stop, the later one.
GradientStopMap InterpolateGradients(const GradientStopMap& left, const GradientStopMap& right, double t);

}  // namespace flumo
