#include "effect/render/passes.h"

#include <glbinding/gl33core/gl.h>

#include "effect/render/screen_matrix.h"

using namespace gl33core;

namespace flumo {

namespace {

void UseProgram(GLuint program, A_long w, A_long h) {
    const Matrix4 matrix = ScreenMatrix(w, h);
    glUseProgram(program);
    glUniformMatrix4fv(glGetUniformLocation(program, "ModelviewProjection"), 1, GL_FALSE, matrix.data());
}

void DrawScreen(const AESDK_OpenGL_EffectRenderData& renderData, GLuint program, GLuint source) {
    BindSampler(program, source, "inputTexture", 0);
    glBindVertexArray(renderData.quadVertexArray);
    DrawQuad(renderData.quadVertexBuffer);
    glBindVertexArray(0);
}

}  // namespace

void ResolvePass(const AESDK_OpenGL_EffectRenderData& renderData, A_long w, A_long h, GLuint source,
                 BlendMode blend, bool blur) {
    SetBlendMode(blend);
    const GLuint program = blur ? renderData.blurProgram : renderData.copyProgram;
    UseProgram(program, w, h);
    if (blur) {
        glUniform2f(glGetUniformLocation(program, "px"), 0.5F / static_cast<float>(w),
                    0.5F / static_cast<float>(h));
    }
    DrawScreen(renderData, program, source);
    glUseProgram(0);
    glDisable(GL_BLEND);
}

void OutputPass(const AESDK_OpenGL_EffectRenderData& renderData, A_long w, A_long h, GLuint source,
                float multiplier16bit) {
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glBlendEquation(GL_FUNC_ADD);
    const GLuint program = renderData.outputProgram;
    UseProgram(program, w, h);
    glUniform1f(glGetUniformLocation(program, "multiplier16bit"), multiplier16bit);
    DrawScreen(renderData, program, source);
}

}  // namespace flumo
