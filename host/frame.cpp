#include "host/frame.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace flumo::host {

namespace {

constexpr size_t kRecentLayers = 8;

void check(bool holds, const char* otherwise) {
    if (!holds) throw std::invalid_argument(otherwise);
}

bool is_downsampling(const PF_RationalScale& scale) {
    return scale.num > 0 && scale.den >= static_cast<A_u_long>(scale.num);
}

void check_request(const FrameRequest& request) {
    check(request.width > 0 && request.height > 0, "a frame needs a width and a height above 0");
    check(request.rate.num > 0 && request.rate.den > 0, "a frame rate must be above 0");
    check(is_downsampling(request.downsample_x) && is_downsampling(request.downsample_y),
          "a downsampling must be above 0 and at most 1");
    const int64_t time = int64_t{request.frame} * request.rate.den;
    check(time <= std::numeric_limits<A_long>::max() && time >= std::numeric_limits<A_long>::min(),
          "the frame's time does not fit into 32 bits");
}

int reduced(int size, const PF_RationalScale& scale) {
    return static_cast<int>((int64_t{size} * scale.num + scale.den - 1) / scale.den);
}

}  // namespace

double frame_of_time(const FrameRate& rate, A_long time, A_u_long time_scale) {
    return time * static_cast<double>(rate.num) / (static_cast<double>(time_scale) * rate.den);
}

PF_LRect intersection(const PF_LRect& a, const PF_LRect& b) {
    const PF_LRect common{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                          std::min(a.bottom, b.bottom)};
    return is_empty(common) ? PF_LRect{} : common;
}

bool is_empty(const PF_LRect& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

PF_EffectWorld part_of(const PF_EffectWorld& world, const PF_LRect& rect) {
    PF_EffectWorld part = world;
    if (is_empty(rect)) {
        part.width = part.height = 0;
        part.extent_hint = {};
        return part;
    }
    const auto pixel = static_cast<std::ptrdiff_t>(pixel_size(record_depth(world)));
    auto* data = reinterpret_cast<std::byte*>(world.data);
    data += (rect.top - world.origin_y) * static_cast<std::ptrdiff_t>(world.rowbytes);
    data += (rect.left - world.origin_x) * pixel;
    part.data = reinterpret_cast<PF_PixelPtr>(data);
    part.width = rect.right - rect.left;
    part.height = rect.bottom - rect.top;
    part.extent_hint = {0, 0, part.width, part.height};
    part.origin_x = rect.left;
    part.origin_y = rect.top;
    return part;
}

FrameState begin_frame(const FrameRequest& request, InputLayers& input_layers) {
    check_request(request);
    FrameState state{.request = request};
    const int width = reduced(request.width, request.downsample_x);
    const int height = reduced(request.height, request.downsample_y);
    state.frame_rect = {0, 0, width, height};
    state.request_rect = request.region.value_or(state.frame_rect);
    const PF_LRect place = request.input_rect.value_or(state.frame_rect);
    const WorldShape shape{.width = place.right - place.left,
                           .height = place.bottom - place.top,
                           .depth = request.depth,
                           .row_padding = request.row_padding,
                           .bottom_up = request.bottom_up,
                           .extra_flags = request.extra_world_flags};
    check(shape.width >= 0 && shape.height >= 0, "the input layer needs a size of at least 0");
    state.input = request.input ? request.input : input_layers.transparent(shape);
    check(state.input->width() == shape.width && state.input->height() == shape.height,
          "the input layer must have the size of its place, which is the frame by default");
    state.input_record = state.input->record();
    state.input_record.origin_x = place.left;
    state.input_record.origin_y = place.top;
    return state;
}

WorldShape output_shape(const FrameRequest& request, const PF_LRect& result) {
    const PF_LRect rect = request.output_rect.value_or(result);
    WorldShape shape{.depth = request.depth,
                     .row_padding = request.row_padding,
                     .bottom_up = request.bottom_up,
                     .extra_flags = request.extra_world_flags};
    if (is_empty(rect)) return shape;
    shape.width = rect.right - rect.left;
    shape.height = rect.bottom - rect.top;
    shape.origin_x = rect.left;
    shape.origin_y = rect.top;
    return shape;
}

Layer InputLayers::transparent(const WorldShape& shape) {
    std::lock_guard guard(mutex_);
    const auto known =
        std::ranges::find_if(recent_, [&](const Layer& layer) { return layer->shape() == shape; });
    if (known != recent_.end()) {
        recent_.splice(recent_.begin(), recent_, known);
        return recent_.front();
    }
    recent_.push_front(std::make_shared<const World>(shape));
    if (recent_.size() > kRecentLayers) recent_.pop_back();
    return recent_.front();
}

}  // namespace flumo::host
