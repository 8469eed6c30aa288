// The two exports of the module.
#pragma once

#include "effect_api/registration.h"

extern "C" {

/// Runs one command of the host, on whichever thread the host chooses. The type of `extra` depends on the
/// command; `params` and `output` are null in the smart commands. Commands without a handler, known or not,
/// give PF_Err_NONE.
PF_Err EffectMain(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params,
                  PF_LayerDef* output, void* extra);

/// Registers the effect with the host by one call of `register_effect`, and returns its result.
PF_Err PluginDataEntryFunction(PF_PluginDataPtr host_data, PF_PluginDataCB register_effect,
                               SPBasicSuite* basic_suite, const char* host_name, const char* host_version);
}
