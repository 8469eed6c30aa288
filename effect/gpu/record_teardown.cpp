// The destructors of the GL records, which need the contexts' operations that fill the records.
#include <glbinding/gl33core/gl.h>

#include "effect/gpu/gl_context.h"
#include "effect/gpu/platform_context.h"
#include "effect/gpu/render_data.h"
#include "effect/gpu/software_driver.h"

using namespace gl33core;

namespace flumo {

namespace {

void DeleteBuffer(GLuint buffer) {
    if (buffer != 0) glDeleteBuffers(1, &buffer);
}

void DeleteVertexArray(GLuint vertexArray) {
    if (vertexArray != 0) glDeleteVertexArrays(1, &vertexArray);
}

void DeleteOverlay(const OverlayBuffers& overlay) {
    DeleteBuffer(overlay.positionBuffer);
    DeleteBuffer(overlay.colourBuffer);
    DeleteVertexArray(overlay.vertexArray);
}

void DeleteQuad(GLuint vertexArray, GLuint buffer) {
    if (vertexArray == 0) return;
    DeleteBuffer(buffer);
    DeleteVertexArray(vertexArray);
}

}  // namespace

AESDK_OpenGL_EffectCommonData::~AESDK_OpenGL_EffectCommonData() {
    DestroyPlatformContext(*this);
}

AESDK_OpenGL_EffectRenderData::~AESDK_OpenGL_EffectRenderData() {
    AESDK_OpenGL_MakeCurrent(*this);
    for (const GLuint texture : {largeTexture, resultTexture, outputTexture}) {
        if (texture != 0) glDeleteTextures(1, &texture);
    }
    for (const GLuint program : {mainProgram, colorProgram, copyProgram, blurProgram, outputProgram}) {
        if (program != 0) glDeleteProgram(program);
    }
    DeleteLookPrograms(lookPrograms);
    if (framebuffer != 0) glDeleteFramebuffers(1, &framebuffer);
    if (renderbuffer != 0) glDeleteRenderbuffers(1, &renderbuffer);
    DeleteOverlay(overlayBuffers);
    DeleteQuad(quadVertexArray, quadVertexBuffer);
    DeleteQuad(frameVertexArray, frameVertexBuffer);
}

}  // namespace flumo
