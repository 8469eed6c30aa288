// What a host requests from an effect for one frame.
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
    /// Unused pixels after each row of the input and the output world.
    int row_padding = 8;
    /// The input layer at current resolution; transparent when null. Its size is that of `input_rect`.
    Layer input{};
    /// The place of the input layer, in layer pixels at the current resolution; the whole frame by default. A
    /// masked layer is smaller than the frame, a grown one larger.
    std::optional<PF_LRect> input_rect{};
    /// The output world, and the input world unless `input` is given, have negative row bytes.
    bool bottom_up = false;
    /// Bits besides the host's own in the flags of these worlds (PF_WorldFlag_...).
    A_long extra_world_flags = 0;
    /// What pre-render finds in the record that it fills in.
    PF_PreRenderOutput pre_render_output{};
    /// The smart commands get the array of parameters, which is null by default.
    bool gives_params = false;
    /// Frames that the layer's time moves in one step of the composition; negative when it runs backwards.
    int local_step = 1;
    /// The host's result when the effect asks whether to stop; 0 when unset.
    std::function<PF_Err()> abort{};
};

/// The effect's result of pre-render.
struct FramePlan {
    PF_LRect result_rect{};
    PF_LRect max_result_rect{};
};

}  // namespace flumo::host
