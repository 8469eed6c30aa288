#include "effect/gpu/resources.h"

#include <glbinding/gl33core/gl.h>

#include <array>

#include "effect/gpu/gl/draw.h"
#include "effect/gpu/gl/program.h"
#include "effect/gpu/gl/texture.h"
#include "effect/shaders/shader_texts.h"

using namespace gl33core;

namespace flumo {

namespace {

using RenderData = AESDK_OpenGL_EffectRenderData;

void DropTexture(GLuint& texture) {
    if (texture != 0) glDeleteTextures(1, &texture);
    texture = 0;
}

void DropFramebuffer(RenderData& renderData) {
    if (renderData.framebuffer != 0) glDeleteFramebuffers(1, &renderData.framebuffer);
    if (renderData.renderbuffer != 0) glDeleteRenderbuffers(1, &renderData.renderbuffer);
    renderData.framebuffer = 0;
    renderData.renderbuffer = 0;
}

void DropQuad(RenderData& renderData) {
    if (renderData.quadVertexArray == 0) return;
    glDeleteBuffers(1, &renderData.quadVertexBuffer);
    glDeleteVertexArrays(1, &renderData.quadVertexArray);
    renderData.quadVertexBuffer = 0;
    renderData.quadVertexArray = 0;
}

void DropSizedObjects(RenderData& renderData, bool sizeDiffers) {
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    DropTexture(renderData.largeTexture);
    if (!sizeDiffers) return;
    DropFramebuffer(renderData);
    DropTexture(renderData.resultTexture);
    DropTexture(renderData.outputTexture);
    DropQuad(renderData);
}

void MakeQuad(GLuint& vertexArray, GLuint& buffer, const QuadVertices* vertices) {
    if (vertexArray != 0) return;
    glGenVertexArrays(1, &vertexArray);
    glBindVertexArray(vertexArray);
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, sizeof(QuadVertices), vertices, GL_DYNAMIC_DRAW);
    glBindVertexArray(0);
}

// The renderbuffer is bound beside the framebuffer and never gets storage nor a place in it.
void MakeFramebuffer(RenderData& renderData) {
    if (renderData.framebuffer != 0) return;
    glGenFramebuffers(1, &renderData.framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, renderData.framebuffer);
    glGenRenderbuffers(1, &renderData.renderbuffer);
    glBindRenderbuffer(GL_RENDERBUFFER, renderData.renderbuffer);
}

void MakeTarget(GLuint& texture, GLsizei width, GLsizei height) {
    if (texture == 0) texture = MakeFloatTexture(width, height, kWrapClamp, GL_UNSIGNED_BYTE);
}

struct ProgramRow {
    GLuint RenderData::*field;
    const char* const* vertexText;
    const char* const* fragmentText;
    std::array<int, 2> attributes;
};

// The main program names "Color" although its vertex text has "UVs" instead: the linker gives UVs the
// first free location, 1, where the quad is fed.
constexpr std::array<int, 2> kPositionColor = {kAttributePosition, kAttributeColor};
constexpr std::array<int, 2> kPositionUVs = {kAttributePosition, kAttributeUVs};
constexpr std::array<ProgramRow, 5> kPrograms = {{
    {&RenderData::mainProgram, &kUvVertexText, &kMainFragmentText, kPositionColor},
    {&RenderData::colorProgram, &kColorVertexText, &kColorFragmentText, kPositionColor},
    {&RenderData::copyProgram, &kUvVertexText, &kCopyFragmentText, kPositionUVs},
    {&RenderData::blurProgram, &kUvVertexText, &kBlurFragmentText, kPositionUVs},
    {&RenderData::outputProgram, &kUvVertexText, &kOutputFragmentText, kPositionUVs},
}};

void MakePrograms(RenderData& renderData) {
    for (const ProgramRow& row : kPrograms) {
        GLuint& program = renderData.*row.field;
        if (program != 0) continue;
        program = AESDK_OpenGL_BuildProgram(*row.vertexText, *row.fragmentText, row.attributes);
    }
}

}  // namespace

void AESDK_OpenGL_PrepareResources(RenderData& renderData, uint16_t width, uint16_t height,
                                   uint8_t doubleSize) {
    const bool sizeDiffers = width != renderData.width || height != renderData.height;
    if (sizeDiffers || doubleSize != renderData.doubleSize) DropSizedObjects(renderData, sizeDiffers);
    renderData.width = width;
    renderData.height = height;
    renderData.doubleSize = doubleSize;

    const QuadVertices quad = FrameQuad(width, height, 0, 0, 1, 1);
    const GLsizei largeFactor = doubleSize != 0 ? 2 : 1;
    MakeQuad(renderData.frameVertexArray, renderData.frameVertexBuffer, nullptr);
    MakeQuad(renderData.quadVertexArray, renderData.quadVertexBuffer, &quad);
    MakeFramebuffer(renderData);
    MakeTarget(renderData.largeTexture, width * largeFactor, height * largeFactor);
    MakeTarget(renderData.resultTexture, width, height);
    MakeTarget(renderData.outputTexture, width, height);
    MakePrograms(renderData);
}

}  // namespace flumo
