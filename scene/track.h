// What a control does over time.
#pragma once

#include <map>
#include <vector>

#include "scene/control_value.h"

namespace flumo::scene {

/// How a number, checkbox or gradient runs on from a keyframe to the next one. Whole numbers, checkboxes and
/// popups hold their value in any case.
enum class Interpolation {
    kLinear,
    kHold,  ///< the value stays until the next keyframe
    kEase,  ///< slow at both ends; for numbers only
};

struct Keyframe {
    int frame = 0;
    ControlValue value;
    Interpolation to_next = Interpolation::kLinear;
};

/// The keyframes of one control in ascending order of frames, at least one. A single one is a constant.
struct Track {
    const Control* control = nullptr;
    std::vector<Keyframe> keyframes;
};

/// Tracks by control index. Controls without a track keep the default that the effect gave them.
using Tracks = std::map<int, Track>;

}  // namespace flumo::scene
