// The outline of a stop's marker. Each half shows how the colour runs on that side of the stop: linear
// is a point, sin a curve, edge a square corner.
#pragma once

#include <array>
#include <span>

#include "effect/gradient/value/gradient.h"
#include "effect_api/drawbot.h"

namespace flumo {

/// One piece of the outline in panel pixels from the marker's upper middle. A line ends at the last
/// point; a curve is a cubic with the first two as its control points.
struct MarkerStep {
    bool isCurve;
    std::array<DRAWBOT_PointF32, 3> points;
};

/// From the upper middle down the right side, for the stop's own kind. Empty for a kind that is none.
std::span<const MarkerStep> MarkerRightHalf(int32_t kind);

/// From the lower middle up the left side, for the kind of the stop before.
std::span<const MarkerStep> MarkerLeftHalf(int32_t kind);

}  // namespace flumo
