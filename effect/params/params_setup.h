// Declares the controls to the host.
#pragma once

#include "effect_api/effect.h"

namespace flumo {

/// Answers PF_Cmd_PARAMS_SETUP: registers every row of the control table in order, makes the default
/// gradients, whose handles become the host's, and asks for the editors' events. Leaves the
/// number of controls plus one, for the input layer, in out_data->num_params.
/// Returns the host's error at once when it refuses a control. When a default gradient cannot be made, all
/// controls are declared all the same, and the result is that failure. Throws PF_Err_BAD_CALLBACK_PARAM
/// without a basic suite.
PF_Err ParamsSetup(PF_InData* in_data, PF_OutData* out_data);

}  // namespace flumo
