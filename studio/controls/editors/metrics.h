// Distances of the windows, on a grid of four pixels.
#pragma once

#include "studio/theme/theme.h"

namespace flumo::studio::metrics {

using studio::kGrid;
inline constexpr int kGap = 2 * kGrid;          // between neighbours in a row
inline constexpr int kMargin = 3 * kGrid;       // between content and edge
inline constexpr int kRowHeight = 7 * kGrid;    // of one editor in a panel
inline constexpr int kLabelWidth = 31 * kGrid;  // of the labels of a panel
inline constexpr int kSmallButton = 4 * kGrid;  // side of a button in a row
inline constexpr int kFieldWidth = 18 * kGrid;  // of a number

}  // namespace flumo::studio::metrics
