// Values of controls, from what people write.
#pragma once

#include <filesystem>
#include <string_view>
#include <variant>
#include <vector>

#include "scene/control.h"
#include "scene/gradient/gradient_stops.h"

namespace flumo::scene {

/// A number in the unit of the panel, the stops of a gradient, or a layer's picture file (empty: none).
using ControlValue = std::variant<double, std::vector<Stop>, std::filesystem::path>;

/// `value` itself, if the control takes it: within the valid range as registered, and whole where only
/// whole numbers exist. Throws Failure (usage) with what was expected.
double checked_number(const Control& control, double value);

/// Reads a value by the control's kind: numbers for sliders and angles (degrees), a choice by name
/// (whatever the case) or number for popups, on/off, true/false or 1/0 for checkboxes, any spelling of a
/// gradient (gradient_text.h), a file name or "none" for layers; file names are relative to `folder`.
/// Throws Failure (usage) with what was expected.
ControlValue parse_control_value(const Control& control, std::string_view text,
                                 const std::filesystem::path& folder = {});

}  // namespace flumo::scene
