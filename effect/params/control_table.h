// What a control of the effect is, and the table of all of them, made from controls.def. Registration and the
// snapshot of a frame read it; the libraries that read scene files and the command line take names from it.
// Needs nothing but the standard library.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "effect/params/noise_generator.h"

namespace flumo {

/// The controls in the order of their registration; the host's parameter index is the section plus one.
enum class Section : uint32_t {
#define CONTROL(kind, id, ...) id,
#include "effect/params/controls.def"
#undef CONTROL
};

/// The host's numbers of the parameter types.
enum class ControlKind : int32_t {
    Layer = 0,
    Slider = 1,
    Angle = 3,
    Checkbox = 4,
    Popup = 7,
    FloatSlider = 10,
    Gradient = 11,
    GroupStart = 13,
    GroupEnd = 14,
};

/// How the host shows a float slider's number; the number itself is the same.
enum class Display : int16_t { Plain = 0, Percent = 1 };

struct ControlRange {
    float min = 0;
    float max = 0;
};

/// One control. Numbers are as the host receives them: percents stay percents, popups count from 1, a
/// checkbox is 0 or 1, an angle is in degrees. What a kind does not have is zero.
struct Control {
    Section section;
    std::string_view id;
    /// Durable identity in saved projects: never changed, never given to another control.
    int32_t diskId;
    ControlKind kind;
    /// Row of the display name in the table of texts; 0 for a group's end, which has no name. A checkbox's
    /// side label is the next row.
    int32_t nameRow = 0;
    float defaultValue = 0;
    /// What may be stored.
    ControlRange valid = {};
    /// What the panel's slider spans; values outside are typed in.
    ControlRange slider = {};
    Display display = Display::Plain;
    /// Row of a popup's choices, separated by bars.
    int32_t choicesRow = 0;
    /// How many choices a popup declares, whatever its text names.
    int16_t choiceCount = 0;
};

namespace control_rows {

constexpr Control Titled(Section section, std::string_view id, int32_t diskId, ControlKind kind) {
    return {.section = section, .id = id, .diskId = diskId, .kind = kind};
}

constexpr Control GroupStart(Section section, std::string_view id, int32_t diskId) {
    return Titled(section, id, diskId, ControlKind::GroupStart);
}

constexpr Control GroupEnd(Section section, std::string_view id, int32_t diskId) {
    return Titled(section, id, diskId, ControlKind::GroupEnd);
}

constexpr Control Layer(Section section, std::string_view id, int32_t diskId) {
    return Titled(section, id, diskId, ControlKind::Layer);
}

constexpr Control Angle(Section section, std::string_view id, int32_t diskId) {
    return Titled(section, id, diskId, ControlKind::Angle);
}

constexpr Control Gradient(Section section, std::string_view id, int32_t diskId) {
    return Titled(section, id, diskId, ControlKind::Gradient);
}

constexpr Control Checkbox(Section section, std::string_view id, int32_t diskId, bool on) {
    Control control = Titled(section, id, diskId, ControlKind::Checkbox);
    control.defaultValue = on ? 1.0F : 0.0F;
    control.valid = {0, 1};
    return control;
}

/// Declares `choiceCount` choices, which may be fewer or more than its text names.
constexpr Control Popup(Section section, std::string_view id, int32_t diskId, int16_t choiceCount) {
    Control control = Titled(section, id, diskId, ControlKind::Popup);
    control.defaultValue = 1;
    control.valid = {1, static_cast<float>(choiceCount)};
    control.choiceCount = choiceCount;
    return control;
}

/// The choice of a noise generator. Both such controls share one text of choices.
constexpr Control NoisePopup(Section section, std::string_view id, int32_t diskId) {
    Control control = Popup(section, id, diskId, kNoiseChoiceCount);
    control.choicesRow = kNoiseChoicesRow;
    return control;
}

constexpr Control Slider(Section section, std::string_view id, int32_t diskId, float defaultValue,
                         ControlRange valid, ControlRange slider) {
    Control control = Titled(section, id, diskId, ControlKind::Slider);
    control.defaultValue = defaultValue;
    control.valid = valid;
    control.slider = slider;
    return control;
}

constexpr Control FloatSlider(Section section, std::string_view id, int32_t diskId, float defaultValue,
                              ControlRange valid, ControlRange slider) {
    Control control = Slider(section, id, diskId, defaultValue, valid, slider);
    control.kind = ControlKind::FloatSlider;
    return control;
}

constexpr Control PercentSlider(Section section, std::string_view id, int32_t diskId, float defaultValue,
                                ControlRange valid, ControlRange slider) {
    Control control = FloatSlider(section, id, diskId, defaultValue, valid, slider);
    control.display = Display::Percent;
    return control;
}

inline constexpr int32_t kFirstNameRow = 11;

/// The rows of text follow the controls: each name takes one, and the side label of a checkbox or the choices
/// of a popup the next.
consteval auto AllControls() {
    std::array controls{
#define CONTROL(kind, id, ...) kind(Section::id, #id, __VA_ARGS__),
#include "effect/params/controls.def"
#undef CONTROL
    };
    int32_t row = kFirstNameRow;
    for (Control& control : controls) {
        if (control.kind == ControlKind::GroupEnd) continue;
        control.nameRow = row++;
        if (control.kind == ControlKind::Popup && control.choicesRow == 0) control.choicesRow = row;
        if (control.kind == ControlKind::Popup || control.kind == ControlKind::Checkbox) ++row;
    }
    return controls;
}

}  // namespace control_rows

/// The table, indexed by section number.
inline constexpr auto kControls = control_rows::AllControls();
inline constexpr size_t kControlCount = kControls.size();

constexpr const Control& ControlOf(Section section) {
    return kControls[static_cast<size_t>(section)];
}

}  // namespace flumo
