// The spellings of a gradient on a command line.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "scene/gradient/gradient_stops.h"

namespace flumo::scene {

/// Reads the stops from one of these spellings:
///   0:#000000,0.5:edge:#ff8800,1:1/0.5/0/1    position[:kind]:colour; kind linear, sin (default) or
///                                             edge; colour #rgb, #rrggbb, #rrggbbaa or r/g/b[/a]
///                                             or a colour of CSS; in a file also one stop a line
///   linear-gradient(to right, gold, red 50%)  CSS (gradient/css_gradient.h)
///   GIMP Gradient ...                         the contents of a .ggr file (gradient/gimp_gradient.h)
///   Gradient t 0 sin  r 0 g 0 b 0 a 1 ...     the text form of the effect
///   0200000000000000...                       the stored form of the effect in hexadecimal digits
///   @FILE                                     a file that holds one of the above, a relative name being
///                                             relative to `folder`
/// Throws Failure (usage) with what was expected, or (unreadable input) for the file.
std::vector<Stop> parse_gradient(std::string_view text, const std::filesystem::path& folder = {});

}  // namespace flumo::scene
