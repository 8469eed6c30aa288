// The two exports of the module.
#pragma once

#include "effect_api/registration.h"

extern "C" {

/// Every command of the host comes in here, on whichever thread the host chooses. `extra` is what the
/// command says; `params` and `output` are null in the smart commands. A command that nobody handles,
/// known or not, gives PF_Err_NONE.
PF_Err EffectMain(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params,
                  PF_LayerDef* output, void* extra);

/// Tells the host by one call of `register_effect` what the effect is, and returns its answer.
PF_Err PluginDataEntryFunction(PF_PluginDataPtr host_data, PF_PluginDataCB register_effect,
                               SPBasicSuite* basic_suite, const char* host_name, const char* host_version);
}
