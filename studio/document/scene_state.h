// One state of the look that is edited, and what tells two states apart.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <vector>

#include "scene/scene.h"

namespace flumo::studio {

/// A scene with size, resolution, depth, frames and rate filled in. `animated` are the controls (by index)
/// that get keyframes when they are changed: a track with a single keyframe does not tell that by itself.
struct SceneState {
    scene::Scene scene;
    std::set<int> animated;
};

/// Never changed once it is shared; the undo steps and the render threads hold the same ones.
using SharedState = std::shared_ptr<const SceneState>;

/// With what `flumo render` takes where a scene leaves it open: 1920x1080 in full, 8 bits, frame 0, 25 frames
/// per second.
SceneState filled_in(scene::Scene scene);

/// A new look: every control at its default, four seconds at 25 frames per second.
scene::Scene new_scene();

/// The same, with what `scene` leaves open taken from `present`.
SceneState filled_in(scene::Scene scene, const scene::Scene& present);

/// Indexes of the controls whose values or keyframes differ, ascending.
std::vector<int> changed_controls(const SceneState& from, const SceneState& to);

/// Whether both have the same size, resolution, depth, frames and rate.
bool same_settings(const scene::Scene& a, const scene::Scene& b);

bool same_scene(const SceneState& a, const SceneState& b);

}  // namespace flumo::studio
