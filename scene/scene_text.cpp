#include "scene/scene_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "base/frame_rate.h"
#include "base/number_text.h"
#include "host/values/arbitrary_value.h"
#include "scene/frame_list.h"
#include "scene/keyframe_text.h"

namespace flumo::scene {
namespace {

using nlohmann::ordered_json;

// Whether the readable form of a scene file can hold the stop: JSON has no infinity.
bool is_plain(const Stop& stop) {
    const Colour& c = stop.colour;
    return word_of_kind(stop.kind) && std::isfinite(stop.at) && std::isfinite(c.r) && std::isfinite(c.g) &&
           std::isfinite(c.b) && std::isfinite(c.a);
}

std::string hex_of(std::span<const uint8_t> bytes) {
    std::string text;
    for (const uint8_t byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text;
}

// How much a text is meant for people: exact numbers alone, or names of choices and numbers as they were
// written.
enum class Reader { kProgram, kPeople };

// A float that reads back as the same bits, for people without the digits of a double.
ordered_json float_json(float value, Reader reader) {
    return reader == Reader::kProgram ? ordered_json(value) : ordered_json(std::stod(number_text(value)));
}

struct ToJson {
    ordered_json operator()(double number) const {
        if (control.kind == ControlKind::kCheckbox) return number != 0;
        if (reader == Reader::kProgram) return number;
        const auto choices = offered_choices(control);
        const auto choice = static_cast<std::size_t>(number);
        if (control.kind == ControlKind::kPopup && choice >= 1 && choice <= choices.size())
            return choices[choice - 1];
        const bool is_whole = number == std::floor(number) && std::abs(number) < 1e15;
        return is_whole ? ordered_json(static_cast<int64_t>(number)) : ordered_json(number);
    }

    ordered_json operator()(const std::vector<Stop>& stops) const {
        if (stops.empty() || !std::ranges::all_of(stops, is_plain)) return hex_of(to_stored_form(stops));
        ordered_json array = ordered_json::array();
        for (const Stop& stop : stops) {
            ordered_json colour = ordered_json::array();
            for (const float channel : {stop.colour.r, stop.colour.g, stop.colour.b, stop.colour.a})
                colour.push_back(float_json(channel, reader));
            array.push_back({{"at", float_json(stop.at, reader)},
                             {"color", std::move(colour)},
                             {"kind", *word_of_kind(stop.kind)}});
        }
        return array;
    }

    ordered_json operator()(const std::filesystem::path& file) const {
        return file.empty() ? ordered_json() : ordered_json(std::filesystem::absolute(file).string());
    }

    const Control& control;
    Reader reader;
};

ordered_json track_json(const Track& track, Reader reader) {
    const ToJson to_json{*track.control, reader};
    if (track.keyframes.size() == 1) return std::visit(to_json, track.keyframes.front().value);
    ordered_json array = ordered_json::array();
    for (const Keyframe& keyframe : track.keyframes) {
        ordered_json object = {{"frame", keyframe.frame}, {"value", std::visit(to_json, keyframe.value)}};
        if (keyframe.to_next != Interpolation::kLinear)
            object["interpolation"] = interpolation_word(keyframe.to_next);
        array.push_back(std::move(object));
    }
    return array;
}

ordered_json controls_json(const Scene& scene, const ControlCatalog& catalog, host::Host& host) {
    ordered_json controls = ordered_json::object();
    for (const Control& control : catalog.controls()) {
        if (!control.is_number() && control.kind != ControlKind::kArbitrary &&
            control.kind != ControlKind::kLayer)
            continue;
        const auto track = scene.tracks.find(control.index);
        controls[control.id] = track != scene.tracks.end() ? track_json(track->second, Reader::kProgram)
                                                           : std::visit(ToJson{control, Reader::kProgram},
                                                                        default_value(control, host));
    }
    return controls;
}

// What all forms of a scene have.
ordered_json frame_json(const Scene& scene) {
    ordered_json text = ordered_json::object();
    if (!scene.description.empty()) text["description"] = scene.description;
    if (scene.size) text["size"] = {scene.size->width, scene.size->height};
    if (scene.resolution) text["resolution"] = resolution_text(*scene.resolution);
    if (scene.depth) text["depth"] = *scene.depth;
    if (scene.rate) text["fps"] = frame_rate_text(*scene.rate);
    return text;
}

}  // namespace

ControlValue default_value(const Control& control, host::Host& host) {
    if (control.kind == ControlKind::kLayer) return std::filesystem::path();
    if (control.kind != ControlKind::kArbitrary) return control.default_value;
    const auto value = host::ArbitraryValue::default_of(host, host.control(control.index));
    return stops_from_stored_form(value->flatten()).value_or(std::vector<Stop>());
}

std::string scene_text(const Scene& scene) {
    ordered_json text = frame_json(scene);
    if (scene.frames) text["frames"] = frame_list_text(*scene.frames);
    text["controls"] = ordered_json::object();
    for (const auto& [index, track] : scene.tracks)
        text["controls"][track.control->id] = track_json(track, Reader::kPeople);
    return text.dump(2) + "\n";
}

SceneText::SceneText(const Scene& scene, const ControlCatalog& catalog, host::Host& host)
    : scene_(std::make_unique<ordered_json>(frame_json(scene))) {
    (*scene_)["controls"] = controls_json(scene, catalog, host);
}

SceneText::~SceneText() = default;

std::string SceneText::of_frames(std::span<const int> frames) const {
    ordered_json scene = *scene_;
    if (frames.size() == 1) {
        scene["frames"] = frames[0];
    } else {
        scene["frames"] = frame_list_text(frames);
    }
    // JSON has no other bytes than UTF-8: a file name that is none loses what cannot be told.
    return scene.dump(-1, ' ', true, ordered_json::error_handler_t::replace);
}

}  // namespace flumo::scene
