// Uploading a layer of the host to a texture.
#pragma once

#include <glbinding/gl/types.h>

#include "effect/gpu/gl/texture.h"
#include "effect_api/commands.h"
#include "effect_api/effect.h"

namespace flumo {

/// A new GL_RGBA32F texture of the world's size with its pixels as they are: GL's red, green, blue and
/// alpha hold the host's alpha, red, green and blue. The depth is the world's own, not the frame's; row
/// padding is skipped. A wrap other than kWrapRepeat clamps. The caller owns the texture.
/// Throws the PF_Err of a failed pixel getter, and PixelDataSuiteMissing. A failure leaves the texture and
/// GL_UNPACK_ROW_LENGTH as they are then, since the frame has failed.
gl::GLuint UploadLayer(PF_InData* in_data, PF_LayerDef* world, TextureWrap wrap);

/// Thrown when a float world's pixels cannot be asked for. Not a PF_Err on purpose: the frame ends with
/// PF_Err_OUT_OF_MEMORY and not with this number.
enum class PixelDataSuiteMissing : A_long { kBadCallbackParam = PF_Err_BAD_CALLBACK_PARAM };

}  // namespace flumo
