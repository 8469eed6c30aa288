#include "bench/random_looks.h"

#include <algorithm>
#include <random>

#include "judge/engine/frame_judge.h"

namespace flumo::bench {

namespace {

/// For sliders of whole numbers: complexities and the number of lines, all from 1 to 100 or more. The seed
/// of the randomisers, which starts at 0, does not change the cost.
constexpr double kMostSteps = 8;

/// Random half of the controls.
void set_some_to_default(host::Instance& instance, std::mt19937_64& random) {
    for (const host::Control& control : instance.host().controls()) {
        if (!control.has_value() || random() % 2 == 0) continue;
        if (control.is_number()) instance.set(control.index, control.default_value);
        if (control.kind == host::ControlKind::kLayer) instance.set(control.index, host::Layer{});
    }
}

void limit_steps(host::Instance& instance) {
    for (const host::Control& control : instance.host().controls()) {
        if (control.kind != host::ControlKind::kSlider || control.valid.min < 1) continue;
        const double steps = std::get<double>(instance.value_at(control.index, 0));
        instance.set(control.index, std::min(steps, kMostSteps));
    }
}

}  // namespace

RandomLook random_look(host::Host& host, uint64_t seed, int number, int width, int height) {
    std::seed_seq start{seed, static_cast<uint64_t>(number)};
    std::mt19937_64 random(start);
    constexpr host::Depth kDepths[] = {host::Depth::k8, host::Depth::k16, host::Depth::k32};
    const host::Depth depth = kDepths[random() % std::size(kDepths)];
    RandomLook look{host.new_instance(), {.width = width, .height = height, .depth = depth}};
    judge::set_randomly(*look.instance, random, depth);
    set_some_to_default(*look.instance, random);
    limit_steps(*look.instance);
    return look;
}

}  // namespace flumo::bench
