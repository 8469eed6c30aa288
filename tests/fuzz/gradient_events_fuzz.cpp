// Any events on any gradient, with the host failing anywhere: every result is a known number, and everything
// that was borrowed is given back.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdlib>
#include <vector>

#include "effect/gradient/callbacks/gradient_callbacks.h"
#include "effect/gradient/callbacks/gradient_events.h"
#include "host/control_events.h"
#include "host/instance.h"
#include "host/panel/panel.h"

namespace {

using namespace flumo;
constexpr int kGradientIndex = 1;

void Require(bool held) {
    if (!held) std::abort();
}

// The gradient control by itself, as an effect: what there is to instrument stays small.
PF_Err AddGradient(PF_InData* in_data, PF_OutData* out_data) {
    PF_ParamDef control{};
    control.param_type = PF_Param_ARBITRARY_DATA;
    control.ui_flags = PF_PUI_CONTROL;
    control.u.arb_d.refconPV = GradientRefcon();
    out_data->num_params = kGradientIndex + 1;
    return in_data->inter.add_param(in_data->effect_ref, -1, &control);
}

PF_Err Main(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params, PF_LayerDef*,
            void* extra) {
    switch (cmd) {
        case PF_Cmd_PARAMS_SETUP:
            return AddGradient(in_data, out_data);
        case PF_Cmd_ARBITRARY_CALLBACK:
            return DispatchGradientCallback(in_data, out_data, static_cast<PF_ArbParamsExtra*>(extra));
        case PF_Cmd_EVENT:
            return HandleGradientEvent(in_data, out_data, params, static_cast<PF_EventExtra*>(extra));
        default:
            return PF_Err_NONE;
    }
}

PF_Err Register(PF_PluginDataPtr, PF_PluginDataCB, SPBasicSuite*, const char*, const char*) {
    return PF_Err_NONE;
}

/// One host for all inputs: making it takes longer than an event.
struct Stage {
    Stage() {
        host.params_setup();
        instance = host.new_instance();
    }
    ~Stage() {
        instance.reset();
        host.release_controls();
    }

    std::size_t StopCount() {
        const auto value = std::get<host::Arbitrary>(instance->value_at(kGradientIndex, 0));
        return (value->flatten().size() - 4) / 24;
    }

    host::Module module{Main, Register};
    host::Host host{module};
    std::unique_ptr<host::Instance> instance;
};

void SetGradient(FuzzedDataProvider& input, Stage& stage) {
    const auto bytes = input.ConsumeBytes<std::byte>(input.ConsumeIntegralInRange<std::size_t>(0, 400));
    const host::Control& control = stage.host.control(kGradientIndex);
    stage.instance->set(kGradientIndex,
                        host::Arbitrary(host::ArbitraryValue::unflatten(stage.host, control, bytes)));
}

// Panel coordinates are small numbers; the frame stays small enough to paint often.
A_long Coordinate(FuzzedDataProvider& input, A_long most) {
    return input.ConsumeIntegralInRange<A_long>(-most, most);
}

void ChangeEvent(FuzzedDataProvider& input, PF_UnionableRect& frame, PF_EventExtra& event) {
    event.e_type = input.ConsumeBool() ? PF_Event_DO_CLICK : input.ConsumeIntegralInRange(1, 5);
    event.evt_out_flags = 0;
    if (input.ConsumeBool()) {
        frame.left = Coordinate(input, 30000);
        frame.top = Coordinate(input, 30000);
        frame.right = frame.left + Coordinate(input, 200);
        frame.bottom = frame.top + Coordinate(input, 100);
    }
    auto& click = event.u.do_click;
    click.screen_point = {frame.left + Coordinate(input, 250), frame.bottom + Coordinate(input, 60)};
    if (input.ConsumeIntegralInRange(0, 15) == 0) click.screen_point.h = input.ConsumeIntegral<A_long>();
    click.num_clicks = input.ConsumeIntegralInRange(0, 3);
    click.modifiers = input.ConsumeBool() ? PF_Mod_CMD_CTRL_KEY : PF_Mod_NONE;
    if (input.ConsumeIntegralInRange(0, 3) == 0) click.send_drag = false;
    if (input.ConsumeIntegralInRange(0, 7) == 0) {
        for (A_intptr_t& word : click.continue_refcon)
            word = input.ConsumeIntegral<A_intptr_t>();
    }
}

constexpr PF_Err kHostFault = 77;

// Every call of one kind fails, in the first way that there is for it. False when none is to fail.
bool PlanFailure(FuzzedDataProvider& input, host::Faults& faults) {
    const auto kinds = static_cast<int>(host::Callback::kCount);
    const auto which = static_cast<host::Callback>(input.ConsumeIntegralInRange(0, 2 * kinds));
    if (which >= host::Callback::kCount) return false;
    const std::vector<host::FaultMode> modes = host::fault_modes(which);
    if (!modes.empty()) faults.fail_every(which, modes.front(), kHostFault);
    return !modes.empty();
}

void PlayEvent(FuzzedDataProvider& input, Stage& stage, PF_UnionableRect& frame, PF_EventExtra& event) {
    const bool has_layout = input.ConsumeBool();
    host::Panel panel({.layout = has_layout ? host::PixelLayout::kArgb : host::PixelLayout::kNeither});
    panel.color_picker = [&](const PF_PixelFloat&) -> host::PickedColor {
        if (input.ConsumeBool()) return {};
        return {PF_Err_NONE, {0, input.ConsumeFloatingPoint<float>(), 0, 1}};
    };
    ChangeEvent(input, frame, event);
    const PF_EffectArea area = input.ConsumeIntegralInRange(0, 9) == 0 ? PF_EA_PARAM_TITLE : PF_EA_CONTROL;
    host::ControlEvents events(*stage.instance, {.index = kGradientIndex, .frame = frame, .area = area},
                               &panel);
    const std::size_t before = stage.StopCount();
    const bool planned = PlanFailure(input, stage.host.faults());
    const host::EventOutcome outcome = events.send(event);
    const bool failed = planned && stage.host.faults().happened();
    stage.host.faults().clear();

    const bool no_memory = outcome.error == PF_Err_OUT_OF_MEMORY && (failed || !has_layout);
    const bool host_error =
        failed && (outcome.error == kHostFault || outcome.error == PF_Err_BAD_CALLBACK_PARAM);
    Require(outcome.error == PF_Err_NONE || no_memory || host_error);
    const std::size_t after = stage.StopCount();
    Require(after + 1 >= before && after <= before + 1 && (outcome.changed || after == before));
    Require(stage.host.accounting().idle() && stage.host.accounting().misuses().empty());
    stage.host.accounting().forget_messages();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static Stage stage;
    FuzzedDataProvider input(data, size);
    SetGradient(input, stage);
    PF_UnionableRect frame{0, 0, 150, 50};
    PF_EventExtra event{};
    for (int i = 0; i < 40 && input.remaining_bytes() > 0; ++i)
        PlayEvent(input, stage, frame, event);
    return 0;
}
