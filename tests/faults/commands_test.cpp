// Every command, every call that it makes to the host, every way in which that call can fail.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "host/call.h"
#include "host/control_events.h"
#include "host/panel/panel.h"
#include "tests/faults/sweep.h"

namespace flumo::test {
namespace {

using host::Callback;
using host::Depth;
using host::Host;

constexpr int kGradient = 26;

class FaultSweep : public testing::Test {
  protected:
    Host& host() { return fixture_.host(); }

    /// Sends a sequence command on `data`; what it hands back is in `sequence_`.
    PF_Err send_sequence(PF_Cmd command, PF_Handle data) {
        host::Call call(host());
        PF_InData in = host().new_in_data();
        PF_OutData out{};
        in.sequence_data = out.sequence_data = data;
        const host::Outcome outcome = host().run(call, command, in, out, nullptr, nullptr);
        sequence_ = outcome.out.sequence_data;
        return outcome.error;
    }

    void new_sequence() {
        EXPECT_EQ(send_sequence(PF_Cmd_SEQUENCE_SETUP, nullptr), PF_Err_NONE);
        given_ = sequence_;
    }

    /// A command on a live sequence handle that may hand back another one.
    Command sequence_command(const char* name, PF_Cmd command, bool replaces) {
        return {.name = name,
                .prepare = [this] { new_sequence(); },
                .run = [this, command] { return send_sequence(command, given_); },
                .complete = [this, replaces] { return (sequence_ != given_) == replaces; },
                .restore =
                    [this] {
                        if (sequence_ != given_) host().handles().dispose(sequence_);
                        host().handles().dispose(given_);
                    }};
    }

    EffectFixture fixture_;
    Sweep sweep_{fixture_};
    PF_Handle given_ = nullptr;
    PF_Handle sequence_ = nullptr;
};

TEST_F(FaultSweep, SetUpAndSetDown) {
    PF_Err result = PF_Err_NONE;
    const auto start = [&] {
        host().start();
        // Makes this thread's GL record again.
        EXPECT_TRUE(fixture_.renders_as_before(Depth::k8));
    };
    sweep_.over({.name = "global setup",
                 .prepare = [&] { host().global_setdown(); },
                 .run = [&] { return result = result_of([&] { host().global_setup(); }); },
                 // Identity and flags are told first, so even a failure tells them.
                 .complete = [&] { return host().identity().flags2 == 142611456; },
                 .restore =
                     [&] {
                         if (result == PF_Err_NONE) host().global_setdown();
                         start();
                     }});
    sweep_.over({.name = "global setdown",
                 .prepare = [&] { host().release_controls(); },
                 .run = [&] { return result_of([&] { host().global_setdown(); }); },
                 .restore = start});
}

TEST_F(FaultSweep, Controls) {
    const std::vector<host::LiveHandle> before = host().handles().live();
    PF_Err result = PF_Err_NONE;
    sweep_.over({.name = "params setup",
                 .prepare = [&] { host().release_controls(); },
                 .run = [&] { return result = result_of([&] { host().params_setup(); }); },
                 .complete =
                     [&] {
                         const bool has_editors = host().custom_ui().events != 0;
                         return host().controls().size() == 86 && has_editors == (result == PF_Err_NONE);
                     },
                 .restore = [&] { host().params_setup(); }});
    // The defaults that went along with refused controls hold memory of the effect's.
    for (const host::LiveHandle& live : host().handles().live()) {
        const bool is_default = std::ranges::any_of(host().controls(), [&](const host::Control& control) {
            return control.kind == host::ControlKind::kArbitrary &&
                   control.definition.u.arb_d.dephault == live.handle;
        });
        if (live.serial > before.back().serial && !is_default) {
            host::ArbitraryValue(host(), host().control(kGradient), live.handle);
        }
    }
}

TEST_F(FaultSweep, Sequences) {
    sweep_.over({.name = "sequence setup",
                 .run = [&] { return send_sequence(PF_Cmd_SEQUENCE_SETUP, nullptr); },
                 .complete = [&] { return host().handles().size(sequence_) == 1; },
                 .restore = [&] { host().handles().dispose(sequence_); }});
    sweep_.over(sequence_command("sequence resetup", PF_Cmd_SEQUENCE_RESETUP, true));
    sweep_.over(sequence_command("sequence flatten", PF_Cmd_SEQUENCE_FLATTEN, true));
    sweep_.over(sequence_command("sequence get flattened", PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, true));
    sweep_.over(sequence_command("sequence setdown", PF_Cmd_SEQUENCE_SETDOWN, false));
}

/// What the arbitrary-data callbacks work on and leave.
struct Values {
    std::shared_ptr<host::ArbitraryValue> left, right;
    PF_ArbitraryH disposed = nullptr, made = nullptr;
    A_u_long size = 0;
    PF_ArbCompareResult equal = 0;
    std::vector<std::byte> flat{};
    std::string text{};
};

/// One callback: fills the union of its record.
struct Selector {
    const char* name;
    PF_FunctionSelector number;
    void (*fill)(decltype(PF_ArbParamsExtra::u)& u, void* refcon, Values& v);
};

constexpr Selector kSelectors[] = {
    {"new", PF_Arbitrary_NEW_FUNC,
     [](auto& u, void* r, Values& v) {
         u.new_func_params = {r, &v.made};
     }},
    {"dispose", PF_Arbitrary_DISPOSE_FUNC,
     [](auto& u, void* r, Values& v) {
         u.dispose_func_params = {r, v.disposed};
     }},
    {"copy", PF_Arbitrary_COPY_FUNC,
     [](auto& u, void* r, Values& v) {
         u.copy_func_params = {r, v.left->handle(), &v.made};
     }},
    {"flat size", PF_Arbitrary_FLAT_SIZE_FUNC,
     [](auto& u, void* r, Values& v) {
         u.flat_size_func_params = {r, v.left->handle(), &v.size};
     }},
    {"flatten", PF_Arbitrary_FLATTEN_FUNC,
     [](auto& u, void* r, Values& v) {
         u.flatten_func_params = {r, v.left->handle(), static_cast<A_u_long>(v.flat.size()), v.flat.data()};
     }},
    {"unflatten", PF_Arbitrary_UNFLATTEN_FUNC,
     [](auto& u, void* r, Values& v) {
         u.unflatten_func_params = {r, static_cast<A_u_long>(v.flat.size()), v.flat.data(), &v.made};
     }},
    {"interpolate", PF_Arbitrary_INTERP_FUNC,
     [](auto& u, void* r, Values& v) {
         u.interp_func_params = {r, v.left->handle(), v.right->handle(), 0.5, &v.made};
     }},
    {"compare", PF_Arbitrary_COMPARE_FUNC,
     [](auto& u, void* r, Values& v) {
         u.compare_func_params = {r, v.left->handle(), v.right->handle(), &v.equal};
     }},
    {"print size", PF_Arbitrary_PRINT_SIZE_FUNC,
     [](auto& u, void* r, Values& v) {
         u.print_size_func_params = {r, v.left->handle(), &v.size};
     }},
    {"print", PF_Arbitrary_PRINT_FUNC,
     [](auto& u, void* r, Values& v) {
         const auto size = static_cast<A_u_long>(v.text.size());
         u.print_func_params = {r, PF_ArbPrint_NONE, v.left->handle(), size, v.text.data()};
     }},
    {"scan", PF_Arbitrary_SCAN_FUNC,
     [](auto& u, void* r, Values& v) {
         u.scan_func_params = {r, "0", 1, &v.made};
     }},
};

class ValueSweep : public FaultSweep {
  protected:
    PF_Err call(const Selector& selector) {
        PF_ArbParamsExtra extra{};
        extra.which_function = selector.number;
        extra.id = control().definition.u.arb_d.id;
        selector.fill(extra.u, control().definition.u.arb_d.refconPV, values_);
        return host().send(PF_Cmd_ARBITRARY_CALLBACK, &extra).error;
    }

    void prepare() {
        values_.left = host::ArbitraryValue::default_of(host(), control());
        values_.right = host::ArbitraryValue::fresh(host(), control());
        values_.flat = values_.left->flatten();
        values_.text.assign(values_.left->print().size() + 1, '\0');
        call(kSelectors[0]);
        values_.disposed = std::exchange(values_.made, nullptr);
    }

    void restore() {
        for (const PF_ArbitraryH handle : {values_.disposed, values_.made}) {
            if (host().handles().lives(handle)) host::ArbitraryValue(host(), control(), handle);
        }
        values_ = {};
    }

    const host::Control& control() { return host().control(kGradient); }

    Values values_;
};

TEST_F(ValueSweep, GradientValues) {
    for (const Selector& selector : kSelectors) {
        sweep_.over({.name = std::string("value ") + selector.name,
                     .prepare = [this] { prepare(); },
                     .run = [&] { return call(selector); },
                     // A text is never read, whatever it says, and that is told.
                     .usual = selector.number == PF_Arbitrary_SCAN_FUNC ? 514 : 0,
                     .complete = [this] { return !values_.made || *values_.made; },
                     .restore = [this] { restore(); }});
    }
}

TEST_F(FaultSweep, PanelEvents) {
    std::unique_ptr<host::Instance> instance;
    std::optional<host::Panel> panel;
    std::optional<host::ControlEvents> events;
    host::EventOutcome outcome;
    std::vector<uint8_t> painted;
    // The first stop of the gradient lies under this point, and none under the other.
    constexpr PF_Point stop{6, 40}, nothing{75, 40};
    Command event;
    event.prepare = [&] {
        instance = fixture_.new_instance();
        panel.emplace(host::PanelOptions{});
        panel->colour_picker = [](const PF_PixelFloat&) { return host::PickedColour{0, {1, 1, 0, 0}}; };
        events.emplace(*instance, host::ControlPlace{.index = kGradient}, &*panel);
    };
    event.complete = [&] { return outcome.changed || outcome.drag_wanted; };
    event.restore = [&] { instance.reset(); };
    const auto over = [&](const char* name, const std::function<host::EventOutcome()>& send) {
        event.name = name;
        event.run = [&outcome, send] { return (outcome = send()).error; };
        sweep_.over(event);
    };
    over("event press", [&] { return events->click(stop); });
    over("event next kind", [&] { return events->click(stop, 1, PF_Mod_CMD_CTRL_KEY); });
    over("event add a stop", [&] { return events->click(nothing, 2); });
    over("event pick a colour", [&] { return events->click(stop, 2); });
    const auto prepare = event.prepare;
    event.prepare = [&] {
        prepare();
        events->click(stop);
    };
    over("event drag", [&] { return events->drag(nothing); });
    event.prepare = prepare;
    event.complete = [&] {
        if (painted.empty()) painted = panel->rgba();
        return outcome.handled() && panel->rgba() == painted;
    };
    over("event draw", [&] { return events->draw(); });
}

TEST_F(FaultSweep, Frames) {
    std::unique_ptr<host::Instance> instance;
    host::World frame;
    const auto prepare = [&] {
        frame = {};
        instance = fixture_.new_instance();
    };
    const auto restore = [&] {
        EXPECT_TRUE(frame.guards_intact());
        instance.reset();
    };
    sweep_.over({.name = "pre-render",
                 .prepare = prepare,
                 .run = [&] { return result_of([&] { instance->plan(small_frame(Depth::k8)); }); },
                 .restore = restore});
    for (const Depth depth : kDepths) {
        sweep_.over(
            {.name = "frame " + std::to_string(static_cast<int>(depth)),
             .prepare = prepare,
             .run = [&] { return result_of([&] { instance->render(small_frame(depth), frame); }); },
             .complete = [&] { return frame.same_picture(fixture_.reference(depth)); },
             .restore = restore,
             .chain = {Callback::kReleaseSuite, Callback::kCheckinParam, Callback::kCheckinLayerPixels}});
    }
}

}  // namespace
}  // namespace flumo::test
