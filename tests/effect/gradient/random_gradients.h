// Gradients and floats by chance, the same ones in every run.
#pragma once

#include <cstdint>
#include <random>

#include "effect/gradient/value/gradient.h"

namespace flumo::test {

/// `count` stops of distinct colours at multiples of 1/64 between -0.25 and 1.25, of all kinds and of two
/// that are none. Fewer than `count` where positions collide.
inline GradientStopMap RandomGradient(std::mt19937& random, int count) {
    std::uniform_int_distribution<int> position(-16, 80);
    std::uniform_int_distribution<int32_t> kind(-1, 3);
    std::uniform_real_distribution<float> colour(-0.5F, 1.5F);
    GradientStopMap stops;
    for (int i = 0; i < count; ++i) {
        stops[static_cast<float>(position(random)) / 64.0F] = {kind(random), colour(random), colour(random),
                                                               colour(random), colour(random)};
    }
    return stops;
}

/// Calls `check` with 200 gradients of 0 to 9 stops.
template <typename Check>
void ForRandomGradients(const Check& check) {
    std::mt19937 random(20240607);
    for (int i = 0; i < 200; ++i)
        check(RandomGradient(random, i % 10), random);
}

}  // namespace flumo::test
