#include "scene/scene_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "base/frame_rate.h"
#include "host/values/arbitrary_value.h"

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

struct ToJson {
    ordered_json operator()(double number) const {
        if (control.kind == ControlKind::kCheckbox) return number != 0;
        return number;
    }

    ordered_json operator()(const std::vector<Stop>& stops) const {
        if (stops.empty() || !std::ranges::all_of(stops, is_plain)) return hex_of(to_stored_form(stops));
        ordered_json array = ordered_json::array();
        for (const Stop& stop : stops) {
            const Colour& c = stop.colour;
            array.push_back(
                {{"at", stop.at}, {"color", {c.r, c.g, c.b, c.a}}, {"kind", *word_of_kind(stop.kind)}});
        }
        return array;
    }

    ordered_json operator()(const std::filesystem::path& file) const {
        return file.empty() ? ordered_json() : ordered_json(std::filesystem::absolute(file).string());
    }

    const Control& control;
};

ordered_json track_json(const Track& track) {
    const ToJson to_json{*track.control};
    if (track.keyframes.size() == 1) return std::visit(to_json, track.keyframes.front().value);
    ordered_json array = ordered_json::array();
    for (const Keyframe& keyframe : track.keyframes)
        array.push_back({{"frame", keyframe.frame}, {"value", std::visit(to_json, keyframe.value)}});
    return array;
}

ControlValue default_value(const Control& control, host::Host& host) {
    if (control.kind == ControlKind::kLayer) return std::filesystem::path();
    if (control.kind != ControlKind::kArbitrary) return control.default_value;
    const auto value = host::ArbitraryValue::default_of(host, host.control(control.index));
    return stops_from_stored_form(value->flatten()).value_or(std::vector<Stop>());
}

ordered_json controls_json(const Scene& scene, const ControlCatalog& catalog, host::Host& host) {
    ordered_json controls = ordered_json::object();
    for (const Control& control : catalog.controls()) {
        if (!control.is_number() && control.kind != ControlKind::kArbitrary &&
            control.kind != ControlKind::kLayer)
            continue;
        const auto track = scene.tracks.find(control.index);
        controls[control.id] = track != scene.tracks.end()
                                   ? track_json(track->second)
                                   : std::visit(ToJson{control}, default_value(control, host));
    }
    return controls;
}

}  // namespace

SceneText::SceneText(const Scene& scene, const ControlCatalog& catalog, host::Host& host)
    : scene_(std::make_unique<ordered_json>(ordered_json::object())) {
    ordered_json& text = *scene_;
    if (scene.size) text["size"] = {scene.size->width, scene.size->height};
    if (scene.depth) text["depth"] = *scene.depth;
    if (scene.rate) text["fps"] = frame_rate_text(*scene.rate);
    text["controls"] = controls_json(scene, catalog, host);
}

SceneText::~SceneText() = default;

std::string SceneText::of_frame(int frame) const {
    ordered_json scene = *scene_;
    scene["frames"] = frame;
    return scene.dump(1);
}

}  // namespace flumo::scene
