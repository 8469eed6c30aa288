#include "cli/scene_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli/frame_rate.h"
#include "host/arbitrary_value.h"

namespace flumo::cli {
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

ControlValue default_value(const Control& control, Session& session) {
    if (control.kind == ControlKind::kLayer) return std::filesystem::path();
    if (control.kind != ControlKind::kArbitrary) return control.default_value;
    host::Host& host = session.host();
    const auto value = host::ArbitraryValue::default_of(host, host.control(control.index));
    return stops_from_stored_form(value->flatten()).value_or(std::vector<Stop>());
}

ordered_json controls_json(const RenderJob& job, Session& session) {
    ordered_json controls = ordered_json::object();
    for (const Control& control : session.catalog().controls()) {
        if (!control.is_number() && control.kind != ControlKind::kArbitrary &&
            control.kind != ControlKind::kLayer)
            continue;
        const auto track = job.tracks.find(control.index);
        controls[control.id] = track != job.tracks.end()
                                   ? track_json(track->second)
                                   : std::visit(ToJson{control}, default_value(control, session));
    }
    return controls;
}

}  // namespace

SceneText::SceneText(const RenderJob& job, Session& session)
    : scene_(std::make_unique<ordered_json>(ordered_json{
          {"size", {job.size.width, job.size.height}},
          {"depth", static_cast<int>(job.depth)},
          {"fps", frame_rate_text(job.rate)},
          {"controls", controls_json(job, session)},
      })) {}

SceneText::~SceneText() = default;

std::string SceneText::of_frame(int frame) const {
    ordered_json scene = *scene_;
    scene["frames"] = frame;
    return scene.dump(1);
}

}  // namespace flumo::cli
