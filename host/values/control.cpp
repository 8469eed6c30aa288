#include "host/values/control.h"

#include <algorithm>
#include <sstream>

namespace flumo::host {

namespace {

struct KindRow {
    PF_ParamType type;
    ControlKind kind;
    std::string_view name;
};

constexpr KindRow kKinds[] = {
    {PF_Param_LAYER, ControlKind::kLayer, "layer"},
    {PF_Param_SLIDER, ControlKind::kSlider, "slider"},
    {PF_Param_ANGLE, ControlKind::kAngle, "angle"},
    {PF_Param_CHECKBOX, ControlKind::kCheckbox, "checkbox"},
    {PF_Param_POPUP, ControlKind::kPopup, "popup"},
    {PF_Param_FLOAT_SLIDER, ControlKind::kFloatSlider, "float slider"},
    {PF_Param_ARBITRARY_DATA, ControlKind::kArbitrary, "arbitrary data"},
    {PF_Param_GROUP_START, ControlKind::kGroupStart, "group start"},
    {PF_Param_GROUP_END, ControlKind::kGroupEnd, "group end"},
};

ControlKind kind_of(PF_ParamType type) {
    const auto* row = std::ranges::find(kKinds, type, &KindRow::type);
    return row == std::end(kKinds) ? ControlKind::kOther : row->kind;
}

std::vector<std::string> split_choices(const char* names) {
    std::vector<std::string> choices;
    std::istringstream text(names ? names : "");
    for (std::string choice; std::getline(text, choice, '|');)
        choices.push_back(choice);
    return choices;
}

std::string bounded_text(const A_char (&text)[32]) {
    return {text, std::find(text, text + 32, '\0')};
}

void read_numbers(const PF_ParamDef& definition, Control& control) {
    const PF_ParamDefUnion& u = definition.u;
    if (control.kind == ControlKind::kSlider) {
        control.valid = {double(u.sd.valid_min), double(u.sd.valid_max)};
        control.slider = {double(u.sd.slider_min), double(u.sd.slider_max)};
        control.default_value = u.sd.dephault;
    } else if (control.kind == ControlKind::kFloatSlider) {
        control.valid = {u.fs_d.valid_min, u.fs_d.valid_max};
        control.slider = {u.fs_d.slider_min, u.fs_d.slider_max};
        control.default_value = u.fs_d.dephault;
        control.percent = (u.fs_d.display_flags & PF_ValueDisplayFlag_PERCENT) != 0;
        control.precision = u.fs_d.precision;
    } else if (control.kind == ControlKind::kAngle) {
        control.default_value = u.ad.dephault / 65536.0;
    } else if (control.kind == ControlKind::kCheckbox) {
        control.valid = control.slider = {0, 1};
        control.default_value = u.bd.dephault;
    } else if (control.kind == ControlKind::kPopup) {
        control.valid = control.slider = {1, double(u.pd.num_choices)};
        control.default_value = u.pd.dephault;
        control.choices = split_choices(u.pd.u.namesptr);
    }
}

}  // namespace

std::string_view kind_name(ControlKind kind) {
    const auto* row = std::ranges::find(kKinds, kind, &KindRow::kind);
    return row == std::end(kKinds) ? "other" : row->name;
}

bool Control::has_value() const {
    return kind != ControlKind::kGroupStart && kind != ControlKind::kGroupEnd && kind != ControlKind::kOther;
}

bool Control::is_number() const {
    return has_value() && kind != ControlKind::kLayer && kind != ControlKind::kArbitrary;
}

bool Control::has_custom_ui() const {
    return (definition.ui_flags & PF_PUI_CONTROL) != 0;
}

Control read_control(const PF_ParamDef& definition, int index, const std::vector<std::string>& open_groups) {
    Control control;
    control.index = index;
    control.disk_id = definition.uu.id;
    control.kind = kind_of(definition.param_type);
    control.name = bounded_text(definition.name);
    control.group = open_groups;
    control.can_vary = (definition.flags & PF_ParamFlag_CANNOT_TIME_VARY) == 0;
    control.definition = definition;
    read_numbers(definition, control);
    return control;
}

}  // namespace flumo::host
