// Choosing what a pass of a frame draws into; an incomplete framebuffer is shown to the user.
#pragma once

#include <glbinding/gl/types.h>

#include "effect/gpu/render_data.h"
#include "effect_api/effect.h"

namespace flumo {

/// AESDK_OpenGL_BindTarget followed by ReportFramebufferStatus, as every pass of a frame begins.
void SelectTarget(PF_InData* in_data, PF_OutData* out_data, const AESDK_OpenGL_EffectRenderData& renderData,
                  gl::GLuint texture);

/// Does nothing while the bound framebuffer is complete. Otherwise puts the status into the host's message
/// and throws PF_Err_OUT_OF_MEMORY. AESDK_OpenGL_BindTarget, which always comes before, tests the same,
/// so the user sees the message only if the status changes between the two.
void ReportFramebufferStatus(PF_InData* in_data, PF_OutData* out_data);

}  // namespace flumo
