#include "scene/control.h"

#include <algorithm>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/text_list.h"
#include "effect/params/control_table.h"

namespace flumo::scene {
namespace {

// Whole degrees that 16.16 fixed point holds on both sides of zero.
constexpr double kLargestAngle = 32767;

std::string id_of(const host::Control& control) {
    const auto row = std::ranges::find(kControls, control.disk_id, &flumo::Control::diskId);
    if (row == kControls.end()) {
        throw input_failure("the module registers a control that is not Flumo's: disk id " +
                            std::to_string(control.disk_id));
    }
    return std::string(row->id);
}

// What a wrong id may mean: controls whose name in the panel it is, otherwise the nearest id or name.
std::vector<std::string> meant_ids(std::string_view id, const std::vector<Control>& controls) {
    std::vector<std::string> ids;
    std::vector<std::string> words;
    for (const Control& control : controls) {
        if (control.is_group_mark()) continue;
        if (equal_ignoring_case(control.name, id)) ids.push_back(control.id);
        words.insert(words.end(), {control.id, control.name});
    }
    if (!ids.empty()) return ids;
    const auto nearest = nearest_word(id, words);
    if (!nearest) return {};
    for (const Control& control : controls) {
        if (!control.is_group_mark() && (control.id == *nearest || control.name == *nearest))
            ids.push_back(control.id);
    }
    return ids;
}

Failure unknown_control(std::string_view id, const std::vector<Control>& controls) {
    const std::vector<std::string> meant = meant_ids(id, controls);
    return usage_failure("unknown control " + in_quotes(id) +
                         (meant.empty()       ? "; expected an id such as NoiseType or Scale"
                          : meant.size() == 1 ? "; did you mean " + meant.front() + "?"
                                              : "; did you mean one of " + join(meant) + "?"));
}

}  // namespace

host::Range accepted_range(const Control& control) {
    return control.kind == ControlKind::kAngle ? host::Range{-kLargestAngle, kLargestAngle} : control.valid;
}

std::span<const std::string> offered_choices(const Control& control) {
    const auto declared = static_cast<std::size_t>(std::max(control.valid.max, 0.0));
    return std::span(control.choices).first(std::min(control.choices.size(), declared));
}

bool takes_keyframes(const Control& control) {
    return control.can_vary && control.kind != ControlKind::kLayer && !control.is_group_mark();
}

std::string expected_value(const Control& control) {
    const host::Range accepted = accepted_range(control);
    const std::string range = number_text(accepted.min) + " to " + number_text(accepted.max);
    switch (control.kind) {
        case ControlKind::kPopup:
            return "one of " + join(offered_choices(control)) + ", or a number " + range;
        case ControlKind::kCheckbox:
            return "on or off";
        case ControlKind::kSlider:
            return "a whole number " + range;
        case ControlKind::kAngle:
            return "degrees " + range;
        case ControlKind::kArbitrary:
            return "stops such as 0:#000,1:#fff";
        case ControlKind::kLayer:
            return "a picture file or none";
        default:
            return "a number " + range;
    }
}

ControlCatalog::ControlCatalog(std::span<const host::Control> registered) {
    for (const host::Control& control : registered)
        controls_.push_back({control, id_of(control)});
}

const Control& ControlCatalog::find(std::string_view id) const {
    const auto found = std::ranges::find(controls_, id, &Control::id);
    if (found == controls_.end()) throw unknown_control(id, controls_);
    if (found->is_group_mark()) {
        throw usage_failure("control " + in_quotes(id) + " is a group mark and takes no value");
    }
    return *found;
}

}  // namespace flumo::scene
