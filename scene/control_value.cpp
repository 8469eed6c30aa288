#include "scene/control_value.h"

#include <cmath>
#include <string>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/parse_number.h"
#include "base/text_list.h"
#include "scene/gradient/gradient_text.h"

namespace flumo::scene {
namespace {

bool takes_whole_numbers_only(ControlKind kind) {
    return kind == ControlKind::kPopup || kind == ControlKind::kSlider || kind == ControlKind::kCheckbox;
}

Failure unacceptable(const Control& control, const std::string& found) {
    return usage_failure(found + ": expected " + expected_value(control));
}

std::optional<double> parse_checkbox(std::string_view text) {
    for (const char* word : {"on", "true", "1"}) {
        if (equal_ignoring_case(text, word)) return 1.0;
    }
    for (const char* word : {"off", "false", "0"}) {
        if (equal_ignoring_case(text, word)) return 0.0;
    }
    return std::nullopt;
}

std::optional<double> parse_choice(const Control& control, std::string_view text) {
    const auto choices = offered_choices(control);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (equal_ignoring_case(text, choices[i])) return static_cast<double>(i + 1);
    }
    return parse_number<double>(text);
}

double parse_number_of(const Control& control, std::string_view text) {
    const auto number = control.kind == ControlKind::kCheckbox ? parse_checkbox(text)
                        : control.kind == ControlKind::kPopup  ? parse_choice(control, text)
                                                               : parse_number<double>(text);
    if (!number) throw unacceptable(control, in_quotes(text));
    return checked_number(control, *number);
}

}  // namespace

double checked_number(const Control& control, double value) {
    const host::Range range = accepted_range(control);
    // Written so that NaN fails.
    const bool in_range = value >= range.min && value <= range.max;
    const bool whole = value == std::floor(value);
    if (!in_range || (takes_whole_numbers_only(control.kind) && !whole)) {
        throw unacceptable(control, number_text(value));
    }
    return value;
}

ControlValue parse_control_value(const Control& control, std::string_view text,
                                 const std::filesystem::path& folder) {
    switch (control.kind) {
        case ControlKind::kArbitrary:
            return parse_gradient(text, folder);
        case ControlKind::kLayer:
            if (text.empty()) throw usage_failure("expected a picture file or none");
            return text == "none" ? std::filesystem::path() : folder / text;
        default:
            return parse_number_of(control, text);
    }
}

}  // namespace flumo::scene
