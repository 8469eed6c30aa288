// A layer of the host's becomes a texture.
#pragma once

#include <glbinding/gl/types.h>

#include "effect_api/effect.h"

namespace flumo {

/// How a texture repeats outside 0 to 1.
enum TextureWrap : int { kWrapClamp = 0, kWrapRepeat = 1 };

/// A new GL_RGBA32F texture of the world's size with its pixels as they are: GL's red, green, blue and
/// alpha hold the host's alpha, red, green and blue. The depth is the world's own, not the frame's; row
/// padding is skipped. A wrap other than kWrapRepeat clamps. The caller owns the texture.
/// Throws the PF_Err of a failed pixel getter, and PixelDataSuiteMissing. A failure leaves the texture and
/// GL_UNPACK_ROW_LENGTH as they are then: the frame is lost anyway.
gl::GLuint UploadLayer(PF_InData* in_data, PF_LayerDef* world, int wrap);

/// Thrown when a float world's pixels cannot be asked for. Not a PF_Err on purpose: the frame ends with
/// PF_Err_OUT_OF_MEMORY and not with this number.
enum class PixelDataSuiteMissing : A_long { kBadCallbackParam = 516 };

/// An empty level 0 of the texture bound to GL_TEXTURE_2D, GL_RGBA32F, linear filters, wrapped as above.
void AllocateFloatTexture(gl::GLsizei width, gl::GLsizei height, int wrap);

}  // namespace flumo
