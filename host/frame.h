// The state of one frame while the effect renders it: its rectangles and its worlds.
#pragma once

#include <list>
#include <memory>
#include <mutex>
#include <vector>

#include "effect_api/smart.h"
#include "host/frame_request.h"

namespace flumo::host {

/// A layer that pre-render asked for under a number of the effect's choice.
struct LayerOrder {
    A_long checkout_id = 0;
    PF_EffectWorld record{};
    /// Owns the pixels of a layer control's picture.
    Layer layer{};
    int times_out = 0;
};

class InputLayers;

struct FrameState {
    const FrameRequest& request;
    /// The whole frame and the part asked for, in layer pixels at the current resolution.
    PF_LRect frame_rect{};
    PF_LRect request_rect{};
    Layer input{};
    /// The whole input layer.
    PF_EffectWorld input_record{};
    std::vector<LayerOrder> orders{};
    World* output = nullptr;
};

/// Throws std::invalid_argument for a request with values out of range.
FrameState begin_frame(const FrameRequest& request, InputLayers& input_layers);

/// The world that an effect gets for a result, or for the place that the request itself names.
WorldShape output_shape(const FrameRequest& request, const PF_LRect& result);

/// The frame at a time of `time` / `time_scale` seconds.
double frame_of_time(const FrameRate& rate, A_long time, A_u_long time_scale);

PF_LRect intersection(const PF_LRect& a, const PF_LRect& b);
bool is_empty(const PF_LRect& rect);
/// The part of a world that `rect` covers, as a record on the same pixels. `rect` lies inside the world
/// or is empty.
PF_EffectWorld part_of(const PF_EffectWorld& world, const PF_LRect& rect);

/// Transparent input layers, kept because every frame needs one and none is written. Thread-safe.
class InputLayers {
  public:
    Layer transparent(const WorldShape& shape);

  private:
    std::mutex mutex_;
    std::list<Layer> recent_;
};

}  // namespace flumo::host
