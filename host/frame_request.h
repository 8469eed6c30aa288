// What a host asks of an effect for one frame.
#pragma once

#include <functional>
#include <optional>

#include "effect_api/smart.h"
#include "host/values/frame_rate.h"
#include "host/values/value.h"
#include "host/values/world.h"

namespace flumo::host {

struct FrameRequest {
    /// The layer at full resolution, in pixels.
    int width = 0;
    int height = 0;
    Depth depth = Depth::k8;
    int frame = 0;
    FrameRate rate{};
    /// Resolution of the frame: 1/2 is every second pixel. At most 1.
    PF_RationalScale downsample_x{1, 1};
    PF_RationalScale downsample_y{1, 1};
    /// Part of the frame that is asked for, in layer pixels at the current resolution; all by default.
    std::optional<PF_LRect> region{};
    /// Gives the effect an output world of this place and size instead of the one that it announced.
    std::optional<PF_LRect> output_rect{};
    /// Unused pixels behind each row of the input and the output world.
    int row_padding = 8;
    /// The input layer at current resolution; transparent when null. Its size must be the frame's.
    Layer input{};
    /// What the host answers when the effect asks whether to stop; 0 when unset.
    std::function<PF_Err()> abort{};
};

/// What the effect answered to pre-render.
struct FramePlan {
    PF_LRect result_rect{};
    PF_LRect max_result_rect{};
};

}  // namespace flumo::host
