// The licence checks of a build without licensing: every command and every frame is allowed.
#pragma once

#include "effect_api/effect.h"

namespace flumo {

/// Whether the command may run. A refused command returns PF_Err_NONE to the host without any effect.
bool LicenceAllowsCommand(PF_Cmd command, PF_InData* in_data, PF_OutData* out_data);

/// Whether licensing has handled PF_Cmd_ABOUT itself.
bool LicenceAbout(PF_InData* in_data, PF_OutData* out_data);

/// Licensing's result for PF_Cmd_DO_DIALOG.
PF_Err LicenceDialog(PF_InData* in_data);

/// Licensing's part of global set-up, which ends at a result other than PF_Err_NONE.
PF_Err LicenceSetup(PF_InData* in_data, PF_OutData* out_data);

/// Whether a finished frame is delivered without a mark. It is delivered in any case.
bool LicenceAllowsFrame();

}  // namespace flumo
