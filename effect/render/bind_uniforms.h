// Drawing the image of one frame.
#pragma once

#include "effect/gpu/render_data.h"
#include "effect/params/param_snapshot.h"
#include "effect/suites/suite_handler.h"
#include "effect_api/effect.h"

namespace flumo {

/// Draws the snapshot's image at double size and reduces it into resultTexture, premultiplied, which stays
/// the bound target. Width, height and origin are those of the world in pixels at the host's resolution;
/// the origin places it inside the whole frame, so that a partial frame shows the same image. The record's
/// context is current, the clear colour is transparent black. The record may keep a program for the look.
/// Throws AESDK_OpenGL_Fault with kFaultFramebuffer and any PF_Err of a host call; textures made before are
/// not deleted.
void BindUniformsAndDraw(PF_InData* in_data, PF_OutData* out_data, AEGP_SuiteHandler& suites,
                         AESDK_OpenGL_EffectRenderData& renderData, ParamSnapshot& snapshot, A_long width,
                         A_long height, A_long originX, A_long originY, float multiplier16bit);

}  // namespace flumo
