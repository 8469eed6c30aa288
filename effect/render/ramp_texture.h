// Uploading the stops of a gradient to a texture.
#pragma once

#include <glbinding/gl/types.h>

#include "effect/gpu/gl/texture.h"
#include "effect/gradient/value/gradient.h"

namespace flumo {

/// Texels of a ramp; texel i holds the gradient at i / (kRampWidth - 1).
inline constexpr int kRampWidth = 2048;

/// A new GL_RGBA32F texture of kRampWidth x 1 texels, red, green, blue, alpha, the stops' colours as they
/// are at every depth of the host. The gradient is locked by the caller, who owns the texture.
gl::GLuint UploadGradientRamp(const GradientRecord& gradient, TextureWrap wrap);

}  // namespace flumo
