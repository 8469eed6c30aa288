#include "job/look.h"

#include <cmath>
#include <memory>
#include <mutex>

#include "base/failure.h"
#include "media/moving_picture.h"
#include "media/picture_file.h"
#include "media/world_picture.h"
#include "scene/keyframe_text.h"

namespace flumo::job {
namespace {

host::Layer layer_of(const media::Picture& picture, host::Depth depth) {
    return std::make_shared<host::World>(media::world_of(picture, depth));
}

// The host asks for one frame several times, and from several threads.
class MovingLayer {
  public:
    MovingLayer(std::unique_ptr<media::MovingPicture> picture, host::Depth depth)
        : picture_(std::move(picture)), depth_(depth) {}

    host::Layer at(double time) {
        const int frame = static_cast<int>(std::lround(time));
        const std::lock_guard guard(mutex_);
        if (!last_ || !picture_->same(frame, last_frame_)) last_ = layer_of(picture_->at(frame), depth_);
        last_frame_ = frame;
        return last_;
    }

  private:
    std::unique_ptr<media::MovingPicture> picture_;
    host::Depth depth_;
    std::mutex mutex_;
    host::Layer last_;
    int last_frame_ = 0;
};

// From the program's value to the host's, for one control.
class ToHostValue {
  public:
    ToHostValue(host::Host& host, const scene::Control& control, host::Depth depth)
        : host_(host), control_(control), depth_(depth) {}

    host::Value operator()(double number) const { return number; }

    host::Value operator()(const std::vector<scene::Stop>& stops) const {
        const std::vector<uint8_t> stored = scene::to_stored_form(stops);
        return host::Arbitrary(host::ArbitraryValue::unflatten(host_, host_.control(control_.index),
                                                               std::as_bytes(std::span(stored))));
    }

    host::Value operator()(const std::filesystem::path& text) const try {
        if (text.empty()) return host::Layer();
        const media::LayerText layer = media::parse_layer_text(text);
        auto moving = media::open_moving_picture(layer);
        if (!moving) return layer_of(media::read_picture(layer.file), depth_);
        auto source = std::make_shared<MovingLayer>(std::move(moving), depth_);
        return host::LayerSource([source](double frame) { return source->at(frame); });
    } catch (const Failure& failure) {
        throw Failure(failure.kind(), control_.id + ": " + failure.what());
    }

  private:
    host::Host& host_;
    const scene::Control& control_;
    host::Depth depth_;
};

bool runs_smoothly(const scene::Control& control) {
    return control.kind == scene::ControlKind::kFloatSlider || control.kind == scene::ControlKind::kAngle;
}

// What stands between two keyframes. The host knows straight lines only; frames are whole, so a value that
// holds is repeated one frame before the next keyframe, and an eased one is given frame by frame.
void add_between(std::vector<host::Keyframe>& keyframes, const scene::Keyframe& left,
                 const scene::Keyframe& right, const scene::Control& control) {
    if (left.to_next == scene::Interpolation::kHold && right.frame - 1 > left.frame)
        keyframes.push_back({right.frame - 1.0, keyframes.back().value});
    if (left.to_next == scene::Interpolation::kEase && runs_smoothly(control)) {
        for (int frame = left.frame + 1; frame < right.frame; ++frame)
            keyframes.push_back({double(frame), scene::value_between(left, right, frame)});
    }
}

std::vector<host::Keyframe> host_keyframes(const scene::Track& track, const ToHostValue& to_host) {
    std::vector<host::Keyframe> keyframes;
    for (std::size_t i = 0; i < track.keyframes.size(); ++i) {
        if (i > 0) add_between(keyframes, track.keyframes[i - 1], track.keyframes[i], *track.control);
        keyframes.push_back(
            {double(track.keyframes[i].frame), std::visit(to_host, track.keyframes[i].value)});
    }
    return keyframes;
}

}  // namespace

void apply_tracks(host::Instance& instance, const scene::Tracks& tracks, host::Depth depth) {
    for (const auto& [index, track] : tracks) {
        std::vector<host::Keyframe> keyframes =
            host_keyframes(track, ToHostValue(instance.host(), *track.control, depth));
        if (keyframes.size() == 1) {
            instance.set(index, std::move(keyframes.front().value));
        } else {
            instance.set_keyframes(index, std::move(keyframes));
        }
    }
}

}  // namespace flumo::job
