#include "frei0r/kdenlive/descriptions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "base/number_text.h"
#include "base/text_list.h"

namespace flumo::frei0r {
namespace {

using scene::ControlKind;

/// What the slider's place is shown as, where the control's own unit cannot be.
constexpr double kWholeSlider = 100;
/// So many turns may be reached in the panel; each is a turn further in the noise.
constexpr double kTurns = 20;
constexpr double kDegrees = 360;

std::string escaped(const std::string& text) {
    static const std::map<char, std::string> entities = {
        {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}};
    std::string result;
    for (const char c : text) {
        const auto entity = entities.find(c);
        result += entity == entities.end() ? std::string(1, c) : entity->second;
    }
    return result;
}

std::string attribute(const std::string& name, const std::string& value) {
    std::string text = " ";
    text.append(name).append("=\"").append(escaped(value)).append("\"");
    return text;
}

std::string six_digits(double value) {
    return number_text(std::round(value * 1e6) / 1e6);
}

/// One <parameter>: its attributes and what stands within.
struct Row {
    std::string type;
    std::string attributes;
    std::string name;
    std::string comment{};
    std::string choice_names{};
};

std::string row_text(const Parameter& parameter, const Row& row) {
    std::string text = "    <parameter" + attribute("type", row.type) + attribute("name", parameter.name) +
                       row.attributes + ">\n";
    if (!row.choice_names.empty())
        text += "        <paramlistdisplay>" + escaped(row.choice_names) + "</paramlistdisplay>\n";
    text += "        <name>" + escaped(row.name) + "</name>\n";
    if (!row.comment.empty()) text += "        <comment>" + escaped(row.comment) + "</comment>\n";
    return text + "    </parameter>\n";
}

/// How a number is shown: times `factor`.
struct Shown {
    double factor;
    double last;
    std::string suffix;
    int decimals;
};

Shown shown(const Parameter& parameter) {
    const NumberScale& scale = parameter.scale;
    if (parameter.control->kind == ControlKind::kAngle) return {kDegrees, kTurns * kDegrees, "°", 1};
    if (scale.first != 0 && scale.whole) return {scale.last - scale.first, scale.last - scale.first, "", 0};
    if (scale.first != 0) return {kWholeSlider, kWholeSlider, "", 3};
    const std::string suffix = parameter.control->percent ? " %" : "";
    return {scale.last, scale.last, suffix, scale.whole ? 0 : 2};
}

Row number_row(const Parameter& parameter) {
    const Shown form = shown(parameter);
    Row row{"animated", {}, parameter.control->name, {}, {}};
    // All digits: a whole number is cut off and not rounded.
    row.attributes = attribute("default", number_text(parameter.scale.default_fraction())) +
                     attribute("min", "0") + attribute("max", six_digits(form.last)) +
                     attribute("factor", six_digits(form.factor)) +
                     attribute("decimals", std::to_string(form.decimals));
    if (!form.suffix.empty()) row.attributes += attribute("suffix", form.suffix);
    if (parameter.scale.first != 0) {
        const std::string unit = parameter.control->percent ? " %" : "";
        const std::string last = number_text(form.last);
        row.comment = "Place of the slider: 0 is " + number_text(parameter.scale.first) + unit;
        row.comment += ", " + last + " is " + number_text(parameter.scale.last) + unit;
        if (parameter.scale.whole) row.name += " (0 = " + number_text(parameter.scale.first) + ")";
        if (parameter.scale.first == -parameter.scale.last) row.name += " (50 = 0)";
    }
    return row;
}

Row choice_row(const Parameter& parameter) {
    const std::string name = parameter.control ? parameter.control->name : "Use of the picture";
    std::string steps;
    std::string names;
    for (std::size_t i = 0; i < parameter.choices.size(); ++i) {
        if (i > 0) {
            steps += ';';
            names += ',';
        }
        steps += six_digits(parameter.scale.fraction_of(static_cast<double>(i + 1)));
        names += parameter.choices[i];
    }
    return {
        "list",
        attribute("default", six_digits(parameter.scale.default_fraction())) + attribute("paramlist", steps),
        name,
        {},
        names};
}

Row checkbox_row(const Parameter& parameter) {
    return {"bool",
            attribute("default", six_digits(parameter.scale.default_fraction())) + attribute("min", "0") +
                attribute("max", "1"),
            parameter.control->name};
}

Row scene_row(const Parameter& parameter) {
    return {"url", attribute("default", "") + attribute("filter", "Scenes (*.json)"), "Scene file",
            parameter.explanation};
}

Row gradient_row(const Parameter& parameter) {
    const std::string examples =
        "0:#000000,1:#ffffff;0:#020b1c,0.5:#3fc7a4,1:#fdffe8;0:#140522,0.4:#c2185b,1:#ffe082";
    return {"keywords", attribute("default", "") + attribute("paramlist", examples), parameter.control->name,
            parameter.explanation, "Black to white,Sea,Embers"};
}

Row row_of(const Parameter& parameter) {
    if (parameter.role == Role::kScene) return scene_row(parameter);
    if (parameter.role == Role::kGradient) return gradient_row(parameter);
    if (!parameter.choices.empty()) return choice_row(parameter);
    if (parameter.control->kind == ControlKind::kCheckbox) return checkbox_row(parameter);
    return number_row(parameter);
}

bool share_a_word(const std::string& a, const std::string& b) {
    const auto words = split(b, ' ');
    return std::ranges::any_of(split(a, ' '),
                               [&](std::string_view word) { return std::ranges::count(words, word) > 0; });
}

/// The control's name, after its group's where that says more, and with its id where another has the same
/// name: Kdenlive shows switches before sliders, so that a place in the list says nothing.
std::string full_name(const Parameter& parameter, const std::string& name, std::span<const Parameter> all) {
    if (!parameter.control) return name;
    const scene::Control& control = *parameter.control;
    const bool is_twin = std::ranges::count_if(all, [&](const Parameter& other) {
                             return other.control && other.control->name == control.name;
                         }) > 1;
    const bool is_clear = control.group.empty() || share_a_word(control.group.back(), control.name);
    return (is_clear ? name : control.group.back() + ": " + name) + (is_twin ? " (" + control.id + ")" : "");
}

/// A generator's window does not scroll: it offers the texts and what is reached for first. The effect offers
/// all.
constexpr std::array<std::string_view, 14> kOfGenerator = {
    "NoiseType",    "Evolution",    "LoopEvolution", "Speed",         "Complexity",
    "Scale",        "OffsetX",      "OffsetY",       "NoiseContrast", "NoiseBrightness",
    "NoiseVisible", "LinesVisible", "LinesCount",    "LineWidth"};

bool is_offered(PluginKind kind, const Parameter& parameter) {
    if (kind == PluginKind::kFilter || parameter.role == Role::kScene) return true;
    return std::ranges::count(kOfGenerator, parameter.name) > 0;
}

std::string head(PluginKind kind) {
    const bool is_filter = kind == PluginKind::kFilter;
    const std::string tag = is_filter ? "frei0r.flumo_filter" : "frei0r.flumo";
    return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE kpartgui>\n<") +
           (is_filter ? "effect" : "generator") + attribute("tag", tag) + attribute("id", tag) +
           (is_filter ? attribute("type", "video") : "") + ">\n    <name>Flumo</name>\n    <description>" +
           (is_filter ? "Animated noise and isolines, over the picture or shaped by it"
                      : "Animated procedural noise and isolines") +
           "</description>\n    <author>Flumo</author>\n";
}

}  // namespace

std::string kdenlive_description(PluginKind kind, std::span<const Parameter> parameters) {
    std::string text = head(kind);
    for (const Parameter& parameter : parameters) {
        if (!is_offered(kind, parameter)) continue;
        Row row = row_of(parameter);
        row.name = full_name(parameter, row.name, parameters);
        // A generator's window makes no keyframes.
        if (kind == PluginKind::kSource && row.type == "animated") row.type = "constant";
        text += row_text(parameter, row);
    }
    return text + (kind == PluginKind::kFilter ? "</effect>\n" : "</generator>\n");
}

}  // namespace flumo::frei0r
