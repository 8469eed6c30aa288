// Controls away from their defaults, as tests write them down.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <variant>
#include <vector>

#include "effect/params/control_table.h"
#include "host/instance.h"

namespace flumo::test {

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

/// Numbers for controls by their id, as in "NoiseType=4 Scale=60". Throws std::invalid_argument or
/// std::out_of_range for what is no such list.
Look look(std::string_view settings);

/// `base` with some controls set anew.
Look with(Look base, const Look& changes);

/// A fresh instance with this look. Throws host::HostError.
std::unique_ptr<host::Instance> instance_with(host::Host& host, const Look& look);

}  // namespace flumo::test
