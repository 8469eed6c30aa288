#include "job/look.h"

#include "base/failure.h"
#include "media/picture_file.h"
#include "media/world_picture.h"

namespace flumo::job {
namespace {

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

    host::Value operator()(const std::filesystem::path& file) const {
        if (file.empty()) return host::Layer();
        return read_layer(file);
    }

  private:
    host::Layer read_layer(const std::filesystem::path& file) const try {
        return std::make_shared<host::World>(media::world_of(media::read_picture(file), depth_));
    } catch (const Failure& failure) {
        throw Failure(failure.kind(), control_.id + ": " + failure.what());
    }

    host::Host& host_;
    const scene::Control& control_;
    host::Depth depth_;
};

}  // namespace

void apply_tracks(host::Instance& instance, const scene::Tracks& tracks, host::Depth depth) {
    for (const auto& [index, track] : tracks) {
        const ToHostValue to_host(instance.host(), *track.control, depth);
        std::vector<host::Keyframe> keyframes;
        for (const scene::Keyframe& keyframe : track.keyframes) {
            keyframes.push_back({static_cast<double>(keyframe.frame), std::visit(to_host, keyframe.value)});
        }
        if (keyframes.size() == 1) {
            instance.set(index, std::move(keyframes.front().value));
        } else {
            instance.set_keyframes(index, std::move(keyframes));
        }
    }
}

}  // namespace flumo::job
