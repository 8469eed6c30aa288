// Gradients as CSS writes them.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "scene/gradient/gradient_stops.h"

namespace flumo::scene {

/// `#rgb`, `#rgba`, `#rrggbb`, `#rrggbbaa`, a name of CSS, rgb(), rgba(), hsl() or hsla() with commas or
/// blanks; or nothing for another text.
std::optional<Colour> colour_from_css(std::string_view text);

/// Whether the text begins as linear-gradient( does.
bool is_css_gradient(std::string_view text);

/// Reads `linear-gradient([direction,] colour [P% [P%]], ...)` (CSS Images Module Level 3). A ramp has no
/// direction, so that one is left out; stops without a position are spread evenly; blends are straight.
/// Throws Failure (usage) with what was expected.
std::vector<Stop> parse_css_gradient(std::string_view text);

}  // namespace flumo::scene
