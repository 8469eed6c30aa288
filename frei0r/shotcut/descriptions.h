// What Shotcut reads about the filter, written from the parameters that it registers. The panel itself is
// ui.qml.
#pragma once

#include <span>
#include <string>

#include "frei0r/parameters.h"

namespace flumo::frei0r {

/// The filter's entry in Shotcut's list, with the parameters that take keyframes.
std::string shotcut_metadata(std::span<const Parameter> parameters);

/// The rows of the panel as a JavaScript library: `texts` and `controls`. Numbers are shown in the control's
/// own unit.
std::string shotcut_controls(std::span<const Parameter> parameters);

}  // namespace flumo::frei0r
