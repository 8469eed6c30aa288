// Making the textures that frames draw into and read from.
#pragma once

#include <glbinding/gl/enum.h>
#include <glbinding/gl/types.h>

namespace flumo {

/// How a texture repeats outside 0 to 1.
enum TextureWrap : int { kWrapClamp = 0, kWrapRepeat = 1 };

/// A new texture, bound to GL_TEXTURE_2D: an empty level 0 of width x height texels in GL_RGBA32F, linear
/// filters, wrapped as given; a wrap other than kWrapRepeat clamps. `channelType` is the GL type that the
/// allocation names; no pixels are read. The caller owns the texture.
gl::GLuint MakeFloatTexture(gl::GLsizei width, gl::GLsizei height, TextureWrap wrap, gl::GLenum channelType);

}  // namespace flumo
