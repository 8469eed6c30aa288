#include "job/request_scene.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <iterator>
#include <numeric>

#include "base/failure.h"
#include "base/text_list.h"
#include "job/preset.h"
#include "media/picture_file.h"
#include "scene/control_needs.h"
#include "scene/keyframe_text.h"

namespace flumo::job {
namespace {

constexpr double kWholeTurn = 360;

Failure value_missing(const scene::Control& control) {
    std::string message = "expected " + control.id + "=VALUE with " + scene::expected_value(control);
    const auto row = std::ranges::find(scene::control_needs(), control.id, &scene::ControlNeeds::id);
    if (row != scene::control_needs().end() && !row->what_it_does.empty())
        message.append("; it chooses ").append(row->what_it_does);
    return usage_failure(message);
}

scene::Track read_assignment(const Assignment& assignment, const scene::ControlCatalog& catalog,
                             const host::FrameRate& rate) try {
    const scene::Control& control = catalog.find(assignment.id);
    if (assignment.is_gradient && control.kind != scene::ControlKind::kArbitrary) {
        throw usage_failure("this control is no gradient; Gradient and LinesGradient are");
    }
    if (!assignment.value) throw value_missing(control);
    if (scene::is_keyframe_text(control, *assignment.value))
        return scene::parse_keyframes(control, *assignment.value, rate);
    return {&control, {{0, scene::parse_control_value(control, *assignment.value)}}};
} catch (const Failure& failure) {
    throw Failure(failure.kind(), assignment.written + ": " + failure.what());
}

// What a file says of itself.
scene::Scene scene_from_file(const std::filesystem::path& path, media::FrameNotes& notes,
                             const scene::ControlCatalog& catalog) {
    notes = media::read_notes(path);
    if (notes.scene.empty()) throw input_failure(path.string() + ": it holds no scene of flumo");
    return scene::parse_scene(notes.scene, path, catalog);
}

scene::Scene base_scene(const RenderRequest& request, media::FrameNotes& notes,
                        const scene::ControlCatalog& catalog) {
    if (!request.from.empty()) return scene_from_file(request.from, notes, catalog);
    if (!request.preset.empty()) return scene::read_scene(preset_file(request.preset), catalog);
    if (request.scene == "-") {
        const std::string text(std::istreambuf_iterator<char>(std::cin), {});
        return scene::parse_scene(text, "standard input", catalog);
    }
    return request.scene.empty() ? scene::Scene() : scene::read_scene(request.scene, catalog);
}

std::vector<int> frames_of(double seconds, const host::FrameRate& rate) {
    constexpr double kMostFrames = 1e6;
    const double count = std::max(std::round(seconds * rate.num / rate.den), 1.0);
    if (count > kMostFrames) throw usage_failure("the duration is more than 1000000 frames");
    std::vector<int> frames(static_cast<std::size_t>(count));
    std::iota(frames.begin(), frames.end(), 0);
    return frames;
}

// One whole turn from the first frame to the one after the last, which therefore is the first again.
void add_loop(scene::Scene& scene, const scene::ControlCatalog& catalog) {
    if (!scene.frames || scene.frames->size() < 2)
        throw usage_failure("a loop needs its length: expected a duration or several frames");
    const auto [first, last] = std::ranges::minmax(*scene.frames);
    const scene::Control& evolution = catalog.find("Evolution");
    const auto given = scene.tracks.find(evolution.index);
    const bool moves = given != scene.tracks.end() && given->second.keyframes.size() > 1;
    if (moves)
        throw usage_failure("a loop moves Evolution, which has keyframes already: expected one of them");
    const double start = given == scene.tracks.end()
                             ? evolution.default_value
                             : std::get<double>(given->second.keyframes.front().value);
    scene.tracks[evolution.index] = {&evolution, {{first, start}, {last + 1, start + kWholeTurn}}};
    const scene::Control& switched = catalog.find("LoopEvolution");
    scene.tracks[switched.index] = {&switched, {{0, 1.0}}};
}

}  // namespace

scene::Scene scene_of_request(const RenderRequest& request, const scene::ControlCatalog& catalog,
                              media::FrameNotes& notes) {
    scene::Scene scene = base_scene(request, notes, catalog);
    if (request.size) scene.size = request.size;
    if (request.resolution) scene.resolution = request.resolution;
    if (request.depth) scene.depth = request.depth;
    if (request.rate) scene.rate = request.rate;
    const host::FrameRate rate = scene.rate.value_or(host::FrameRate{});
    if (request.frames) scene.frames = request.frames;
    if (request.duration) scene.frames = frames_of(*request.duration, rate);
    for (const Assignment& assignment : request.assignments) {
        const scene::Track track = read_assignment(assignment, catalog, rate);
        scene.tracks[track.control->index] = track;
    }
    if (request.loop) add_loop(scene, catalog);
    return scene;
}

}  // namespace flumo::job
