#include "scene/scene.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "base/failure.h"
#include "base/file_contents.h"
#include "base/frame_rate.h"
#include "base/text_list.h"
#include "scene/depth.h"
#include "scene/frame_list.h"
#include "scene/scene_value.h"

namespace flumo::scene {
namespace {

using nlohmann::json;

// The library's message without its own name and number, which stand before the place or before what it says
// of a number out of range, and without the bytes that it read last.
std::string reason_of(const json::exception& error) {
    std::string what = error.what();
    const std::size_t place = what.find("line ");
    what.erase(0, place != what.npos ? place : what.find("] ") + 2);
    const std::size_t bytes = what.find("; last read: '");
    if (bytes != what.npos) what.erase(bytes, what.rfind('\'') + 1 - bytes);
    return printable(what);
}

// Refuses a key that an object holds twice, of which the parser would keep the last.
class KeysOnce {
  public:
    bool operator()(int, json::parse_event_t event, json& parsed) {
        if (event == json::parse_event_t::object_start) open_.emplace_back();
        if (event == json::parse_event_t::object_end) open_.pop_back();
        if (event == json::parse_event_t::key) {
            const auto& key = parsed.get_ref<const std::string&>();
            if (!open_.back().insert(key).second)
                throw usage_failure("the key " + in_quotes(key) + " stands twice");
        }
        return true;
    }

  private:
    std::vector<std::set<std::string>> open_;
};

json parse_json(std::string_view text, const std::filesystem::path& path) try {
    return json::parse(text, KeysOnce());
} catch (const json::exception& error) {
    throw input_failure(path.string() + ": " + reason_of(error));
} catch (const Failure& failure) {
    throw Failure(failure.kind(), path.string() + ": " + failure.what());
}

FrameSize read_size(const json& value, const ScenePlace& place) {
    if (value.is_string()) return within(place, [&] { return parse_frame_size(value.get<std::string>()); });
    const bool is_pair =
        value.is_array() && value.size() == 2 && value[0].is_number_integer() && value[1].is_number_integer();
    if (!is_pair) throw place.failure("expected \"WIDTHxHEIGHT\" or [WIDTH, HEIGHT]");
    return within(place, [&] { return checked_frame_size(value[0].get<long>(), value[1].get<long>()); });
}

Resolution read_resolution(const json& value, const ScenePlace& place) {
    if (!value.is_string()) throw place.failure("expected a text such as \"half\" or \"2/3\"");
    return within(place, [&] { return parse_resolution(value.get<std::string>()); });
}

int read_depth(const json& value, const ScenePlace& place) {
    if (!value.is_number_integer()) throw place.failure("expected 8, 16 or 32");
    return within(place, [&] { return checked_depth(value.get<long>()); });
}

std::vector<int> read_frames(const json& value, const ScenePlace& place) {
    if (!value.is_string() && !value.is_number_integer()) {
        throw place.failure("expected a frame number or a list such as \"1-100x2\"");
    }
    const std::string list = value.is_string() ? value.get<std::string>() : value.dump();
    return within(place, [&] { return parse_frame_list(list); });
}

host::FrameRate read_rate(const json& value, const ScenePlace& place) {
    if (!value.is_string() && !value.is_number_integer())
        throw place.failure("expected 25 or \"30000/1001\"");
    const std::string rate = value.is_string() ? value.get<std::string>() : value.dump();
    return within(place, [&] { return parse_frame_rate(rate); });
}

Tracks read_tracks(const json& value, const ScenePlace& place, const ControlCatalog& catalog) {
    if (!value.is_object()) throw place.failure("expected an object of values by control id");
    Tracks tracks;
    for (const auto& entry : value.items()) {
        const ScenePlace here = place.member(entry.key());
        const Control& control = within(here, [&]() -> const Control& { return catalog.find(entry.key()); });
        tracks[control.index] = read_track(control, entry.value(), here);
    }
    return tracks;
}

Failure unknown_key(const std::string& key, const ScenePlace& place) {
    const std::vector<std::string> known = {"description", "size", "resolution", "depth",
                                            "frames",      "fps",  "controls"};
    return place.member(key).failure("unknown key; expected one of " + join(known));
}

}  // namespace

Scene read_scene(const std::filesystem::path& path, const ControlCatalog& catalog) {
    return parse_scene(read_text_file(path), path, catalog);
}

Scene parse_scene(std::string_view text, const std::filesystem::path& path, const ControlCatalog& catalog) {
    const ScenePlace root{path, ""};
    const json document = parse_json(text, path);
    if (!document.is_object())
        throw root.failure("expected an object with size, resolution, depth, frames, fps or controls");
    Scene scene;
    for (const auto& [key, value] : document.items()) {
        const ScenePlace place = root.member(key);
        if (key == "description") {
            if (!value.is_string()) throw place.failure("expected a text");
            scene.description = printable(value.get<std::string>());
        } else if (key == "size") {
            scene.size = read_size(value, place);
        } else if (key == "resolution") {
            scene.resolution = read_resolution(value, place);
        } else if (key == "depth") {
            scene.depth = read_depth(value, place);
        } else if (key == "frames") {
            scene.frames = read_frames(value, place);
        } else if (key == "fps") {
            scene.rate = read_rate(value, place);
        } else if (key == "controls") {
            scene.tracks = read_tracks(value, place, catalog);
        } else {
            throw unknown_key(key, root);
        }
    }
    return scene;
}

}  // namespace flumo::scene
