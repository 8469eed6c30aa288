// Evaluates a gradient at one position; the ramp textures and the panel share these rules.
#pragma once

#include "effect/gradient/value/gradient.h"

namespace flumo {

/// Straight colour as the stops hold it: no clamping, no colour space, not premultiplied.
struct GradientSample {
    float r;
    float g;
    float b;
    float a;
};

/// The colour at position t (0 is the left end, 1 the right; t is neither wrapped nor clamped). Before
/// the first and after the last stop that stop's colour holds; without stops it is (0, 0, 0, 1).
/// `kind`, when given, gets the kind that a stop added at t should have: the end stop's own kind
/// outside the stops, kStopEdge inside an edge segment, else kStopSin. Cannot fail; a NaN among the
/// positions gives (0, 0, 0, 1) beside it.
GradientSample SampleGradient(const GradientStopMap& stops, float t, A_long* kind = nullptr);

/// The same for a locked record.
inline GradientSample SampleGradient(const GradientRecord& gradient, float t, A_long* kind = nullptr) {
    return SampleGradient(*gradient.stops, t, kind);
}

}  // namespace flumo
