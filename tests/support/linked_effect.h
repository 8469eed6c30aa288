// The effect, linked into the test and applied in the stand-in host. Global set-up is left out, and with it
// OpenGL: gradients need none.
#pragma once

#include <memory>
#include <utility>

#include "effect/entry/effect_main.h"
#include "effect/gradient/value/flat_gradient.h"
#include "host/instance.h"

namespace flumo::test {

inline GradientStopMap& StopsOf(PF_ArbitraryH handle) {
    return *static_cast<GradientRecord*>(*handle)->stops;
}

struct LinkedEffect {
    LinkedEffect() {
        host.params_setup();
        instance = host.new_instance();
    }
    ~LinkedEffect() {
        instance.reset();
        host.release_controls();
    }

    /// The first gradient control.
    const host::Control& Gradient() const { return host.control(26); }

    std::shared_ptr<host::ArbitraryValue> NewValue(GradientStopMap stops) {
        auto value = host::ArbitraryValue::fresh(host, Gradient());
        StopsOf(value->handle()) = std::move(stops);
        return value;
    }
    void Set(GradientStopMap stops) {
        instance->set(Gradient().index, host::Arbitrary(NewValue(std::move(stops))));
    }
    const GradientStopMap& Stops() const {
        return StopsOf(std::get<host::Arbitrary>(instance->value_at(Gradient().index, 0))->handle());
    }

    /// Nothing is borrowed, and nothing that is none was given back.
    bool Tidy() const { return host.accounting().idle() && host.accounting().misuses().empty(); }

    host::Module module{EffectMain, PluginDataEntryFunction};
    host::Host host{module};
    std::unique_ptr<host::Instance> instance;
};

}  // namespace flumo::test
