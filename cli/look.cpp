#include "cli/look.h"

#include "cli/picture_file.h"
#include "cli/world_picture.h"

namespace flumo::cli {
namespace {

// From the program's value to the host's, for one control.
class ToHostValue {
  public:
    ToHostValue(host::Host& host, int index, host::Depth depth) : host_(host), index_(index), depth_(depth) {}

    host::Value operator()(double number) const { return number; }

    host::Value operator()(const std::vector<Stop>& stops) const {
        const std::vector<uint8_t> stored = to_stored_form(stops);
        return host::Arbitrary(
            host::ArbitraryValue::unflatten(host_, host_.control(index_), std::as_bytes(std::span(stored))));
    }

    host::Value operator()(const std::filesystem::path& file) const {
        if (file.empty()) return host::Layer();
        return host::Layer(std::make_shared<host::World>(world_of(read_picture(file), depth_)));
    }

  private:
    host::Host& host_;
    int index_;
    host::Depth depth_;
};

}  // namespace

void apply_tracks(host::Instance& instance, const Tracks& tracks, host::Depth depth) {
    for (const auto& [index, track] : tracks) {
        const ToHostValue to_host(instance.host(), index, depth);
        std::vector<host::Keyframe> keyframes;
        for (const Keyframe& keyframe : track.keyframes) {
            keyframes.push_back({static_cast<double>(keyframe.frame), std::visit(to_host, keyframe.value)});
        }
        if (keyframes.size() == 1) {
            instance.set(index, std::move(keyframes.front().value));
        } else {
            instance.set_keyframes(index, std::move(keyframes));
        }
    }
}

}  // namespace flumo::cli
