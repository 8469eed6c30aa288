// Colours by the names of CSS.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scene/gradient/gradient_stops.h"

namespace flumo::scene {

/// One of the 148 names of CSS Color Module Level 4, or "transparent", whatever its case.
std::optional<Colour> colour_from_name(std::string_view name);

/// The name that was probably meant, if there is one.
std::optional<std::string> nearest_colour_name(std::string_view word);

}  // namespace flumo::scene
