#include "studio/document/scene_state.h"

#include <algorithm>
#include <numeric>

namespace flumo::studio {
namespace {

bool same_keyframe(const scene::Keyframe& a, const scene::Keyframe& b) {
    return a.frame == b.frame && a.to_next == b.to_next && a.value == b.value;
}

bool same_track(const scene::Track& a, const scene::Track& b) {
    return std::ranges::equal(a.keyframes, b.keyframes, same_keyframe);
}

bool same_control(const SceneState& a, const SceneState& b, int index) {
    if (a.animated.contains(index) != b.animated.contains(index)) return false;
    const auto in_a = a.scene.tracks.find(index);
    const auto in_b = b.scene.tracks.find(index);
    const bool has_a = in_a != a.scene.tracks.end();
    const bool has_b = in_b != b.scene.tracks.end();
    if (!has_a || !has_b) return has_a == has_b;
    return same_track(in_a->second, in_b->second);
}

}  // namespace

SceneState filled_in(scene::Scene scene) {
    scene::Scene plain;
    plain.size = FrameSize{};
    plain.resolution = Resolution{};
    plain.depth = 8;
    plain.frames = std::vector{0};
    plain.rate = host::FrameRate{};
    return filled_in(std::move(scene), plain);
}

SceneState filled_in(scene::Scene scene, const scene::Scene& present) {
    if (!scene.size) scene.size = present.size;
    if (!scene.resolution) scene.resolution = present.resolution;
    if (!scene.depth) scene.depth = present.depth;
    if (!scene.frames || scene.frames->empty()) scene.frames = present.frames;
    if (!scene.rate) scene.rate = present.rate;
    SceneState state{std::move(scene), {}};
    for (const auto& [index, track] : state.scene.tracks) {
        if (track.keyframes.size() > 1) state.animated.insert(index);
    }
    return state;
}

scene::Scene new_scene() {
    constexpr std::size_t kFrames = 100;
    scene::Scene scene;
    scene.frames = std::vector<int>(kFrames);
    std::iota(scene.frames->begin(), scene.frames->end(), 0);
    return scene;
}

std::vector<int> changed_controls(const SceneState& from, const SceneState& to) {
    std::set<int> candidates;
    for (const SceneState* state : {&from, &to}) {
        for (const auto& [index, track] : state->scene.tracks)
            candidates.insert(index);
        candidates.insert(state->animated.begin(), state->animated.end());
    }
    std::vector<int> changed;
    for (const int index : candidates) {
        if (!same_control(from, to, index)) changed.push_back(index);
    }
    return changed;
}

bool same_settings(const scene::Scene& a, const scene::Scene& b) {
    return a.size->width == b.size->width && a.size->height == b.size->height &&
           a.resolution == b.resolution && a.depth == b.depth && a.frames == b.frames &&
           a.rate->num == b.rate->num && a.rate->den == b.rate->den;
}

bool same_scene(const SceneState& a, const SceneState& b) {
    return same_settings(a.scene, b.scene) && a.scene.description == b.scene.description &&
           changed_controls(a, b).empty();
}

}  // namespace flumo::studio
