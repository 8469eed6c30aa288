// The GL steps that every pass consists of. A context is current.
#pragma once

#include <glbinding/gl/types.h>

#include <array>

namespace flumo {

/// Four vertices of x, y, z, u, v in triangle-strip order; x and y in output pixels.
using QuadVertices = std::array<gl::GLfloat, 20>;

/// The quad from (0, 0) to (w, h) whose texture coordinates run from (u0, v0) to (u1, v1).
QuadVertices FrameQuad(float w, float h, float u0, float v0, float u1, float v1);

/// Binds the texture to a texture unit and sets the program's sampler of that name.
/// The program is in use; a texture of 0 is bound all the same.
void BindSampler(gl::GLuint program, gl::GLuint texture, const char* name, gl::GLint unit);

/// Draws the quad in the buffer: position on attribute 0, texture coordinates on attribute 1. The caller
/// has bound the vertex array.
void DrawQuad(gl::GLuint vertexBuffer);

/// How a pass combines its colour with the target.
enum class BlendMode : int {
    kOver = 1,  // straight colour over the target, which becomes premultiplied
    kAdd = 2,   // the same, added
    kOff = 3    // no blending
};

/// Numbers that are no BlendMode change nothing.
void SetBlendMode(BlendMode mode);

}  // namespace flumo
