#include "effect/gpu/gl/texture.h"

#include <glbinding/gl33core/gl.h>

using namespace gl33core;

namespace flumo {

GLuint MakeFloatTexture(GLsizei width, GLsizei height, TextureWrap wrap, GLenum channelType) {
    const auto wrapMode = static_cast<GLint>(wrap == kWrapRepeat ? GL_REPEAT : GL_CLAMP_TO_EDGE);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, static_cast<GLint>(GL_LINEAR));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, static_cast<GLint>(GL_LINEAR));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrapMode);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrapMode);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(GL_RGBA32F), width, height, 0, GL_RGBA, channelType,
                 nullptr);
    return texture;
}

}  // namespace flumo
