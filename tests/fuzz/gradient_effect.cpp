#include "tests/fuzz/gradient_effect.h"

#include "effect/gradient/gradient_callbacks.h"
#include "effect/gradient/gradient_events.h"

namespace flumo::test {
namespace {

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

}  // namespace

host::Module GradientEffect() {
    return {Main, Register};
}

}  // namespace flumo::test
