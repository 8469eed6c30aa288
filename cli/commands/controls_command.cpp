#include "cli/commands/controls_command.h"
#include "cli/options/module_option.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text_list.h"
#include "host/values/arbitrary_value.h"
#include "job/session.h"
#include "scene/control_needs.h"

namespace flumo::cli {
namespace {

using nlohmann::ordered_json;

constexpr const char* kFooter = R"(
Examples:
  flumo controls | grep Lines
  flumo controls --json | jq '.[] | select(.kind == "popup") | .choices')";

// Sliders hold single-precision numbers: 1.4 and not 1.399999976158142.
std::string as_registered(double value) {
    return number_text(static_cast<float>(value));
}

double as_registered_number(double value) {
    return std::stod(as_registered(value));
}

std::string range_text(const host::Range& range) {
    return as_registered(range.min) + " to " + as_registered(range.max);
}

std::string default_gradient(job::Session& session, const scene::Control& control) {
    return host::ArbitraryValue::default_of(session.host(), session.host().control(control.index))->print();
}

std::string range_column(const scene::Control& control) {
    if (control.kind == scene::ControlKind::kPopup)
        return range_text(control.valid) + ": " + join(scene::offered_choices(control));
    if (control.kind == scene::ControlKind::kCheckbox) return "off, on";
    return control.is_number() && control.kind != scene::ControlKind::kAngle ? range_text(control.valid) : "";
}

std::string default_column(job::Session& session, const scene::Control& control) {
    const auto choices = scene::offered_choices(control);
    const auto number = static_cast<std::size_t>(control.default_value);
    switch (control.kind) {
        case scene::ControlKind::kArbitrary:
            return default_gradient(session, control);
        case scene::ControlKind::kCheckbox:
            return control.default_value == 0 ? "off" : "on";
        case scene::ControlKind::kPopup:
            return number >= 1 && number <= choices.size() ? choices[number - 1]
                                                           : as_registered(control.default_value);
        case scene::ControlKind::kLayer:
            return "none";
        default:
            return control.is_number() ? as_registered(control.default_value) + (control.percent ? " %" : "")
                                       : "";
    }
}

std::string group_column(const scene::Control& control) {
    std::string path;
    for (const std::string& group : control.group)
        path += (path.empty() ? "" : " / ") + group;
    return path;
}

// A group end is registered with whatever name the control before it had.
std::string name_column(const scene::Control& control) {
    return control.kind == scene::ControlKind::kGroupEnd ? "" : control.name;
}

using Row = std::array<std::string, 7>;

Row row_of(job::Session& session, const scene::Control& control) {
    return {std::to_string(control.index), control.id,
            name_column(control),          std::string(host::kind_name(control.kind)),
            range_column(control),         default_column(session, control),
            group_column(control)};
}

std::string line_of(const Row& row, const std::array<std::size_t, 7>& widths) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i)
        line += row[i] + std::string(widths[i] - row[i].size() + 2, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

ordered_json range_json(const host::Range& range) {
    return {as_registered_number(range.min), as_registered_number(range.max)};
}

void add_number(ordered_json& object, const scene::Control& control) {
    object["default"] = as_registered_number(control.default_value);
    if (control.kind != scene::ControlKind::kAngle) object["range"] = range_json(control.valid);
    if (control.kind == scene::ControlKind::kSlider || control.kind == scene::ControlKind::kFloatSlider) {
        object["slider"] = range_json(control.slider);
    }
    if (control.kind == scene::ControlKind::kFloatSlider) object["percent"] = control.percent;
    if (control.kind == scene::ControlKind::kPopup) object["choices"] = scene::offered_choices(control);
}

ordered_json json_of(job::Session& session, const scene::Control& control) {
    ordered_json object = {{"index", control.index},
                           {"id", control.id},
                           {"diskId", control.disk_id},
                           {"name", name_column(control)},
                           {"kind", host::kind_name(control.kind)},
                           {"group", control.group}};
    if (control.is_number()) add_number(object, control);
    if (control.kind == scene::ControlKind::kArbitrary)
        object["default"] = default_gradient(session, control);
    if (control.kind == scene::ControlKind::kLayer) object["default"] = nullptr;
    if (!control.is_group_mark()) object["keyframes"] = scene::takes_keyframes(control);
    return object;
}

std::string controls_as_text(job::Session& session) {
    std::vector<Row> rows = {{"Index", "Id", "Name", "Kind", "Range", "Default", "Group"}};
    for (const scene::Control& control : session.catalog().controls())
        rows.push_back(row_of(session, control));
    std::array<std::size_t, 7> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const Row& row : rows)
        text += line_of(row, widths);
    return text;
}

std::string controls_as_json(job::Session& session) {
    ordered_json array = ordered_json::array();
    for (const scene::Control& control : session.catalog().controls())
        array.push_back(json_of(session, control));
    return array.dump(2) + "\n";
}

// Controls with the same needs share a row.
std::string needs_as_text(const scene::ControlCatalog& catalog) {
    std::vector<std::pair<std::string, std::string>> rows;
    for (const scene::ControlNeeds& needs : scene::control_needs()) {
        const std::string text = scene::needs_text(needs, catalog);
        auto row = std::ranges::find(rows, text, &std::pair<std::string, std::string>::first);
        if (row == rows.end()) row = rows.insert(rows.end(), {text, ""});
        row->second += (row->second.empty() ? "`" : ", `") + std::string(needs.id) + "`";
    }
    std::string table = "| needs | controls |\n|---|---|\n";
    for (const auto& [text, ids] : rows)
        table.append("| ").append(text).append(" | ").append(ids).append(" |\n");
    return table;
}

}  // namespace

void add_controls_options(CLI::App& command, ControlsOptions& options) {
    command.footer(kFooter);
    command.add_flag("--json", options.json, "Write JSON");
    command.add_flag("--needs", options.needs,
                     "Write which controls have an effect only together with others");
    const auto set_module = [&options](const std::string& text) { options.module = parse_module(text); };
    command.add_option_function<std::string>("--module", set_module, "The effect to load")
        ->type_name("FILE")
        ->default_str("beside flumo, then in ../lib/flumo");
}

ExitStatus controls(const ControlsOptions& options, const StdoutGuard& output) {
    job::Session session(options.module, job::Use::kControlsAlone);
    if (options.needs) {
        output.write(needs_as_text(session.catalog()));
        return ExitStatus::kDone;
    }
    output.write(options.json ? controls_as_json(session) : controls_as_text(session));
    return ExitStatus::kDone;
}

}  // namespace flumo::cli
