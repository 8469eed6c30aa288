// Whether two gradients count as the same value.
#pragma once

#include "effect/gradient/value/gradient.h"

namespace flumo {

/// True when both have stops at exactly the same positions, of the same kinds, with every colour
/// component within 0.0001. Positions have no tolerance on purpose.
bool GradientsMatch(const GradientStopMap& a, const GradientStopMap& b);

}  // namespace flumo
