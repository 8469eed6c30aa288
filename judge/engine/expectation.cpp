#include "judge/engine/expectation.h"

#include <algorithm>
#include <fstream>
#include <span>
#include <stdexcept>
#include <string_view>

namespace flumo::judge {

namespace {

using nlohmann::json;

constexpr std::string_view kIdentityKeys[] = {"name",    "matchName", "category", "entryPoint",
                                              "version", "outFlags",  "outFlags2"};
/// What `flumo info` also writes; it says nothing of the effect's registration.
constexpr std::string_view kOtherInfoKeys[] = {"module", "versionText", "interfaceVersion", "openGl"};
/// The last two are flumo's own names and what follows from other keys; they are not compared.
constexpr std::string_view kControlKeys[] = {"index", "diskId", "name",    "kind",    "group", "default",
                                             "range", "slider", "percent", "choices", "id",    "keyframes"};

json range_json(const host::Range& range) {
    return {range.min, range.max};
}

/// What the effect registered, under the keys that an expectation may have.
json described(const host::Control& control, const std::map<int, std::string>& texts) {
    const bool is_end = control.kind == host::ControlKind::kGroupEnd;
    json object = {{"index", control.index},
                   {"diskId", control.disk_id},
                   {"name", is_end ? "" : control.name},
                   {"kind", host::kind_name(control.kind)},
                   {"group", control.group}};
    if (control.is_number()) object["default"] = control.default_value;
    if (const auto text = texts.find(control.index); text != texts.end()) object["default"] = text->second;
    if (control.is_number() && control.kind != host::ControlKind::kAngle)
        object["range"] = range_json(control.valid);
    if (control.kind == host::ControlKind::kSlider || control.kind == host::ControlKind::kFloatSlider)
        object["slider"] = range_json(control.slider);
    if (control.kind == host::ControlKind::kFloatSlider) object["percent"] = control.percent;
    if (control.kind == host::ControlKind::kPopup) {
        const auto named = std::min(control.choices.size(), static_cast<size_t>(control.valid.max));
        object["choices"] = std::vector(control.choices.begin(),
                                        control.choices.begin() + static_cast<std::ptrdiff_t>(named));
    }
    return object;
}

/// Numbers are compared as the sliders hold them, in single precision.
bool same(const json& a, const json& b) {
    if (a.is_number() && b.is_number()) return a.get<float>() == b.get<float>();
    if (!a.is_array() || !b.is_array() || a.size() != b.size()) return a == b;
    for (size_t i = 0; i < a.size(); ++i) {
        if (!same(a[i], b[i])) return false;
    }
    return true;
}

void compare(const json& expected, const json& seen, const std::string& what,
             std::vector<Mismatch>& mismatches) {
    for (const auto& [key, value] : expected.items()) {
        if (!seen.contains(key) || same(value, seen[key])) continue;
        mismatches.push_back({what + key + " " + value.dump(), seen[key].dump()});
    }
}

/// `flumo info` writes flags as an object of value and names.
json plain(const json& value) {
    return value.is_object() && value.contains("value") ? value["value"] : value;
}

std::string listed(std::span<const std::string_view> keys) {
    std::string text;
    for (const std::string_view key : keys)
        text += (text.empty() ? "" : ", ") + std::string(key);
    return text;
}

bool is_known(std::span<const std::string_view> keys, const std::string& key) {
    return std::ranges::find(keys, key) != keys.end();
}

/// A key that nothing is compared with would pass unnoticed.
void read_identity(const std::filesystem::path& path, const json& read, Expectation& expectation) {
    for (const auto& [key, value] : read.items()) {
        if (key == "controls") {
            if (!value.is_array() && !value.is_number_unsigned())
                throw std::runtime_error(path.string() + ": controls: expected an array or a number");
            expectation.controls = value;
        } else if (is_known(kIdentityKeys, key)) {
            expectation.identity[key] = plain(value);
        } else if (!is_known(kOtherInfoKeys, key)) {
            throw std::runtime_error(path.string() + ": unknown key \"" + key + "\", expected " +
                                     listed(kIdentityKeys) + " or controls");
        }
    }
}

std::string unknown_key(const std::string& place, const std::string& key) {
    return place + ": unknown key \"" + key + "\", expected " + listed(kControlKeys);
}

void require_known_keys(const std::filesystem::path& path, const json& controls) {
    for (size_t i = 0; controls.is_array() && i < controls.size(); ++i) {
        const std::string place = path.string() + ": control " + std::to_string(i + 1);
        if (!controls[i].is_object()) throw std::runtime_error(place + ": expected an object");
        for (const auto& [key, value] : controls[i].items()) {
            if (!is_known(kControlKeys, key)) throw std::runtime_error(unknown_key(place, key));
        }
    }
}

}  // namespace

Expectation read_expectation(const std::filesystem::path& path) {
    if (path.empty()) return {};
    std::ifstream file(path);
    const json read = json::parse(file, nullptr, false);
    Expectation expectation{json::object(), read.is_array() ? read : json()};
    if (read.is_object()) read_identity(path, read, expectation);
    if (!read.is_object() && !read.is_array())
        throw std::runtime_error(path.string() + ": expected a JSON object or array");
    if (expectation.identity.empty() && expectation.controls.empty())
        throw std::runtime_error(path.string() + ": expects nothing");
    require_known_keys(path, expectation.controls);
    return expectation;
}

std::vector<Mismatch> identity_mismatches(const Expectation& expected, const host::Registration& registration,
                                          const host::EffectIdentity& identity) {
    const json seen = {{"name", registration.name},         {"matchName", registration.match_name},
                       {"category", registration.category}, {"entryPoint", registration.entry_point},
                       {"version", identity.version},       {"outFlags", identity.flags},
                       {"outFlags2", identity.flags2}};
    std::vector<Mismatch> mismatches;
    // Flags need all their bits: no single precision here.
    for (const auto& [key, value] : expected.identity.items()) {
        if (value != seen[key]) mismatches.push_back({key + " " + value.dump(), seen[key].dump()});
    }
    return mismatches;
}

std::vector<Mismatch> control_mismatches(const Expectation& expected,
                                         const std::vector<host::Control>& controls,
                                         const std::map<int, std::string>& texts) {
    std::vector<Mismatch> mismatches;
    const size_t count =
        expected.controls.is_array() ? expected.controls.size() : expected.controls.get<size_t>();
    if (count != controls.size())
        mismatches.push_back({std::to_string(count) + " controls", std::to_string(controls.size())});
    if (!expected.controls.is_array()) return mismatches;
    for (size_t i = 0; i < std::min(expected.controls.size(), controls.size()); ++i) {
        compare(expected.controls[i], described(controls[i], texts),
                "for control " + std::to_string(i + 1) + " ", mismatches);
    }
    return mismatches;
}

}  // namespace flumo::judge
