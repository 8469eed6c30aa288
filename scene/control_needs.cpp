#include "scene/control_needs.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/number_text.h"

namespace flumo::scene {
namespace {

using enum Condition::Test;

constexpr Condition on(std::string_view id) {
    return {id, kIs, 1};
}
constexpr Condition not_zero(std::string_view id) {
    return {id, kIsNot, 0};
}
constexpr Condition is(std::string_view id, double choice) {
    return {id, kIs, choice};
}
constexpr Condition is_not(std::string_view id, double choice) {
    return {id, kIsNot, choice};
}
constexpr Condition layer(std::string_view id) {
    return {id, kLayer, 0};
}

// Choices of popups, from 1.
constexpr double kFluid = 1;
constexpr double kVoronoi = 2;
constexpr double kWorley = 4;
constexpr double kGradient = 1;
constexpr double kReflection = 3;

constexpr Condition kDrawn[] = {on("NoiseVisible"), on("LinesVisible")};
constexpr Condition kNoise[] = {on("NoiseVisible")};
constexpr Condition kLines[] = {on("LinesVisible")};
constexpr Condition kFlows[] = {is_not("NoiseType", kFluid), is_not("Complexity", 1)};
constexpr Condition kEvolves[] = {not_zero("Evolution")};
constexpr Condition kLayer1[] = {layer("Layer1")};
constexpr Condition kLayer2[] = {layer("Layer2")};
constexpr Condition kByGradient[] = {is("ColorizeMode", kGradient)};
constexpr Condition kByLayer[] = {is_not("ColorizeMode", kGradient)};
constexpr Condition kByPosition[] = {is_not("ColorizeMode", kReflection)};
constexpr Condition kByReflection[] = {is("ColorizeMode", kReflection)};
constexpr Condition kNoiseBottom[] = {on("NoiseBottomCroppingEnabled")};
constexpr Condition kNoiseTop[] = {on("NoiseTopCroppingEnabled")};
constexpr Condition kNoiseScaled[] = {is_not("NoiseGradientScale", 100)};
constexpr Condition kNoiseRandom[] = {not_zero("GradientRandomizeAmplitude")};
constexpr Condition kLinesBottom[] = {on("LinesBottomCroppingEnabled")};
constexpr Condition kLinesTop[] = {on("LinesTopCroppingEnabled")};
constexpr Condition kLinesScaled[] = {is_not("LinesGradientScale", 100)};
// Fluid and Smoke are never negative, so that a threshold of 0 keeps all of a line.
constexpr Condition kMasked[] = {not_zero("LinesAlphaThreshold"), is("LinesAlphaNoiseType", kVoronoi),
                                 is("LinesAlphaNoiseType", kWorley)};
constexpr Condition kMaskEvolves[] = {not_zero("LinesAlphaNoiseEvolution"), not_zero("AlphaRandomize")};
constexpr Condition kMaskComplex[] = {is("LinesAlphaNoiseType", kFluid), is("LinesAlphaNoiseType", kVoronoi)};
constexpr Condition kRandom[] = {not_zero("LinesRandomize"), not_zero("WidthRandomize"),
                                 not_zero("GradientRandomize"), not_zero("AlphaRandomize"),
                                 not_zero("GradientRandomizeAmplitude")};

constexpr Clause kIfDrawn[] = {kDrawn};
constexpr Clause kIfFlows[] = {kDrawn, kFlows};
constexpr Clause kIfEvolves[] = {kEvolves};
constexpr Clause kIfLayer1[] = {kDrawn, kLayer1};
constexpr Clause kIfLayer1InNoise[] = {kNoise, kLayer1};
constexpr Clause kIfLayer2[] = {kDrawn, kLayer2};
constexpr Clause kIfNoise[] = {kNoise};
constexpr Clause kIfByGradient[] = {kByGradient};
constexpr Clause kIfByLayer[] = {kByLayer};
constexpr Clause kIfByPosition[] = {kByPosition};
constexpr Clause kIfByReflection[] = {kByReflection};
constexpr Clause kIfNoiseBottom[] = {kNoiseBottom};
constexpr Clause kIfNoiseTop[] = {kNoiseTop};
constexpr Clause kIfNoiseScaled[] = {kNoiseScaled};
constexpr Clause kIfNoiseRandom[] = {kNoiseRandom};
constexpr Clause kIfLines[] = {kLines};
constexpr Clause kIfLinesBottom[] = {kLinesBottom};
constexpr Clause kIfLinesTop[] = {kLinesTop};
constexpr Clause kIfLinesScaled[] = {kLinesScaled};
constexpr Clause kIfMasked[] = {kLines, kMasked};
constexpr Clause kIfMaskEvolves[] = {kMaskEvolves};
constexpr Clause kIfMaskComplex[] = {kLines, kMasked, kMaskComplex};
constexpr Clause kIfRandom[] = {kRandom};

constexpr ControlNeeds kRows[] = {
    {"NoiseType", kIfDrawn},
    {"NoiseContrast", kIfDrawn},
    {"NoiseBrightness", kIfDrawn},
    {"OffsetX", kIfDrawn},
    {"OffsetY", kIfDrawn},
    {"Evolution", kIfFlows},
    {"LoopEvolution", kIfEvolves},
    {"Complexity", kIfDrawn},
    {"Speed", kIfEvolves},
    {"Scale", kIfDrawn},
    {"ScaleX", kIfDrawn},
    {"ScaleY", kIfDrawn},
    {"Layer1Mult", kIfLayer1},
    {"Layer1", kIfDrawn},
    {"Layer1LightnessInvert", kIfLayer1},
    {"Layer1AlphaInvert", kIfLayer1},
    {"Layer2Mult", kIfLayer2},
    {"Layer2", kIfDrawn},
    {"Layer2LightnessInvert", kIfLayer2},
    {"Layer2AlphaInvert", kIfLayer2},
    {"ColorizeMode", kIfNoise},
    {"Gradient", kIfByGradient},
    {"NoiseBottomCroppingEnabled", kIfNoise},
    {"NoiseBottomCroppingThreshold", kIfNoiseBottom},
    {"NoiseBottomCroppingFeather", kIfNoiseBottom},
    {"NoiseTopCroppingEnabled", kIfNoise},
    {"NoiseTopCroppingThreshold", kIfNoiseTop},
    {"NoiseTopCroppingFeather", kIfNoiseTop},
    {"AlphaTreshold", kIfLayer1InNoise},
    {"Layer3", kIfByLayer},
    {"NoiseGradientOffset", kIfByPosition},
    {"NoiseGradientScale", kIfByPosition},
    {"NoiseGradientScaleBase", kIfNoiseScaled},
    {"NoiseGradientLoop", kIfByPosition},
    {"GradientRandomizeAmplitude", kIfByPosition},
    {"GradientRandomizeFrequency", kIfNoiseRandom},
    {"ReflectionScale", kIfByReflection},
    {"LinesBlendMode", kIfLines},
    {"LinesCount", kIfLines},
    {"LineWidth", kIfLines},
    {"LinesOffset", kIfLines},
    {"LinesLoop", kIfLines},
    {"LinesBottomCroppingEnabled", kIfLines},
    {"LinesBottomCroppingThreshold", kIfLinesBottom},
    {"LinesBottomCroppingFeather", kIfLinesBottom},
    {"LinesTopCroppingEnabled", kIfLines},
    {"LinesTopCroppingThreshold", kIfLinesTop},
    {"LinesTopCroppingFeather", kIfLinesTop},
    {"LinesGradient", kIfLines},
    {"LinesGradientOffset", kIfLines},
    {"LinesGradientScale", kIfLines},
    {"LinesGradientScaleBase", kIfLinesScaled},
    {"LinesGradientLoop", kIfLines},
    {"LinesAlpha", kIfLines},
    {"LinesAlphaNoiseType", kIfMasked},
    {"LinesAlphaThreshold", kIfLines},
    {"LinesAlphaNoiseOffsetX", kIfMasked},
    {"LinesAlphaNoiseOffsetY", kIfMasked},
    {"LinesAlphaNoiseEvolution", kIfMasked},
    {"LinesAlphaNoiseLoopEvolution", kIfMaskEvolves},
    {"LinesAlphaNoiseComplexity", kIfMaskComplex},
    {"LinesAlphaNoiseSpeed", kIfMaskEvolves},
    {"LinesAlphaNoiseScale", kIfMasked},
    {"LinesAlphaNoiseScaleX", kIfMasked},
    {"LinesAlphaNoiseScaleY", kIfMasked},
    {"AlphaRandomize", kIfMasked},
    {"LinesRandomize", kIfLines},
    {"WidthRandomize", kIfLines},
    {"GradientRandomize", kIfLines},
    {"Seed", kIfRandom, "other random numbers for the controls that randomize"},
};

bool holds_for(const Condition& condition, const ControlValue& value) {
    if (condition.test == kLayer) {
        const auto* const file = std::get_if<std::filesystem::path>(&value);
        return file && !file->empty();
    }
    const auto* const number = std::get_if<double>(&value);
    return number && (*number == condition.value) == (condition.test == kIs);
}

std::string join_with_and(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", and ") + text;
    return joined;
}

std::string value_text(const Control& control, double value) {
    const auto choices = offered_choices(control);
    const auto choice = static_cast<std::size_t>(value);
    if (control.kind == ControlKind::kPopup && choice >= 1 && choice <= choices.size())
        return choices[choice - 1];
    return number_text(value);
}

std::string condition_text(const Condition& condition, const ControlCatalog& catalog) {
    const Control& control = catalog.find(condition.id);
    std::string text(condition.id);
    if (condition.test == kLayer) return "a layer for " + text;
    if (control.kind == ControlKind::kCheckbox) return text + (condition.test == kIs ? " on" : " off");
    return text + (condition.test == kIs ? " " : " other than ") + value_text(control, condition.value);
}

std::string clause_text(Clause clause, const ControlCatalog& catalog) {
    std::string text;
    for (const Condition& condition : clause)
        text += (text.empty() ? "" : " or ") + condition_text(condition, catalog);
    return text;
}

// What controls lack under given tracks.
class Lacks {
  public:
    Lacks(const Tracks& tracks, const ControlCatalog& catalog) : tracks_(tracks), catalog_(catalog) {}

    // What keeps the control from having an effect, in words; nothing if it has one. A row may lead back to a
    // control that is being asked, which is taken to have its effect.
    std::vector<std::string> of(std::string_view id) {
        const auto row = std::ranges::find(kRows, id, &ControlNeeds::id);
        if (row == std::end(kRows) || std::ranges::find(asked_, id) != asked_.end()) return {};
        asked_.push_back(id);
        std::vector<std::string> lacks;
        for (const Clause clause : row->clauses) {
            const std::string lack = of_clause(clause);
            if (!lack.empty()) lacks.push_back(lack);
        }
        asked_.pop_back();
        return lacks;
    }

  private:
    std::string of_clause(Clause clause) {
        std::string lack = clause_text(clause, catalog_);
        for (const Condition& condition : clause) {
            if (!holds(condition)) continue;
            const std::vector<std::string> lacks = of(condition.id);
            if (lacks.empty()) return "";
            lack = join_with_and(lacks);
        }
        return lack;
    }

    bool holds(const Condition& condition) const {
        const Control& control = catalog_.find(condition.id);
        const auto track = tracks_.find(control.index);
        if (track == tracks_.end())
            return condition.test != kLayer && holds_for(condition, control.default_value);
        return std::ranges::any_of(track->second.keyframes, [&](const Keyframe& keyframe) {
            return holds_for(condition, keyframe.value);
        });
    }

    const Tracks& tracks_;
    const ControlCatalog& catalog_;
    std::vector<std::string_view> asked_;
};

}  // namespace

std::span<const ControlNeeds> control_needs() {
    return kRows;
}

std::string needs_text(const ControlNeeds& needs, const ControlCatalog& catalog) {
    std::vector<std::string> texts;
    for (const Clause clause : needs.clauses)
        texts.push_back(clause_text(clause, catalog));
    return join_with_and(texts);
}

std::string why_without_effect(const Control& control, const Tracks& tracks, const ControlCatalog& catalog) {
    const std::vector<std::string> lacks = Lacks(tracks, catalog).of(control.id);
    if (lacks.empty()) return "";
    const auto row = std::ranges::find(kRows, control.id, &ControlNeeds::id);
    const std::string does = row->what_it_does.empty() ? "" : " (" + std::string(row->what_it_does) + ")";
    return control.id + does + " changes nothing: it needs " + join_with_and(lacks);
}

}  // namespace flumo::scene
