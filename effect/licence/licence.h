// The licence gate of a build without licensing: every door stands open.
#pragma once

#include "effect_api/effect.h"

namespace flumo {

/// Whether the command may run. A refused command returns PF_Err_NONE to the host without any effect.
bool LicenceAllowsCommand(PF_Cmd command, PF_InData* in_data, PF_OutData* out_data);

/// Whether the gate has answered PF_Cmd_ABOUT itself.
bool LicenceAbout(PF_InData* in_data, PF_OutData* out_data);

/// The gate's answer to PF_Cmd_DO_DIALOG.
PF_Err LicenceDialog(PF_InData* in_data);

/// The gate's part of global set-up, which a result other than PF_Err_NONE ends.
PF_Err LicenceSetup(PF_InData* in_data, PF_OutData* out_data);

/// Whether a finished frame may go out as it is. It is delivered either way.
bool LicenceAllowsFrame();

}  // namespace flumo
