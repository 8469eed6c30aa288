// The noise generators that both noise popups choose from.
#pragma once

#include <cstdint>

namespace flumo {

/// The values of the popups, as the main program's noiseByType compares them.
enum class NoiseGenerator : int32_t { kFluid = 1, kVoronoi = 2, kSmoke = 3, kWorley = 4 };

/// Generators are numbered from 1 to this.
inline constexpr int kNoiseGeneratorCount = 4;

/// How many choices the popups declare. Values without a generator are legal and draw a noise of 0.
inline constexpr int16_t kNoiseChoiceCount = 5;

/// The row of text with the generators' names.
inline constexpr int32_t kNoiseChoicesRow = 13;

}  // namespace flumo
