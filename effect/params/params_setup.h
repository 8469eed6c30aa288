// Declares the 86 controls to the host.
#pragma once

#include "effect_api/effect.h"

namespace flumo {

/// Answers PF_Cmd_PARAMS_SETUP: registers every row of the control table in order, makes the default
/// gradients, whose handles become the host's, and asks for the editors' events. Leaves 87 in
/// out_data->num_params, the input layer counted.
/// Returns the host's error at once when it refuses a control. A default gradient that cannot be made
/// shows only in the result: all controls are declared. Throws PF_Err 516 without a basic suite.
PF_Err ParamsSetup(PF_InData* in_data, PF_OutData* out_data);

}  // namespace flumo
