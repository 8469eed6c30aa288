// What a control does over time.
#pragma once

#include <map>
#include <vector>

#include "scene/control_value.h"

namespace flumo::scene {

struct Keyframe {
    int frame = 0;
    ControlValue value;
};

/// The keyframes of one control in ascending order of frames, at least one. A single one is a constant.
struct Track {
    const Control* control = nullptr;
    std::vector<Keyframe> keyframes;
};

/// Tracks by control index. Controls without a track keep the default that the effect gave them.
using Tracks = std::map<int, Track>;

}  // namespace flumo::scene
