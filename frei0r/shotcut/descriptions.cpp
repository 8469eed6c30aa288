#include "frei0r/shotcut/descriptions.h"

#include <nlohmann/json.hpp>

namespace flumo::frei0r {
namespace {

using nlohmann::ordered_json;
using scene::ControlKind;

/// So many turns may be reached in the panel.
constexpr double kTurns = 20;

bool is_switch(const Parameter& parameter) {
    return parameter.control && parameter.control->kind == ControlKind::kCheckbox;
}

bool takes_keyframes(const Parameter& parameter) {
    return parameter.role == Role::kNumber && parameter.choices.empty() && !is_switch(parameter);
}

bool is_angle(const Parameter& parameter) {
    return parameter.control->kind == ControlKind::kAngle;
}

/// The largest number of the panel, as frei0r counts.
double last_fraction(const Parameter& parameter) {
    return is_angle(parameter) ? kTurns : 1;
}

std::string unit(const Parameter& parameter) {
    if (is_angle(parameter)) return " °";
    return parameter.control->percent ? " %" : "";
}

/// The panel's groups, the outermost first.
std::string heading(const Parameter& parameter) {
    std::string text;
    for (const std::string& group : parameter.control->group)
        text += (text.empty() ? "" : " / ") + group;
    return text;
}

ordered_json text_row(const Parameter& parameter) {
    const bool is_scene = parameter.role == Role::kScene;
    return {{"name", parameter.name},
            {"title", is_scene ? "Scene file" : parameter.control->name},
            {"tip", parameter.explanation}};
}

ordered_json control_row(const Parameter& parameter) {
    const NumberScale& scale = parameter.scale;
    ordered_json row = {{"name", parameter.name},
                        {"title", parameter.control ? parameter.control->name : "Use of the picture"},
                        {"heading", parameter.control ? heading(parameter) : ""},
                        {"tip", parameter.explanation},
                        {"normal", scale.default_fraction()}};
    if (!parameter.choices.empty()) {
        row["kind"] = "choice";
        row["choices"] = parameter.choices;
    } else if (is_switch(parameter)) {
        row["kind"] = "switch";
    } else {
        row["kind"] = "number";
        row["first"] = scale.first;
        row["last"] = scale.last;
        row["end"] = scale.first + last_fraction(parameter) * (scale.last - scale.first);
        row["decimals"] = scale.whole ? 0 : 2;
        row["suffix"] = unit(parameter);
    }
    return row;
}

}  // namespace

std::string shotcut_metadata(std::span<const Parameter> parameters) {
    std::string rows;
    for (const Parameter& parameter : parameters) {
        if (!takes_keyframes(parameter)) continue;
        rows += rows.empty() ? "" : ",\n";
        rows += "            Parameter { name: " + ordered_json(parameter.control->name).dump() +
                "; property: " + ordered_json(parameter.name).dump() +
                "; isCurve: true; minimum: 0; maximum: " + ordered_json(last_fraction(parameter)).dump() +
                " }";
    }
    return "import QtQuick 2.0\nimport org.shotcut.qml 1.0\n\nMetadata {\n    type: Metadata.Filter\n"
           "    name: \"Flumo\"\n    keywords: \"noise lines generator flumo frei0r\"\n"
           "    mlt_service: \"frei0r.flumo_filter\"\n    qml: \"ui.qml\"\n    keyframes {\n"
           "        allowAnimateIn: true\n        allowAnimateOut: true\n        parameters: [\n" +
           rows + "\n        ]\n    }\n}\n";
}

std::string shotcut_controls(std::span<const Parameter> parameters) {
    ordered_json texts = ordered_json::array();
    ordered_json controls = ordered_json::array();
    for (const Parameter& parameter : parameters)
        (parameter.is_text() ? texts : controls)
            .push_back(parameter.is_text() ? text_row(parameter) : control_row(parameter));
    return ".pragma library\n\nvar texts = " + texts.dump(1) + ";\n\nvar controls = " + controls.dump(1) +
           ";\n";
}

}  // namespace flumo::frei0r
