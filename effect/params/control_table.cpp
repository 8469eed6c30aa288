// What must hold between the table of controls, the texts and the host's numbers, checked by the compiler.
#include "effect/params/control_table.h"

#include <algorithm>

#include "effect/identity/effect_string_table.h"
#include "effect_api/params.h"

namespace flumo {
namespace {

consteval std::string_view Text(int32_t row) {
    return EffectStringTable.at(static_cast<size_t>(row)).text;
}

static_assert(static_cast<PF_ParamType>(ControlKind::Layer) == PF_Param_LAYER);
static_assert(static_cast<PF_ParamType>(ControlKind::Slider) == PF_Param_SLIDER);
static_assert(static_cast<PF_ParamType>(ControlKind::Angle) == PF_Param_ANGLE);
static_assert(static_cast<PF_ParamType>(ControlKind::Checkbox) == PF_Param_CHECKBOX);
static_assert(static_cast<PF_ParamType>(ControlKind::Popup) == PF_Param_POPUP);
static_assert(static_cast<PF_ParamType>(ControlKind::FloatSlider) == PF_Param_FLOAT_SLIDER);
static_assert(static_cast<PF_ParamType>(ControlKind::Gradient) == PF_Param_ARBITRARY_DATA);
static_assert(static_cast<PF_ParamType>(ControlKind::GroupStart) == PF_Param_GROUP_START);
static_assert(static_cast<PF_ParamType>(ControlKind::GroupEnd) == PF_Param_GROUP_END);
static_assert(static_cast<PF_ValueDisplayFlags>(Display::Percent) == PF_ValueDisplayFlag_PERCENT);

/// Side labels of checkboxes are empty and choices of popups are not, and the last control's text is the
/// last.
consteval bool TextsFollowControls() {
    int32_t next = control_rows::kFirstNameRow;
    for (const Control& control : kControls) {
        if (control.kind == ControlKind::GroupEnd) continue;
        next = control.nameRow + 1;
        if (control.kind == ControlKind::Checkbox && !Text(next++).empty()) return false;
        if (control.kind == ControlKind::Popup && Text(next++).empty()) return false;
    }
    return next == static_cast<int32_t>(EffectStringTable.size());
}
static_assert(TextsFollowControls());

/// Names fit the host's 32 bytes with their zero, and exist.
consteval bool NamesFit() {
    for (const Control& control : kControls) {
        if (control.kind == ControlKind::GroupEnd) continue;
        const std::string_view name = Text(control.nameRow);
        if (name.empty() || name.size() >= sizeof(PF_ParamDef::name)) return false;
    }
    return true;
}
static_assert(NamesFit());

/// Popups refer to a text of choices, which need not be the row after their name.
consteval bool PopupsHaveChoices() {
    for (const Control& control : kControls) {
        if (control.kind != ControlKind::Popup) continue;
        if (std::ranges::count(Text(control.choicesRow), '|') == 0) return false;
    }
    return true;
}
static_assert(PopupsHaveChoices());

/// The popups name every generator, and nothing else.
static_assert(std::ranges::count(Text(kNoiseChoicesRow), '|') + 1 == kNoiseGeneratorCount);
static_assert(kNoiseGeneratorCount <= kNoiseChoiceCount);
static_assert(ControlOf(Section::NoiseType).choicesRow == ControlOf(Section::NoiseType).nameRow + 1);

consteval bool DiskIdsAreUnique() {
    for (const Control& one : kControls) {
        for (const Control& other : kControls) {
            if (one.section != other.section && one.diskId == other.diskId) return false;
        }
    }
    return true;
}
static_assert(DiskIdsAreUnique());

/// Every group that starts ends, and every control is in a group.
consteval bool GroupsNest() {
    int depth = 0;
    for (const Control& control : kControls) {
        depth += control.kind == ControlKind::GroupStart;
        if (depth == 0) return false;
        depth -= control.kind == ControlKind::GroupEnd;
    }
    return depth == 0;
}
static_assert(GroupsNest());

}  // namespace
}  // namespace flumo
