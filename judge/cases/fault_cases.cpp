// Level 5: every call to the host that can fail fails once.
#include <algorithm>
#include <memory>
#include <optional>

#include "host/call.h"
#include "host/control_events.h"
#include "host/panel/panel.h"
#include "judge/cases/case_table.h"
#include "judge/engine/arbitrary_calls.h"
#include "judge/engine/callers_context.h"
#include "judge/engine/fault_sweep.h"
#include "judge/engine/frame_judge.h"
#include "judge/engine/ledger.h"

namespace flumo::judge {

namespace {

using SharedValue = std::shared_ptr<host::ArbitraryValue>;

std::string text_of(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string described(const host::EffectIdentity& identity) {
    return std::to_string(identity.version) + " " + std::to_string(identity.flags) + " " +
           std::to_string(identity.flags2);
}

/// A control whose default is missing shows that its value could not be made.
Answer registered(const std::vector<host::Control>& controls) {
    Answer answer;
    for (const host::Control& control : controls) {
        answer.result +=
            std::to_string(control.disk_id) + control.name + std::to_string(control.default_value);
        if (control.kind == host::ControlKind::kArbitrary && !control.definition.u.arb_d.dephault)
            answer.refused = true;
    }
    return answer;
}

/// Set-down after an operation that may have failed.
void set_down(host::Host& host) {
    try {
        host.global_setdown();
    } catch (const host::HostError&) {
    }
}

/// Keeps an instance from an operation's preparation to its end.
class HeldInstance {
  public:
    explicit HeldInstance(host::Host& host) : host_(host) {}
    void make() { instance_ = host_.new_instance(); }
    void drop() { instance_.reset(); }
    host::Instance& operator*() { return *instance_; }
    host::Instance* operator->() { return instance_.get(); }

  private:
    host::Host& host_;
    std::unique_ptr<host::Instance> instance_;
};

/// The effect made new sequence data, or visibly did nothing.
Answer new_sequence_data(host::Instance& instance, PF_Handle before) {
    const PF_Handle now = instance.sequence_data();
    return {now == before || !now, std::to_string(instance.host().handles().size(now))};
}

void sweep_sequence(Fixture& fixture) {
    host::Host& host = fixture.host();
    HeldInstance held(host);
    const auto sweep_with = [&](const char* name, const std::function<Answer()>& run, bool makes) {
        sweep(fixture.context(), host,
              {name, run, [&, makes] { makes ? held.make() : held.drop(); }, [&] { held.drop(); }});
    };
    sweep_with(
        "set-up",
        [&] {
            held.make();
            return new_sequence_data(*held, nullptr);
        },
        false);
    if (!fixture.has_flag(PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING)) return;
    sweep_with(
        "flatten",
        [&] {
            const PF_Handle before = held->sequence_data();
            const std::vector<std::byte> bytes = held->flatten();
            Answer answer = new_sequence_data(*held, before);
            answer.result = text_of(bytes);
            return answer;
        },
        true);
    sweep(fixture.context(), host,
          {"resetup",
           [&] {
               const PF_Handle before = held->sequence_data();
               held->resetup();
               return new_sequence_data(*held, before);
           },
           [&] {
               held.make();
               held->flatten();
           },
           [&] { held.drop(); }});
    if (!fixture.has_flag2(PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA)) return;
    sweep_with(
        "flattened-copy",
        [&] {
            const std::vector<std::byte> bytes = held->flattened_copy();
            return Answer{bytes.empty(), std::to_string(bytes.size())};
        },
        true);
}

class ValueSweep {
  public:
    ValueSweep(Fixture& fixture, const host::Control& control)
        : fixture_(fixture),
          host_(fixture.host()),
          control_(control),
          left_(host::ArbitraryValue::default_of(host_, control)),
          right_(host::ArbitraryValue::fresh(host_, control)),
          stored_(left_->flatten()) {}

    void run() {
        makes("new", [&] { return host::ArbitraryValue::fresh(host_, control_); });
        makes("copy", [&] { return left_->copy(); });
        makes("unflatten", [&] { return host::ArbitraryValue::unflatten(host_, control_, stored_); });
        makes("interpolate", [&] { return host::ArbitraryValue::interpolate(*left_, *right_, 0.25); });
        gives("flatten", [&] { return text_of(left_->flatten()); });
        gives("print", [&] { return left_->print(); });
        gives("compare", [&] { return std::to_string(left_->compare(*right_)); });
        sweep_disposal();
    }

  private:
    void sweep_operation(const char* name, std::function<Answer()> run, std::function<void()> restore) {
        sweep(fixture_.context(), host_,
              {std::to_string(control_.index) + "-" + name, std::move(run), [] {}, std::move(restore)});
    }

    void gives(const char* name, const std::function<std::string()>& act) {
        sweep_operation(
            name,
            [&] {
                return Answer{false, act()};
            },
            [] {});
    }

    void makes(const char* name, const std::function<SharedValue()>& make) {
        sweep_operation(
            name,
            [&] {
                made_ = make();
                const host::UncountedCalls uncounted(host_);
                return Answer{false, text_of(made_->flatten())};
            },
            [&] { made_.reset(); });
    }

    void sweep_disposal() {
        PF_ArbitraryH disposed = nullptr;
        sweep(fixture_.context(), host_,
              {std::to_string(control_.index) + "-dispose",
               [&] {
                   return Answer{dispose(host_, control_, disposed) != PF_Err_NONE, ""};
               },
               [&] { disposed = raw_copy(host_, control_, left_->handle()); },
               [&] {
                   // What a failure left over is disposed of at the second call.
                   if (host_.handles().lives(disposed)) dispose(host_, control_, disposed);
               }});
    }

    Fixture& fixture_;
    host::Host& host_;
    const host::Control& control_;
    SharedValue left_;
    SharedValue right_;
    std::vector<std::byte> stored_;
    SharedValue made_;
};

std::string described(const host::EventOutcome& outcome) {
    return std::to_string(outcome.flags) + (outcome.changed ? "changed " : "same ") +
           (outcome.drag_wanted ? "drag " : "");
}

class EventSweep {
  public:
    EventSweep(Fixture& fixture, const host::Control& control)
        : fixture_(fixture), control_(control), instance_(fixture.host().new_instance()) {}

    void run() {
        sweep_operation("draw", [&](host::ControlEvents& events, host::Panel& panel) {
            const host::EventOutcome outcome = events.draw();
            const std::vector<uint8_t> pixels = panel.rgba();
            return Answer{outcome.error != PF_Err_NONE || !outcome.handled(),
                          std::string(pixels.begin(), pixels.end())};
        });
        for (const int x : {6, 75, 143}) {
            sweep_clicks("drag-at-" + std::to_string(x), x, 1, PF_Mod_NONE);
            sweep_clicks("control-click-at-" + std::to_string(x), x, 1, PF_Mod_CMD_CTRL_KEY);
            sweep_clicks("double-click-at-" + std::to_string(x), x, 2, PF_Mod_NONE);
        }
    }

  private:
    template <class Act>
    void sweep_operation(const std::string& name, Act act) {
        sweep(fixture_.context(), fixture_.host(),
              {std::to_string(control_.index) + "-" + name,
               [&] {
                   host::Panel panel({});
                   panel.colour_picker = [](const PF_PixelFloat&) {
                       return host::PickedColour{PF_Err_NONE, {1, 0.25f, 0.5f, 0.75f}};
                   };
                   host::ControlEvents events(*instance_, {.index = control_.index}, &panel);
                   return act(events, panel);
               },
               [&] { instance_ = fixture_.host().new_instance(); }});
    }

    void sweep_clicks(const std::string& name, int x, int clicks, PF_Modifiers modifiers) {
        sweep_operation(name, [this, x, clicks, modifiers](host::ControlEvents& events, host::Panel&) {
            host::EventOutcome outcome = events.click({x, 20}, clicks, modifiers);
            std::string result = described(outcome);
            if (outcome.drag_wanted) {
                outcome = events.drag({x + 9, 20});
                result += described(outcome);
            }
            return Answer{outcome.error != PF_Err_NONE, result + stored_value()};
        });
    }

    std::string stored_value() {
        if (control_.kind != host::ControlKind::kArbitrary) return {};
        const host::UncountedCalls uncounted(fixture_.host());
        return text_of(std::get<host::Arbitrary>(instance_->value_at(control_.index, 0))->flatten());
    }

    Fixture& fixture_;
    const host::Control& control_;
    std::unique_ptr<host::Instance> instance_;
};

std::string pixels_of(const host::World& world) {
    std::string text;
    for (int y = 0; y < world.height(); ++y)
        text += text_of(world.row(y));
    return text;
}

/// One frame, repeated, with the caller's context current and a picture on every layer control.
void sweep_frame(Fixture& fixture, host::Depth depth) {
    const auto caller = CallersContext::make();
    const auto instance = fixture.host().new_instance();
    set_layers(*instance, {.depth = depth, .row_padding = 3});
    host::FrameRequest request;
    request.width = 21;
    request.height = 13;
    request.depth = depth;
    host::World world;
    const auto render = [&] {
        world = host::World();
        instance->render(request, world);
        return Answer{false, pixels_of(world)};
    };
    const auto judge = [&] {
        CaseContext& context = fixture.context();
        context.expect(!caller || caller->is_current(), "the caller's OpenGL context kept", "another");
        context.expect(world.guards_intact(), "nothing written outside of the pixels", "guards changed");
    };
    sweep(fixture.context(), fixture.host(), {.name = "frame", .run = render, .judge = judge});
}

void play_faulty_frames(CaseContext& context, host::Depth depth) {
    with_fixture(context, [depth](Fixture& fixture) {
        const std::vector<host::Depth> depths = depths_of(fixture);
        if (std::ranges::find(depths, depth) == depths.end()) throw Skipped{"no frames of this depth"};
        sweep_frame(fixture, depth);
        fixture.write_off_losses();
    });
}

}  // namespace

void play_faulty_set_up(CaseContext& context) {
    const host::Module module(context.subject().module);
    host::Host host(module);
    host.global_setup();
    const bool keeps_data = host.global_data() != nullptr;
    host.global_setdown();
    sweep(context, host,
          {"global-set-up",
           [&] {
               host.global_setup();
               return Answer{keeps_data && !host.global_data(), described(host.identity())};
           },
           [] {}, [&] { set_down(host); }});
    sweep(context, host,
          {"params-set-up",
           [&] {
               host.params_setup();
               return registered(host.controls());
           },
           [&] { host.global_setup(); }, [&] { set_down(host); }});
    sweep(context, host,
          {"global-set-down",
           [&] {
               host.global_setdown();
               return Answer{};
           },
           [&] { host.global_setup(); }});
}

void play_faulty_sequence(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        sweep_sequence(fixture);
        fixture.write_off_losses();
    });
}

void play_faulty_values(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for (const host::Control* control : arbitrary_controls(fixture.host()))
            ValueSweep(fixture, *control).run();
        fixture.write_off_losses();
    });
}

void play_faulty_events(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for (const host::Control* control : drawn_controls(fixture.host()))
            EventSweep(fixture, *control).run();
        fixture.write_off_losses();
    });
}

void play_faulty_frames_8(CaseContext& context) {
    play_faulty_frames(context, host::Depth::k8);
}

void play_faulty_frames_16(CaseContext& context) {
    play_faulty_frames(context, host::Depth::k16);
}

void play_faulty_frames_32(CaseContext& context) {
    play_faulty_frames(context, host::Depth::k32);
}

void play_missing_suites(CaseContext& context) {
    const host::Module module(context.subject().module);
    host::Host host(module, {.basic_suite = false});
    constexpr PF_Cmd kCommands[] = {PF_Cmd_ABOUT,          PF_Cmd_GLOBAL_SETUP,     PF_Cmd_PARAMS_SETUP,
                                    PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_SETDOWN, PF_Cmd_GLOBAL_SETDOWN};
    for (const PF_Cmd command : kCommands) {
        context.step(host::command_name(command), [&] {
            host.send(command);
            for (const host::Misuse& misuse : take_misuses(host))
                context.finding("no misuse of the host", misuse.text);
        });
    }
}

}  // namespace flumo::judge
