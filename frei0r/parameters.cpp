#include "frei0r/parameters.h"

#include <cmath>

#include "base/number_text.h"
#include "frei0r/interface.h"
#include "frei0r/linked_effect.h"
#include "host/host.h"

namespace flumo::frei0r {
namespace {

using scene::Control;
using scene::ControlKind;

std::string place_of(const Control& control) {
    std::string place;
    for (const std::string& group : control.group)
        place += group + " / ";
    return place + control.name;
}

std::string three_digits(double fraction) {
    return number_text(std::round(fraction * 1000) / 1000);
}

std::string steps_text(const NumberScale& scale, const std::vector<std::string>& choices) {
    std::string text;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const double step = scale.fraction_of(static_cast<double>(i + 1));
        text += (i == 0 ? "" : ", ") + three_digits(step) + " " + choices[i];
    }
    return text;
}

std::string range_text(const Control& control, const NumberScale& scale) {
    if (control.kind == ControlKind::kCheckbox) return "on or off";
    if (control.kind == ControlKind::kAngle) return "in turns of 360 degrees; more than 1 turns on";
    const std::string unit = control.percent ? " %" : "";
    return "0 is " + number_text(scale.first) + unit + ", 1 is " + number_text(scale.last) + unit;
}

Parameter number_parameter(const Control& control) {
    Parameter parameter{.role = Role::kNumber, .name = control.id, .explanation = {}, .control = &control};
    parameter.scale = number_scale(control);
    if (control.kind == ControlKind::kPopup) {
        const auto offered = scene::offered_choices(control);
        parameter.choices.assign(offered.begin(), offered.end());
    }
    const std::string meaning = parameter.choices.empty() ? range_text(control, parameter.scale)
                                                          : steps_text(parameter.scale, parameter.choices);
    parameter.explanation = place_of(control) + ": " + meaning;
    return parameter;
}

Parameter gradient_parameter(const std::string& name, const Control& control) {
    return {
        .role = Role::kGradient,
        .name = name,
        .explanation = place_of(control) + ": stops such as 0:#000000,0.5:edge:#ff8800,1:#ffffff, or @FILE",
        .control = &control};
}

Parameter scene_parameter() {
    return {.role = Role::kScene,
            .name = "scene",
            .explanation =
                "A scene file, or the text of one. Its keyframes follow the clip's time; a number "
                "that is not at its default goes before what the scene says"};
}

Parameter use_parameter() {
    Parameter use{.role = Role::kUse, .name = "use", .explanation = {}};
    use.choices = {"Shape", "Add", "Gradient", "Reflection", "Refraction", "Over"};
    use.scale = choice_scale(use.choices.size(), static_cast<std::size_t>(Use::kOver));
    use.explanation = "What the input picture is for: " + steps_text(use.scale, use.choices);
    return use;
}

}  // namespace

int Parameter::type() const {
    if (is_text()) return kF0rString;
    return control && control->kind == ControlKind::kCheckbox ? kF0rBool : kF0rDouble;
}

scene::ControlCatalog registered_controls() {
    const host::Module module = linked_effect();
    host::Host host(module);
    host.params_setup();
    scene::ControlCatalog catalog(host.controls());
    host.release_controls();
    return catalog;
}

std::vector<Parameter> make_parameters(PluginKind kind, const scene::ControlCatalog& catalog) {
    std::vector<Parameter> parameters = {scene_parameter()};
    if (kind == PluginKind::kFilter) parameters.push_back(use_parameter());
    parameters.push_back(gradient_parameter("gradient", catalog.find("Gradient")));
    parameters.push_back(gradient_parameter("lines gradient", catalog.find("LinesGradient")));
    for (const Control& control : catalog.controls()) {
        if (control.is_number()) parameters.push_back(number_parameter(control));
    }
    return parameters;
}

}  // namespace flumo::frei0r
