// The value of a gradient control: colour stops in order of position, and the record that a host
// handle holds of them.
#pragma once

#include <cmath>
#include <cstdint>
#include <map>

#include "effect_api/types.h"

namespace flumo {

/// How the colour runs from a stop to the next one on its right.
enum StopKind : int32_t {
    kStopLinear = 0,  // straight blend
    kStopSin = 1,     // eased blend
    kStopEdge = 2     // holds the colour until the next stop
};

/// One stop without its position, which is its key in the map. Colours are straight, nominally 0 to 1,
/// and never clamped. `kind` may hold numbers outside StopKind when it comes from a stored project;
/// those blend as linear.
struct GradientStop {
    int32_t kind = kStopSin;
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 1.0F;

    bool operator==(const GradientStop&) const = default;
};

/// Less-than, with NaN ordered after every number: stored bytes may hold a NaN, and the map needs a strict
/// weak order.
struct PositionLess {
    bool operator()(float left, float right) const {
        return left < right || (std::isnan(right) && !std::isnan(left));
    }
};

/// Stops by position: 0 is the ramp's left end, 1 its right; positions outside are kept. Two stops are
/// at the same position only when the floats are equal.
using GradientStopMap = std::map<float, GradientStop, PositionLess>;

/// The eight bytes of a gradient's host handle. The map is on this module's heap, so a byte copy of
/// the handle refers to the same stops.
struct GradientRecord {
    GradientStopMap* stops;
};
static_assert(sizeof(GradientRecord) == 8);

using GradientHandle = PF_Handle;

/// White at 0 and white at 1, both kStopSin: what every new gradient starts as.
GradientStopMap WhiteGradient();

}  // namespace flumo
