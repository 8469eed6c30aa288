// Looks by chance, of a module under the stand-in host.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/instance.h"

namespace flumo::bench {

/// An applied effect and the frame that is asked of it.
struct RandomLook {
    std::unique_ptr<host::Instance> instance;
    host::FrameRequest request;
};

/// Look `number` of a seed: each control at its default or by chance, at one of the three depths. Sliders
/// that count steps or lines stay low: a frame's cost follows them, its program does not.
RandomLook random_look(host::Host& host, std::uint64_t seed, int number, int width, int height);

}  // namespace flumo::bench
