// The 86 controls of the effect, one row each: the one place that says what a control is. Registration,
// the snapshot of a frame, the command line and the manual read it. Needs nothing but the standard library.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace flumo {

/// The controls in the order of their registration; the host's parameter index is the section plus one.
enum class Section : std::uint32_t {
    NoiseGroupBegin,
    NoiseType,
    NoiseContrast,
    NoiseBrightness,
    OffsetX,
    OffsetY,
    Evolution,
    LoopEvolution,
    Complexity,
    Speed,
    Scale,
    ScaleX,
    ScaleY,
    Layer1Mult,
    Layer1,
    Layer1LightnessInvert,
    Layer1AlphaInvert,
    Layer2Mult,
    Layer2,
    Layer2LightnessInvert,
    Layer2AlphaInvert,
    NoiseGroupEnd,
    ColorizeGroupBegin,
    NoiseVisible,
    ColorizeMode,
    Gradient,
    NoiseCroppingGroupBegin,
    NoiseBottomCroppingEnabled,
    NoiseBottomCroppingThreshold,
    NoiseBottomCroppingFeather,
    NoiseTopCroppingEnabled,
    NoiseTopCroppingThreshold,
    NoiseTopCroppingFeather,
    NoiseCroppingGroupEnd,
    AlphaTreshold,
    Layer3,
    NoiseGradientOffset,
    NoiseGradientScale,
    NoiseGradientScaleBase,
    NoiseGradientLoop,
    GradientRandomizeAmplitude,
    GradientRandomizeFrequency,
    ReflectionScale,
    ColorizeGroupEnd,
    LinesGroupBegin,
    LinesVisible,
    LinesBlendMode,
    LinesCount,
    LineWidth,
    LinesOffset,
    LinesLoop,
    LinesCroppingGroupBegin,
    LinesBottomCroppingEnabled,
    LinesBottomCroppingThreshold,
    LinesBottomCroppingFeather,
    LinesTopCroppingEnabled,
    LinesTopCroppingThreshold,
    LinesTopCroppingFeather,
    LinesCroppingGroupEnd,
    LinesGradient,
    LinesGradientOffset,
    LinesGradientScale,
    LinesGradientScaleBase,
    LinesGradientLoop,
    LinesAlpha,
    LinesAlphaNoiseGroupBegin,
    LinesAlphaNoiseType,
    LinesAlphaThreshold,
    LinesAlphaNoiseOffsetX,
    LinesAlphaNoiseOffsetY,
    LinesAlphaNoiseEvolution,
    LinesAlphaNoiseLoopEvolution,
    LinesAlphaNoiseComplexity,
    LinesAlphaNoiseSpeed,
    LinesAlphaNoiseScale,
    LinesAlphaNoiseScaleX,
    LinesAlphaNoiseScaleY,
    AlphaRandomize,
    LinesAlphaNoiseGroupEnd,
    RandomizeGroupBegin,
    LinesRandomize,
    WidthRandomize,
    GradientRandomize,
    Seed,
    RandomizeGroupEnd,
    LinesGroupEnd,
};

/// The host's numbers of the parameter types.
enum class ControlKind : std::int32_t {
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
enum class Display : std::int16_t { Plain = 0, Percent = 1 };

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
    std::int32_t diskId;
    ControlKind kind;
    /// Row of the display name in the table of texts. A checkbox's side label is the row behind it.
    std::int32_t nameRow = 0;
    float defaultValue = 0;
    /// What may be stored.
    ControlRange valid = {};
    /// What the panel's slider spans; values outside are typed in.
    ControlRange slider = {};
    Display display = Display::Plain;
    /// Row of a popup's choices, separated by bars.
    std::int32_t choicesRow = 0;
    /// How many choices a popup declares, whatever its text names.
    std::int16_t choiceCount = 0;
};

namespace control_rows {

constexpr Control Titled(Section section, std::string_view id, std::int32_t diskId, ControlKind kind,
                         std::int32_t nameRow) {
    return {.section = section, .id = id, .diskId = diskId, .kind = kind, .nameRow = nameRow};
}

constexpr Control GroupStart(Section section, std::string_view id, std::int32_t diskId,
                             std::int32_t nameRow) {
    return Titled(section, id, diskId, ControlKind::GroupStart, nameRow);
}

constexpr Control GroupEnd(Section section, std::string_view id, std::int32_t diskId) {
    return Titled(section, id, diskId, ControlKind::GroupEnd, 0);
}

constexpr Control Layer(Section section, std::string_view id, std::int32_t diskId, std::int32_t nameRow) {
    return Titled(section, id, diskId, ControlKind::Layer, nameRow);
}

constexpr Control Angle(Section section, std::string_view id, std::int32_t diskId, std::int32_t nameRow) {
    return Titled(section, id, diskId, ControlKind::Angle, nameRow);
}

constexpr Control Gradient(Section section, std::string_view id, std::int32_t diskId, std::int32_t nameRow) {
    return Titled(section, id, diskId, ControlKind::Gradient, nameRow);
}

constexpr Control Checkbox(Section section, std::string_view id, std::int32_t diskId, std::int32_t nameRow,
                           bool on) {
    Control control = Titled(section, id, diskId, ControlKind::Checkbox, nameRow);
    control.defaultValue = on ? 1.0F : 0.0F;
    control.valid = {0, 1};
    return control;
}

constexpr Control Popup(Section section, std::string_view id, std::int32_t diskId, std::int32_t nameRow,
                        std::int32_t choicesRow, std::int16_t choiceCount) {
    Control control = Titled(section, id, diskId, ControlKind::Popup, nameRow);
    control.defaultValue = 1;
    control.valid = {1, static_cast<float>(choiceCount)};
    control.choicesRow = choicesRow;
    control.choiceCount = choiceCount;
    return control;
}

constexpr Control Slider(Section section, std::string_view id, std::int32_t diskId, std::int32_t nameRow,
                         float defaultValue, ControlRange valid, ControlRange slider) {
    Control control = Titled(section, id, diskId, ControlKind::Slider, nameRow);
    control.defaultValue = defaultValue;
    control.valid = valid;
    control.slider = slider;
    return control;
}

constexpr Control FloatSlider(Section section, std::string_view id, std::int32_t diskId, std::int32_t nameRow,
                              float defaultValue, ControlRange valid, ControlRange slider, Display display) {
    Control control = Slider(section, id, diskId, nameRow, defaultValue, valid, slider);
    control.kind = ControlKind::FloatSlider;
    control.display = display;
    return control;
}

/// Counts declared here are meant as they stand: the noise popups declare five choices over a text of
/// four names, and the colorize mode leaves its fourth name unoffered. Both noise popups share one text.
inline constexpr std::array kRows{
    GroupStart(Section::NoiseGroupBegin, "NoiseGroupBegin", 14, 11),
    Popup(Section::NoiseType, "NoiseType", 24, 12, 13, 5),
    FloatSlider(Section::NoiseContrast, "NoiseContrast", 12, 14, 100, {-1000, 10000}, {-100, 100},
                Display::Plain),
    FloatSlider(Section::NoiseBrightness, "NoiseBrightness", 13, 15, 0, {-1000, 10000}, {-100, 100},
                Display::Plain),
    FloatSlider(Section::OffsetX, "OffsetX", 25, 16, 0, {-1000000, 1000000}, {-100, 100}, Display::Plain),
    FloatSlider(Section::OffsetY, "OffsetY", 28, 17, 0, {-1000000, 1000000}, {-100, 100}, Display::Plain),
    Angle(Section::Evolution, "Evolution", 62, 18),
    Checkbox(Section::LoopEvolution, "LoopEvolution", 63, 19, false),
    Slider(Section::Complexity, "Complexity", 4, 21, 4, {1, 100}, {1, 100}),
    FloatSlider(Section::Speed, "Speed", 5, 22, 10, {-1000000, 1000000}, {-100, 100}, Display::Plain),
    FloatSlider(Section::Scale, "Scale", 6, 23, 100, {-1000000, 1000000}, {-100, 100}, Display::Percent),
    FloatSlider(Section::ScaleX, "ScaleX", 64, 24, 100, {-1000000, 1000000}, {-100, 100}, Display::Percent),
    FloatSlider(Section::ScaleY, "ScaleY", 65, 25, 100, {-1000000, 1000000}, {-100, 100}, Display::Percent),
    FloatSlider(Section::Layer1Mult, "Layer1Mult", 20, 26, 1, {-10, 10}, {0, 1}, Display::Plain),
    Layer(Section::Layer1, "Layer1", 21, 27),
    Checkbox(Section::Layer1LightnessInvert, "Layer1LightnessInvert", 42, 28, false),
    Checkbox(Section::Layer1AlphaInvert, "Layer1AlphaInvert", 96, 30, false),
    FloatSlider(Section::Layer2Mult, "Layer2Mult", 22, 32, 1, {-10, 10}, {0, 1}, Display::Plain),
    Layer(Section::Layer2, "Layer2", 23, 33),
    Checkbox(Section::Layer2LightnessInvert, "Layer2LightnessInvert", 27, 34, false),
    Checkbox(Section::Layer2AlphaInvert, "Layer2AlphaInvert", 97, 36, false),
    GroupEnd(Section::NoiseGroupEnd, "NoiseGroupEnd", 15),
    GroupStart(Section::ColorizeGroupBegin, "ColorizeGroupBegin", 29, 38),
    Checkbox(Section::NoiseVisible, "NoiseVisible", 61, 39, true),
    Popup(Section::ColorizeMode, "ColorizeMode", 50, 41, 42, 3),
    Gradient(Section::Gradient, "Gradient", 49, 43),
    GroupStart(Section::NoiseCroppingGroupBegin, "NoiseCroppingGroupBegin", 116, 44),
    Checkbox(Section::NoiseBottomCroppingEnabled, "NoiseBottomCroppingEnabled", 109, 45, true),
    FloatSlider(Section::NoiseBottomCroppingThreshold, "NoiseBottomCroppingThreshold", 106, 47, -1,
                {-1000000, 1000000}, {-100, 100}, Display::Percent),
    FloatSlider(Section::NoiseBottomCroppingFeather, "NoiseBottomCroppingFeather", 107, 48, 0, {0, 1000000},
                {0, 100}, Display::Percent),
    Checkbox(Section::NoiseTopCroppingEnabled, "NoiseTopCroppingEnabled", 108, 49, false),
    FloatSlider(Section::NoiseTopCroppingThreshold, "NoiseTopCroppingThreshold", 104, 51, 99,
                {-1000000, 1000000}, {0, 100}, Display::Percent),
    FloatSlider(Section::NoiseTopCroppingFeather, "NoiseTopCroppingFeather", 105, 52, 0, {0, 1000000},
                {0, 100}, Display::Percent),
    GroupEnd(Section::NoiseCroppingGroupEnd, "NoiseCroppingGroupEnd", 117),
    FloatSlider(Section::AlphaTreshold, "AlphaTreshold", 36, 53, 5, {0, 100}, {0, 100}, Display::Percent),
    Layer(Section::Layer3, "Layer3", 41, 54),
    FloatSlider(Section::NoiseGradientOffset, "NoiseGradientOffset", 38, 55, 0, {-100000, 100000},
                {-100, 100}, Display::Percent),
    FloatSlider(Section::NoiseGradientScale, "NoiseGradientScale", 98, 56, 100, {-1000000, 1000000},
                {-100, 100}, Display::Percent),
    FloatSlider(Section::NoiseGradientScaleBase, "NoiseGradientScaleBase", 99, 57, 0, {-1000000, 1000000},
                {-100, 100}, Display::Percent),
    Checkbox(Section::NoiseGradientLoop, "NoiseGradientLoop", 43, 58, false),
    FloatSlider(Section::GradientRandomizeAmplitude, "GradientRandomizeAmplitude", 102, 60, 0,
                {-1000000, 1000000}, {0, 100}, Display::Percent),
    FloatSlider(Section::GradientRandomizeFrequency, "GradientRandomizeFrequency", 103, 61, 100,
                {-1000000, 1000000}, {0, 100}, Display::Percent),
    FloatSlider(Section::ReflectionScale, "ReflectionScale", 57, 62, 1.4F, {0, 100000}, {0, 1},
                Display::Plain),
    GroupEnd(Section::ColorizeGroupEnd, "ColorizeGroupEnd", 39),
    GroupStart(Section::LinesGroupBegin, "LinesGroupBegin", 17, 63),
    Checkbox(Section::LinesVisible, "LinesVisible", 18, 64, false),
    Popup(Section::LinesBlendMode, "LinesBlendMode", 95, 66, 67, 3),
    Slider(Section::LinesCount, "LinesCount", 7, 68, 4, {1, 1000}, {1, 100}),
    FloatSlider(Section::LineWidth, "LineWidth", 8, 69, 5, {0, 10000}, {0, 100}, Display::Plain),
    FloatSlider(Section::LinesOffset, "LinesOffset", 44, 70, 0, {-100000, 100000}, {-100, 100},
                Display::Percent),
    Checkbox(Section::LinesLoop, "LinesLoop", 45, 71, false),
    GroupStart(Section::LinesCroppingGroupBegin, "LinesCroppingGroupBegin", 118, 73),
    Checkbox(Section::LinesBottomCroppingEnabled, "LinesBottomCroppingEnabled", 110, 74, false),
    FloatSlider(Section::LinesBottomCroppingThreshold, "LinesBottomCroppingThreshold", 111, 76, -1,
                {-1000000, 1000000}, {-100, 100}, Display::Percent),
    FloatSlider(Section::LinesBottomCroppingFeather, "LinesBottomCroppingFeather", 112, 77, 0, {0, 1000000},
                {0, 100}, Display::Percent),
    Checkbox(Section::LinesTopCroppingEnabled, "LinesTopCroppingEnabled", 113, 78, false),
    FloatSlider(Section::LinesTopCroppingThreshold, "LinesTopCroppingThreshold", 114, 80, 99,
                {-1000000, 1000000}, {0, 100}, Display::Percent),
    FloatSlider(Section::LinesTopCroppingFeather, "LinesTopCroppingFeather", 115, 81, 0, {0, 1000000},
                {0, 100}, Display::Percent),
    GroupEnd(Section::LinesCroppingGroupEnd, "LinesCroppingGroupEnd", 119),
    Gradient(Section::LinesGradient, "LinesGradient", 58, 82),
    FloatSlider(Section::LinesGradientOffset, "LinesGradientOffset", 59, 83, 0, {-100000, 100000},
                {-100, 100}, Display::Percent),
    FloatSlider(Section::LinesGradientScale, "LinesGradientScale", 101, 84, 100, {-1000000, 1000000},
                {-100, 100}, Display::Percent),
    FloatSlider(Section::LinesGradientScaleBase, "LinesGradientScaleBase", 100, 85, 0, {-1000000, 1000000},
                {-100, 100}, Display::Percent),
    Checkbox(Section::LinesGradientLoop, "LinesGradientLoop", 60, 86, false),
    FloatSlider(Section::LinesAlpha, "LinesAlpha", 94, 88, 100, {0, 100}, {0, 100}, Display::Percent),
    GroupStart(Section::LinesAlphaNoiseGroupBegin, "LinesAlphaNoiseGroupBegin", 82, 89),
    Popup(Section::LinesAlphaNoiseType, "LinesAlphaNoiseType", 67, 90, 13, 5),
    FloatSlider(Section::LinesAlphaThreshold, "LinesAlphaThreshold", 68, 92, 0, {0, 100}, {0, 100},
                Display::Plain),
    FloatSlider(Section::LinesAlphaNoiseOffsetX, "LinesAlphaNoiseOffsetX", 83, 93, 0, {-1000000, 1000000},
                {-100, 100}, Display::Plain),
    FloatSlider(Section::LinesAlphaNoiseOffsetY, "LinesAlphaNoiseOffsetY", 84, 94, 0, {-1000000, 1000000},
                {-100, 100}, Display::Plain),
    Angle(Section::LinesAlphaNoiseEvolution, "LinesAlphaNoiseEvolution", 85, 95),
    Checkbox(Section::LinesAlphaNoiseLoopEvolution, "LinesAlphaNoiseLoopEvolution", 86, 96, false),
    Slider(Section::LinesAlphaNoiseComplexity, "LinesAlphaNoiseComplexity", 87, 98, 4, {1, 100}, {1, 100}),
    FloatSlider(Section::LinesAlphaNoiseSpeed, "LinesAlphaNoiseSpeed", 88, 99, 10, {-1000000, 1000000},
                {-100, 100}, Display::Plain),
    FloatSlider(Section::LinesAlphaNoiseScale, "LinesAlphaNoiseScale", 89, 100, 100, {-1000000, 1000000},
                {-100, 100}, Display::Percent),
    FloatSlider(Section::LinesAlphaNoiseScaleX, "LinesAlphaNoiseScaleX", 90, 101, 100, {-1000000, 1000000},
                {-100, 100}, Display::Percent),
    FloatSlider(Section::LinesAlphaNoiseScaleY, "LinesAlphaNoiseScaleY", 91, 102, 100, {-1000000, 1000000},
                {-100, 100}, Display::Percent),
    FloatSlider(Section::AlphaRandomize, "AlphaRandomize", 93, 103, 0, {-100000, 100000}, {-100, 100},
                Display::Percent),
    GroupEnd(Section::LinesAlphaNoiseGroupEnd, "LinesAlphaNoiseGroupEnd", 92),
    GroupStart(Section::RandomizeGroupBegin, "RandomizeGroupBegin", 51, 104),
    FloatSlider(Section::LinesRandomize, "LinesRandomize", 47, 105, 0, {-100000, 100000}, {-100, 100},
                Display::Percent),
    FloatSlider(Section::WidthRandomize, "WidthRandomize", 52, 106, 0, {-100000, 100000}, {-100, 100},
                Display::Percent),
    FloatSlider(Section::GradientRandomize, "GradientRandomize", 53, 107, 0, {-100000, 100000}, {-100, 100},
                Display::Percent),
    Slider(Section::Seed, "Seed", 54, 108, 0, {0, 100000}, {0, 100}),
    GroupEnd(Section::RandomizeGroupEnd, "RandomizeGroupEnd", 55),
    GroupEnd(Section::LinesGroupEnd, "LinesGroupEnd", 19),
};

}  // namespace control_rows

/// The table, indexed by section number.
inline constexpr auto kControls = control_rows::kRows;
inline constexpr std::size_t kControlCount = kControls.size();

constexpr const Control& ControlOf(Section section) {
    return kControls[static_cast<std::size_t>(section)];
}

consteval bool SectionsMatchRows() {
    for (std::size_t row = 0; row < kControlCount; ++row) {
        if (kControls[row].section != static_cast<Section>(row)) return false;
    }
    return true;
}
static_assert(kControlCount == 86);
static_assert(SectionsMatchRows());

}  // namespace flumo
