// Logical pixels of the timeline's parts.
#pragma once

#include "studio/theme/theme.h"

namespace flumo::studio {

inline constexpr int kRulerHeight = 7 * kGrid;
inline constexpr int kCachedHeight = kGrid;
inline constexpr int kRowHeight = 6 * kGrid;
inline constexpr int kNamesWidth = 44 * kGrid;
inline constexpr int kEndMargin = 4 * kGrid;
/// Half of a keyframe's diagonal.
inline constexpr double kKeySize = 5;
inline constexpr double kNumberGap = 16 * kGrid;

}  // namespace flumo::studio
