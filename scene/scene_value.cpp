#include "scene/scene_value.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "base/text_list.h"
#include "scene/gradient/css_gradient.h"
#include "scene/keyframe_text.h"

namespace flumo::scene {
namespace {

using nlohmann::json;

const json& required(const json& object, const char* name, const ScenePlace& place) {
    const auto found = object.find(name);
    if (found == object.end()) throw place.failure(std::string("expected a key ") + in_quotes(name));
    return *found;
}

void refuse_other_keys(const json& object, const std::vector<std::string>& known, const ScenePlace& place) {
    for (const auto& [key, value] : object.items()) {
        if (std::ranges::find(known, key) == known.end()) {
            throw place.member(key).failure("unknown key; expected one of " + join(known));
        }
    }
}

float read_float(const json& value, const ScenePlace& place) {
    if (!value.is_number() || !std::isfinite(value.get<float>())) throw place.failure("expected a number");
    return value.get<float>();
}

Colour read_float_colour(const json& value, const ScenePlace& place) {
    std::array<float, 4> channels = {0, 0, 0, 1};
    for (std::size_t i = 0; i < value.size(); ++i)
        channels[i] = read_float(value[i], place.element(i));
    return {channels[0], channels[1], channels[2], channels[3]};
}

Colour read_colour(const json& value, const ScenePlace& place) {
    if (value.is_array() && (value.size() == 3 || value.size() == 4)) return read_float_colour(value, place);
    const auto colour = value.is_string() ? colour_from_css(value.get<std::string>()) : std::nullopt;
    if (!colour)
        throw place.failure("expected \"#rrggbb\", \"#rrggbbaa\", a name of CSS, [r, g, b] or [r, g, b, a]");
    return *colour;
}

StopKind read_kind(const json& value, const ScenePlace& place) {
    const auto kind = value.is_string() ? kind_from_word(value.get<std::string>()) : std::nullopt;
    if (!kind) throw place.failure("expected \"linear\", \"sin\" or \"edge\"");
    return *kind;
}

Stop read_stop(const json& value, const ScenePlace& place) {
    if (!value.is_object()) throw place.failure("expected a stop {\"at\", \"color\", \"kind\"}");
    refuse_other_keys(value, {"at", "color", "kind"}, place);
    Stop stop;
    stop.at = read_float(required(value, "at", place), place.member("at"));
    stop.colour = read_colour(required(value, "color", place), place.member("color"));
    if (value.contains("kind")) stop.kind = read_kind(value["kind"], place.member("kind"));
    return stop;
}

std::vector<Stop> read_stops(const json& value, const ScenePlace& place) {
    std::vector<Stop> stops;
    for (std::size_t i = 0; i < value.size(); ++i)
        stops.push_back(read_stop(value[i], place.element(i)));
    return stops;
}

const char* expected_form(const Control& control) {
    switch (control.kind) {
        case ControlKind::kArbitrary:
            return "expected an array of stops or a gradient as text";
        case ControlKind::kLayer:
            return "expected a file name or null";
        case ControlKind::kCheckbox:
            return "expected true or false";
        case ControlKind::kPopup:
            return "expected a name or a number";
        default:
            return "expected a number";
    }
}

ControlValue read_value(const Control& control, const json& value, const ScenePlace& place) {
    const auto text = [&] {
        return parse_control_value(control, value.get<std::string>(), place.file.parent_path());
    };
    if (value.is_string()) return within(place, text);
    if (value.is_number() && control.is_number()) {
        return within(place, [&] { return ControlValue(checked_number(control, value.get<double>())); });
    }
    if (value.is_boolean() && control.kind == ControlKind::kCheckbox) return value.get<bool>() ? 1.0 : 0.0;
    if (value.is_array() && control.kind == ControlKind::kArbitrary) return read_stops(value, place);
    if (value.is_null() && control.kind == ControlKind::kLayer) return std::filesystem::path();
    throw place.failure(expected_form(control));
}

int read_frame(const json& value, const ScenePlace& place) {
    const bool fits = value.is_number_integer() && value.get<int64_t>() >= std::numeric_limits<int>::min() &&
                      value.get<int64_t>() <= std::numeric_limits<int>::max();
    if (!fits) throw place.failure("expected a whole frame number");
    return value.get<int>();
}

Interpolation read_interpolation(const Control& control, const json& value, const ScenePlace& place) {
    if (!value.is_string()) throw place.failure("expected \"linear\", \"hold\" or \"ease\"");
    const auto interpolation = within(place, [&] { return parse_interpolation(value.get<std::string>()); });
    if (interpolation == Interpolation::kEase && !control.is_number())
        throw place.failure("ease is for numbers; a gradient takes linear or hold");
    return interpolation;
}

Keyframe read_keyframe(const Control& control, const json& value, const ScenePlace& place) {
    if (!value.is_object()) throw place.failure("expected a keyframe {\"frame\", \"value\"}");
    refuse_other_keys(value, {"frame", "value", "interpolation"}, place);
    Keyframe keyframe{read_frame(required(value, "frame", place), place.member("frame")),
                      read_value(control, required(value, "value", place), place.member("value"))};
    if (value.contains("interpolation"))
        keyframe.to_next = read_interpolation(control, value["interpolation"], place.member("interpolation"));
    return keyframe;
}

// Stops are told from keyframes by the first element.
bool is_keyframes(const Control& control, const json& value) {
    if (!value.is_array()) return false;
    if (control.kind != ControlKind::kArbitrary) return true;
    return !value.empty() && value[0].is_object() && value[0].contains("frame");
}

std::vector<Keyframe> read_keyframes(const Control& control, const json& value, const ScenePlace& place) {
    if (!takes_keyframes(control))
        throw place.failure("this control cannot vary over time; expected one value");
    if (value.empty()) throw place.failure("expected at least one keyframe");
    std::vector<Keyframe> keyframes;
    for (std::size_t i = 0; i < value.size(); ++i) {
        Keyframe keyframe = read_keyframe(control, value[i], place.element(i));
        if (!keyframes.empty() && keyframe.frame <= keyframes.back().frame) {
            throw place.element(i).member("frame").failure("expected a frame after " +
                                                           std::to_string(keyframes.back().frame));
        }
        keyframes.push_back(std::move(keyframe));
    }
    return keyframes;
}

}  // namespace

Track read_track(const Control& control, const json& value, const ScenePlace& place) {
    if (is_keyframes(control, value)) return {&control, read_keyframes(control, value, place)};
    return {&control, {{0, read_value(control, value, place)}}};
}

}  // namespace flumo::scene
