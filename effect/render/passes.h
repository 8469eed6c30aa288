// The two passes after the image: reduction, and conversion to the host's pixels.
#pragma once

#include <glbinding/gl/types.h>

#include "effect/gpu/gl/draw.h"
#include "effect/gpu/render_data.h"
#include "effect_api/types.h"

namespace flumo {

/// Draws `source` over the bound target, w x h pixels. With `blur` the five-tap filter of the double-size
/// image, otherwise a plain copy. Leaves no program in use and blending off.
void ResolvePass(const AESDK_OpenGL_EffectRenderData& renderData, A_long w, A_long h, gl::GLuint source,
                 BlendMode blend, bool blur);

/// Draws `source`, premultiplied red, green, blue, alpha, into the bound and cleared target of w x h pixels
/// as straight alpha, red, green, blue divided by `multiplier16bit`. Leaves outputProgram in use and
/// blending on.
void OutputPass(const AESDK_OpenGL_EffectRenderData& renderData, A_long w, A_long h, gl::GLuint source,
                float multiplier16bit);

}  // namespace flumo
