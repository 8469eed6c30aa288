#include "scene/variation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <random>

#include "base/failure.h"
#include "base/text_list.h"

namespace flumo::scene {
namespace {

// Ten units of noise, and two turns.
constexpr double kOffsetSpan = 10000;
constexpr double kAngleSpan = 720;
constexpr double kScaleOctaves = 2;

// Numbers -1 to 1. The engine and its seeding are the same in every standard library; its distributions are
// not.
class Chance {
  public:
    Chance(uint64_t seed, uint32_t index, int disk_id) {
        std::seed_seq sequence{static_cast<uint32_t>(seed), static_cast<uint32_t>(seed >> 32), index,
                               static_cast<uint32_t>(disk_id)};
        engine_.seed(sequence);
    }

    double next() { return std::ldexp(static_cast<double>(engine_() >> 11), -52) - 1; }
    double share() { return (next() + 1) / 2; }

  private:
    std::mt19937_64 engine_;
};

bool is_offset(const Control& control) {
    return control.id.ends_with("OffsetX") || control.id.ends_with("OffsetY");
}

bool is_scale(const Control& control) {
    return control.percent && (control.id.ends_with("Scale") || control.id.ends_with("ScaleX") ||
                               control.id.ends_with("ScaleY"));
}

double fitted(const Control& control, double value) {
    const host::Range range = accepted_range(control);
    // Tenths, as the panel shows them.
    const bool whole = control.kind != ControlKind::kFloatSlider && control.kind != ControlKind::kAngle;
    const double rounded = whole ? std::round(value) : std::round(value * 10) / 10;
    return std::clamp(rounded, range.min, range.max);
}

// A change of a number, to be done to all its keyframes alike.
std::function<double(double)> number_change(const Control& control, double strength, Chance& chance) {
    const double u = chance.next();
    if (control.kind == ControlKind::kCheckbox) {
        const bool flips = chance.share() < strength / 2;
        return [flips](double value) { return flips ? 1 - value : value; };
    }
    if (control.kind == ControlKind::kPopup) {
        const auto choices = static_cast<double>(offered_choices(control).size());
        const bool changes = chance.share() < strength;
        const double choice = 1 + std::floor(chance.share() * choices);
        return [=](double value) { return changes ? std::min(choice, choices) : value; };
    }
    if (control.id == "Seed") return [=](double value) { return strength > 0 ? std::abs(u) * 1000 : value; };
    if (is_scale(control))
        return [=](double value) { return value * std::exp2(kScaleOctaves * strength * u); };
    const double span = is_offset(control)                    ? kOffsetSpan
                        : control.kind == ControlKind::kAngle ? kAngleSpan
                                                              : (control.slider.max - control.slider.min) / 2;
    return [=](double value) { return value + span * strength * u; };
}

float moved(float channel, double strength, Chance& chance) {
    return std::clamp(channel + static_cast<float>(strength * 0.6 * chance.next()), 0.0F, 1.0F);
}

// The outer stops keep their places, so that the ramp stays full.
std::vector<Stop> varied_stops(std::vector<Stop> stops, double strength, Chance& chance) {
    for (std::size_t i = 0; i < stops.size(); ++i) {
        Stop& stop = stops[i];
        for (float* channel : {&stop.colour.r, &stop.colour.g, &stop.colour.b})
            *channel = moved(*channel, strength, chance);
        const auto shift = static_cast<float>(strength * 0.3 * chance.next());
        if (i > 0 && i + 1 < stops.size()) stop.at = std::clamp(stop.at + shift, 0.0F, 1.0F);
    }
    return stops;
}

Track varied(const Track& track, double strength, Chance& chance) {
    Track result = track;
    const bool is_gradient = track.control->kind == ControlKind::kArbitrary;
    const auto change = is_gradient ? nullptr : number_change(*track.control, strength, chance);
    for (Keyframe& keyframe : result.keyframes) {
        if (is_gradient) {
            keyframe.value = varied_stops(std::get<std::vector<Stop>>(keyframe.value), strength, chance);
        } else {
            keyframe.value = fitted(*track.control, change(std::get<double>(keyframe.value)));
        }
    }
    return result;
}

std::string number_word(const Control& control, double value) {
    const auto choices = offered_choices(control);
    const auto choice = static_cast<std::size_t>(std::max(value, 1.0)) - 1;
    if (control.kind == ControlKind::kPopup && choice < choices.size()) return choices[choice];
    if (control.kind == ControlKind::kCheckbox) return value != 0 ? "on" : "off";
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

// Of a track that differs; a gradient's picture says more than its numbers.
std::string change_text(const Track& track) {
    const auto* const number = std::get_if<double>(&track.keyframes.front().value);
    std::string text = track.control->id;
    if (number) text.append(" ").append(number_word(*track.control, *number));
    return text;
}

}  // namespace

std::vector<const Control*> controls_to_vary(std::string_view list, const ControlCatalog& catalog) {
    std::vector<const Control*> controls;
    for (const std::string_view name : split(list, ',')) {
        const std::size_t before = controls.size();
        for (const Control& control : catalog.controls()) {
            const bool is_side = control.id.size() == name.size() + 1 && control.id.starts_with(name) &&
                                 (control.id.ends_with('X') || control.id.ends_with('Y'));
            if (!control.is_group_mark() && is_side && !name.ends_with("Scale")) controls.push_back(&control);
        }
        if (controls.size() == before) controls.push_back(&catalog.find(name));
        if (controls.back()->kind == ControlKind::kLayer)
            throw usage_failure("control " + in_quotes(name) + " is a layer, which has no values to vary");
    }
    return controls;
}

Variation vary(const Tracks& tracks, const VariationSettings& settings, uint32_t index,
               const std::function<ControlValue(const Control&)>& default_of) {
    Variation variation{tracks, {}};
    for (const Control* const control : settings.controls) {
        Chance chance(settings.seed, index, control->disk_id);
        const auto given = tracks.find(control->index);
        const Track before =
            given != tracks.end() ? given->second : Track{control, {{0, default_of(*control)}}};
        const Track after = varied(before, settings.strength, chance);
        if (after.keyframes.front().value != before.keyframes.front().value)
            variation.changes.push_back(change_text(after));
        variation.tracks[control->index] = after;
    }
    return variation;
}

Sweep parse_sweep(std::string_view text, const ControlCatalog& catalog) {
    const std::size_t mark = text.find('=');
    if (mark == text.npos)
        throw usage_failure("--sweep " + in_quotes(text) + ": expected Id=VALUE,VALUE,...");
    Sweep sweep{&catalog.find(text.substr(0, mark)), {}, {}};
    if (!sweep.control->is_number())
        throw usage_failure("--sweep " + sweep.control->id + ": expected a control with numbers or choices");
    for (const std::string_view word : split(text.substr(mark + 1), ',')) {
        sweep.values.push_back(std::get<double>(parse_control_value(*sweep.control, word)));
        sweep.words.emplace_back(word);
    }
    return sweep;
}

std::vector<Variation> swept(const Tracks& tracks, std::span<const Sweep> sweeps) {
    std::vector<Variation> variations = {{tracks, {}}};
    for (const Sweep& sweep : sweeps) {
        std::vector<Variation> more;
        for (const Variation& variation : variations) {
            for (std::size_t i = 0; i < sweep.values.size(); ++i) {
                more.push_back(variation);
                more.back().tracks[sweep.control->index] = {sweep.control, {{0, sweep.values[i]}}};
                more.back().changes.push_back(
                    std::string(sweep.control->id).append(" ").append(sweep.words[i]));
            }
        }
        variations = std::move(more);
    }
    return variations;
}

}  // namespace flumo::scene
