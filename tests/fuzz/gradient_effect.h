// The gradient control by itself, as an effect: what there is to instrument stays small.
#pragma once

#include "host/module.h"

namespace flumo::test {

inline constexpr int kGradientIndex = 1;

/// An effect with one control, and nothing but its callbacks and events.
host::Module GradientEffect();

}  // namespace flumo::test
