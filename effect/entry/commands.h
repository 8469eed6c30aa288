// What each command of the host runs.
#pragma once

#include "effect_api/effect.h"
#include "effect_api/params.h"

namespace flumo {

/// The arguments of a command; all of them are the host's.
struct CommandCall {
    PF_InData* in_data;
    PF_OutData* out_data;
    PF_ParamDef** params;
    void* extra;
};

/// Runs the command's handler and returns its result. Commands without a handler, negative numbers and
/// those above 28 give PF_Err_NONE. Throws what a handler throws; the sequence commands throw nothing.
PF_Err RunCommand(PF_Cmd command, const CommandCall& call);

}  // namespace flumo
