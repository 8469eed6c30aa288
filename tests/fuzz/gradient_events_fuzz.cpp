// Any events on any gradient, with the host failing anywhere: every result is a known number, the stops
// stay a map, and everything that was borrowed is given back.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdlib>
#include <vector>

#include "effect/gradient/flat_gradient.h"
#include "effect/gradient/gradient_events.h"
#include "tests/gradient/fake_panel_host.h"

namespace {

using flumo::test::FakePanelHost;

void Require(bool held) {
    if (!held) std::abort();
}

flumo::GradientStopMap ReadStops(FuzzedDataProvider& input) {
    std::vector<uint8_t> bytes =
        input.ConsumeBytes<uint8_t>(input.ConsumeIntegralInRange<std::size_t>(0, 400));
    const std::size_t size = bytes.size();
    bytes.resize(size + flumo::kFlatOverread);
    flumo::GradientStopMap stops = flumo::WhiteGradient();
    flumo::UnflattenGradient(bytes.data(), static_cast<A_u_long>(size), stops);
    return stops;
}

// Panel coordinates are small numbers; the frame stays small enough to paint often.
A_long Coordinate(FuzzedDataProvider& input, A_long most) {
    return input.ConsumeIntegralInRange<A_long>(-most, most);
}

void ChangeEvent(FuzzedDataProvider& input, PF_EventExtra& event) {
    event.e_type = input.ConsumeBool() ? PF_Event_DO_CLICK : input.ConsumeIntegralInRange(1, 5);
    event.evt_out_flags = 0;
    event.effect_win.area = input.ConsumeIntegralInRange(0, 9) == 0 ? PF_EA_PARAM_TITLE : PF_EA_CONTROL;
    if (input.ConsumeBool()) {
        auto& frame = event.effect_win.current_frame;
        frame.left = Coordinate(input, 30000);
        frame.top = Coordinate(input, 30000);
        frame.right = frame.left + Coordinate(input, 200);
        frame.bottom = frame.top + Coordinate(input, 100);
    }
    auto& click = event.u.do_click;
    click.screen_point = {event.effect_win.current_frame.left + Coordinate(input, 250),
                          event.effect_win.current_frame.bottom + Coordinate(input, 60)};
    if (input.ConsumeIntegralInRange(0, 15) == 0) click.screen_point.h = input.ConsumeIntegral<A_long>();
    click.num_clicks = input.ConsumeIntegralInRange(0, 3);
    click.modifiers = input.ConsumeBool() ? PF_Mod_CMD_CTRL_KEY : PF_Mod_NONE;
    if (input.ConsumeIntegralInRange(0, 3) == 0) click.send_drag = false;
    if (input.ConsumeIntegralInRange(0, 7) == 0) {
        for (A_intptr_t& word : click.continue_refcon)
            word = input.ConsumeIntegral<A_intptr_t>();
    }
}

void FillHost(FuzzedDataProvider& input, FakePanelHost& host) {
    host.fail_call = input.ConsumeBool() ? input.ConsumeIntegralInRange(0, 120) : 0;
    host.expected = PF_Err_NONE;
    host.prefers_argb = input.ConsumeBool();
    host.picker_status = input.ConsumeBool() ? PF_Err_NONE : PF_Interrupt_CANCEL;
    host.picker_answer.red = input.ConsumeFloatingPoint<float>();
    host.painted.clear();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    FakePanelHost host;
    flumo::GradientStopMap stops = ReadStops(input);
    PF_ParamDef param{};
    param.u.arb_d.value = host.Wrap(stops);
    PF_ParamDef* params[] = {&param};
    PF_EventExtra event{};
    event.effect_win.current_frame = {0, 0, 150, 50};

    for (int i = 0; i < 40 && input.remaining_bytes() > 0; ++i) {
        ChangeEvent(input, event);
        FillHost(input, host);
        const std::size_t before = stops.size();
        const PF_Err result = flumo::HandleGradientEvent(&host.in_data, &host.out_data, params, &event);
        Require(result == host.expected || (result == PF_Err_OUT_OF_MEMORY && !host.prefers_argb));
        Require(stops.size() + 1 >= before && stops.size() <= before + 1);
        Require(host.AllGivenBack(1));
    }
    return 0;
}
