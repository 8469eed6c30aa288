#include "effect/gpu/gl/draw.h"

#include <glbinding/gl33core/gl.h>

#include <cstdint>

using namespace gl33core;

namespace flumo {

namespace {

constexpr GLuint kPositionAttribute = 0;
constexpr GLuint kCoordinateAttribute = 1;
constexpr GLsizei kStride = 5 * sizeof(GLfloat);
constexpr uintptr_t kCoordinateOffset = 3 * sizeof(GLfloat);

void Blend(GLenum colourTarget) {
    glEnable(GL_BLEND);
    glBlendFuncSeparate(GL_SRC_ALPHA, colourTarget, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glBlendEquationSeparate(GL_FUNC_ADD, GL_FUNC_ADD);
}

}  // namespace

QuadVertices FrameQuad(float w, float h, float u0, float v0, float u1, float v1) {
    return {0, 0, 0, u0, v0,  //
            w, 0, 0, u1, v0,  //
            0, h, 0, u0, v1,  //
            w, h, 0, u1, v1};
}

void BindSampler(GLuint program, GLuint texture, const char* name, GLint unit) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLuint>(unit));
    glBindTexture(GL_TEXTURE_2D, texture);
    glUniform1i(glGetUniformLocation(program, name), unit);
}

void DrawQuad(GLuint vertexBuffer) {
    glEnableVertexAttribArray(kPositionAttribute);
    glEnableVertexAttribArray(kCoordinateAttribute);
    glBindBuffer(GL_ARRAY_BUFFER, vertexBuffer);
    glVertexAttribPointer(kPositionAttribute, 3, GL_FLOAT, GL_FALSE, kStride, nullptr);
    glVertexAttribPointer(kCoordinateAttribute, 2, GL_FLOAT, GL_FALSE, kStride,
                          // NOLINTNEXTLINE(performance-no-int-to-ptr): GL takes an offset as a pointer
                          reinterpret_cast<const void*>(kCoordinateOffset));
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(kPositionAttribute);
    glDisableVertexAttribArray(kCoordinateAttribute);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void SetBlendMode(BlendMode mode) {
    switch (mode) {
        case BlendMode::kOver:
            Blend(GL_ONE_MINUS_SRC_ALPHA);
            break;
        case BlendMode::kAdd:
            Blend(GL_ONE);
            break;
        case BlendMode::kOff:
            glDisable(GL_BLEND);
            break;
    }
}

}  // namespace flumo
