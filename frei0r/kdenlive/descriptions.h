// What Kdenlive reads about the plug-ins, written from the same parameters that they register.
#pragma once

#include <span>
#include <string>

#include "frei0r/parameters.h"

namespace flumo::frei0r {

/// The contents of a description file: of a generator for the source, of an effect for the filter. Kdenlive
/// multiplies a number by a factor before it shows it, and can add nothing: controls whose range begins at 0
/// are shown in their own unit, the others as the place of their slider, 0 to 100.
std::string kdenlive_description(PluginKind kind, std::span<const Parameter> parameters);

}  // namespace flumo::frei0r
