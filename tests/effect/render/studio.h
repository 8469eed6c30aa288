// Frames through the effect's entry point, one call each. The effect is linked in, so that a test can look at
// its GL objects behind a frame.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "effect/params/control_table.h"
#include "host/instance.h"

namespace flumo::test {

inline constexpr host::Depth kDepths[] = {host::Depth::k8, host::Depth::k16, host::Depth::k32};

/// One stop of a gradient; the kind of the segment to its right is 0 linear, 1 eased, 2 hard.
struct Stop {
    float at, r, g, b;
    int32_t kind = 0;
};
using Stops = std::vector<Stop>;

/// What a control is set to: a number as the host sends it, a gradient, or a layer.
struct Setting {
    std::variant<double, Stops, host::Layer> value;

    Setting(double number) : value(number) {}
    Setting(Stops stops) : value(std::move(stops)) {}
    Setting(host::Layer layer) : value(std::move(layer)) {}
};

/// Controls that are not at their default.
using Look = std::map<Section, Setting>;

/// `base` with some controls set anew.
Look with(Look base, const Look& changes);

struct Shot {
    Look look;
    host::FrameRequest request;
};

/// The host that the effect is applied in, in global set-up from the first test to the last.
host::Host& studio_host();
std::unique_ptr<host::Instance> instance_of(const Look& look);

/// Renders in an instance of its own. Fails the running test where the effect writes outside the frame, keeps
/// something that it was lent, breaks a rule of the host or of GL, or leaves its context to the caller.
/// Throws host::HostError.
host::World shoot(const Shot& shot);

/// What the effect prints about the driver when it starts.
std::string driver_lines();

}  // namespace flumo::test
