// Random looks of a module in the stand-in host.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/instance.h"

namespace flumo::bench {

/// An applied effect and the frame that is requested.
struct RandomLook {
    std::unique_ptr<host::Instance> instance;
    host::FrameRequest request;
};

/// Look `number` of a seed: each control at its default or random, at one of the three depths. Sliders that
/// count steps or lines stay low: they change the cost of a frame, not its program.
RandomLook random_look(host::Host& host, uint64_t seed, int number, int width, int height);

}  // namespace flumo::bench
