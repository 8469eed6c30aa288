// A control as the effect registered it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "effect_api/params.h"

namespace flumo::host {

enum class ControlKind {
    kLayer,
    kSlider,
    kAngle,
    kCheckbox,
    kPopup,
    kFloatSlider,
    kArbitrary,
    kGroupStart,
    kGroupEnd,
    kOther,
};

std::string_view kind_name(ControlKind kind);

struct Range {
    double min = 0;
    double max = 0;
};

struct Control {
    /// Place in the host's array; 0 is the input layer, so the first control is 1.
    int index = 0;
    int disk_id = 0;
    ControlKind kind = ControlKind::kOther;
    std::string name;
    /// Names of the groups around it, the outermost first.
    std::vector<std::string> group;
    /// Sliders: as declared. Checkbox: 0 to 1. Popup: 1 to the declared count. Others: 0 to 0.
    Range valid;
    Range slider;
    /// Default of a numeric control; angles in degrees, popups from 1.
    double default_value = 0;
    /// Names of a popup's choices; may be fewer or more than `valid.max`.
    std::vector<std::string> choices;
    bool percent = false;
    /// Digits after the point.
    int precision = 0;
    /// False for a control that cannot have keyframes.
    bool can_vary = true;
    /// The record itself. Text pointers in it belong to the effect.
    PF_ParamDef definition{};

    /// Whether the control has a value that a user can set.
    bool has_value() const;
    /// Whether its value is a number: slider, float slider, angle, checkbox or popup.
    bool is_number() const;
    /// Whether the effect paints it and wants its events.
    bool has_custom_ui() const;
};

/// Reads what add_param was given. `open_groups` are the names of the groups that enclose the control.
Control read_control(const PF_ParamDef& definition, int index, const std::vector<std::string>& open_groups);

}  // namespace flumo::host
