#include "bench/effect_runner.h"

#include <iostream>
#include <sstream>

#include "effect/entry/effect_main.h"
#include "effect/params/param_snapshot.h"
#include "effect/render/smart_pre_render.h"

namespace flumo::bench {

namespace {

// The entry point is a plain function, so its cost and its handler are kept per thread.
thread_local Cost command_cost;
thread_local const RenderHandler* render_handler = nullptr;

PF_Err handle_render(PF_InData* in_data, PF_OutData* out_data, void* extra) {
    if (render_handler == nullptr)
        return EffectMain(PF_Cmd_SMART_RENDER, in_data, out_data, nullptr, nullptr, extra);
    return (*render_handler)(in_data, out_data, static_cast<PF_SmartRenderExtra*>(extra));
}

PF_Err timed_main(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params,
                  PF_LayerDef* output, void* extra) {
    if (cmd != PF_Cmd_SMART_RENDER) return EffectMain(cmd, in_data, out_data, params, output, extra);
    PF_Err err = PF_Err_NONE;
    command_cost = cost_of([&] { err = handle_render(in_data, out_data, extra); });
    return err;
}

std::string start(host::Host& host) {
    std::ostringstream lines;
    std::streambuf* const standard = std::cout.rdbuf(lines.rdbuf());
    host.start();
    std::cout.rdbuf(standard);
    return lines.str();
}

}  // namespace

EffectRunner::EffectRunner()
    : module_(timed_main, PluginDataEntryFunction), host_(module_), driver_(start(host_)) {}

RenderCost EffectRunner::render(host::Instance& instance, const host::FrameRequest& request,
                                host::World& output) {
    const Cost call = cost_of([&] { instance.render(request, output); });
    return {call, command_cost};
}

RenderCost EffectRunner::render(host::Instance& instance, const host::FrameRequest& request,
                                host::World& output, const RenderHandler& handler) {
    render_handler = &handler;
    const auto forget = [](const RenderHandler**) { render_handler = nullptr; };
    const std::unique_ptr<const RenderHandler*, decltype(forget)> scope(&render_handler, forget);
    return render(instance, request, output);
}

PF_Err call_host_alone(PF_InData* in_data, PF_OutData*, PF_SmartRenderExtra* extra) {
    ParamSnapshot snapshot;
    snapshot.in_data = in_data;
    PF_Err err = TakeParamSnapshot(snapshot);
    PF_EffectWorld* input = nullptr;
    PF_EffectWorld* output = nullptr;
    if (err == PF_Err_NONE)
        err = extra->cb->checkout_layer_pixels(in_data->effect_ref, kInputCheckoutId, &input);
    if (err == PF_Err_NONE) err = extra->cb->checkout_output(in_data->effect_ref, &output);
    ReleaseParamSnapshot(snapshot, in_data);
    extra->cb->checkin_layer_pixels(in_data->effect_ref, kInputCheckoutId);
    return err;
}

}  // namespace flumo::bench
