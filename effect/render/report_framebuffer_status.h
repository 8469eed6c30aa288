// An incomplete framebuffer, told to the user.
#pragma once

#include "effect_api/effect.h"

namespace flumo {

/// Does nothing while the bound framebuffer is complete. Otherwise puts the status into the host's message
/// and throws PF_Err_OUT_OF_MEMORY. AESDK_OpenGL_BindTarget, which always comes before, has its own test,
/// so the message is seen only if the status changes in between.
void ReportFramebufferStatus(PF_InData* in_data, PF_OutData* out_data);

}  // namespace flumo
