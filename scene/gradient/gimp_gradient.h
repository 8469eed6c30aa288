// Gradient files of GIMP (.ggr).
#pragma once

#include <string_view>
#include <vector>

#include "scene/gradient/gradient_stops.h"

namespace flumo::scene {

/// Whether the text begins as a gradient file of GIMP does.
bool is_gimp_gradient(std::string_view text);

/// Reads the segments of the file. Straight blends and steps become the same stops; curved blends, blends
/// through hues and midpoints aside of the middle are followed with 16 straight pieces for a segment. Throws
/// Failure (usage), naming the line.
std::vector<Stop> parse_gimp_gradient(std::string_view text);

}  // namespace flumo::scene
