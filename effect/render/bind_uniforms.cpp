#include "effect/render/bind_uniforms.h"

#include <glbinding/gl33core/gl.h>

#include <cstring>

#include "effect/gpu/gl/draw.h"
#include "effect/gpu/software_driver.h"
#include "effect/gradient/value/gradient_lock.h"
#include "effect/render/frame_look.h"
#include "effect/render/passes.h"
#include "effect/render/ramp_texture.h"
#include "effect/render/select_target.h"
#include "effect/render/uniforms.h"
#include "effect/render/upload.h"

using namespace gl33core;

namespace flumo {

namespace {

using RenderData = AESDK_OpenGL_EffectRenderData;

float Ratio(const PF_RationalScale& scale) {
    return static_cast<float>(scale.num) / static_cast<float>(scale.den);
}

/// The frame's textures; 0 where a layer is not chosen or a feature is off.
struct FrameTextures {
    GLuint layer1;
    GLuint layer2;
    GLuint layer3;
    GLuint noiseRamp;
    GLuint linesRamp;
};

GLuint UploadChosen(PF_InData* in_data, PF_LayerDef* layer) {
    return layer != nullptr ? UploadLayer(in_data, layer, kWrapClamp) : 0;
}

GLuint UploadVisible(double visible, const GradientLock& gradient) {
    return visible != 0.0 ? UploadGradientRamp(gradient.Record(), kWrapClamp) : 0;
}

FrameTextures UploadTextures(PF_InData* in_data, ParamSnapshot& snapshot, const GradientLock& noiseGradient,
                             const GradientLock& linesGradient) {
    return {.layer1 = UploadChosen(in_data, SnapshotLayer1(snapshot)),
            .layer2 = UploadChosen(in_data, SnapshotLayer2(snapshot)),
            .layer3 = UploadChosen(in_data, SnapshotLayer3(snapshot)),
            .noiseRamp = UploadVisible(snapshot.noiseVisible, noiseGradient),
            .linesRamp = UploadVisible(snapshot.linesVisible, linesGradient)};
}

// On hardware the main program itself: there a branch that no pixel takes costs nothing.
GLuint ImageProgram(RenderData& renderData, ParamSnapshot& snapshot) {
    if (!renderData.softwareDriver) return renderData.mainProgram;
    return AESDK_OpenGL_ProgramForLook(renderData, LookOfFrame(snapshot));
}

void BindLayer(GLuint program, GLuint texture, const char* sampler, const char* use, GLint unit) {
    BindSampler(program, texture, sampler, unit);
    glUniform1i(glGetUniformLocation(program, use), texture != 0 ? 1 : 0);
}

void BindTextures(GLuint program, const FrameTextures& textures) {
    BindLayer(program, textures.layer1, "inputTexture1", "useLayer1", 0);
    BindLayer(program, textures.layer2, "inputTexture2", "useLayer2", 1);
    BindLayer(program, textures.layer3, "inputTexture3", "useLayer3", 2);
    BindSampler(program, textures.linesRamp, "linesGradientTexture", 3);
    BindSampler(program, textures.noiseRamp, "noiseGradientTexture", 4);
}

void DeleteTextures(const FrameTextures& textures) {
    for (const GLuint texture :
         {textures.layer1, textures.layer2, textures.layer3, textures.linesRamp, textures.noiseRamp}) {
        if (texture != 0) glDeleteTextures(1, &texture);
    }
}

QuadVertices PlacedQuad(const PF_InData& in_data, A_long width, A_long height, A_long originX,
                        A_long originY) {
    const float downsampleX = Ratio(in_data.downsample_x);
    const float downsampleY = Ratio(in_data.downsample_y);
    const float fullW = static_cast<float>(in_data.width) * downsampleX;
    const float fullH = static_cast<float>(in_data.height) * downsampleY;
    return FrameQuad(static_cast<float>(width), static_cast<float>(height),
                     static_cast<float>(originX) / fullW, static_cast<float>(originY) / fullH,
                     static_cast<float>(width + originX) / fullW,
                     static_cast<float>(height + originY) / fullH);
}

void FillBuffer(GLuint buffer, const QuadVertices& vertices) {
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    void* const mapped = glMapBuffer(GL_ARRAY_BUFFER, GL_WRITE_ONLY);
    if (mapped == nullptr) throw PF_Err{PF_Err_OUT_OF_MEMORY};
    std::memcpy(mapped, vertices.data(), sizeof(vertices));
    glUnmapBuffer(GL_ARRAY_BUFFER);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void DrawFrameQuad(const RenderData& renderData, const QuadVertices& vertices) {
    FillBuffer(renderData.frameVertexBuffer, vertices);
    glBindVertexArray(renderData.frameVertexArray);
    DrawQuad(renderData.frameVertexBuffer);
    glBindVertexArray(0);
}

}  // namespace

void BindUniformsAndDraw(PF_InData* in_data, PF_OutData* out_data, AEGP_SuiteHandler& suites,
                         RenderData& renderData, ParamSnapshot& snapshot, A_long width, A_long height,
                         A_long originX, A_long originY, float multiplier16bit) {
    SelectTarget(in_data, out_data, renderData, renderData.resultTexture);
    glClear(GL_COLOR_BUFFER_BIT);
    SelectTarget(in_data, out_data, renderData, renderData.largeTexture);
    glViewport(0, 0, 2 * width, 2 * height);
    glClear(GL_COLOR_BUFFER_BIT);

    const GradientLock noiseGradient(suites.HandleSuite(), snapshot.noiseGradient);
    const GradientLock linesGradient(suites.HandleSuite(), snapshot.linesGradient);

    SetBlendMode(BlendMode::kOver);
    const GLuint program = ImageProgram(renderData, snapshot);
    glUseProgram(program);
    SetFrameUniforms(program, {.snapshot = snapshot,
                               .width = width,
                               .height = height,
                               .downsampleX = Ratio(in_data->downsample_x),
                               .multiplier16bit = multiplier16bit});
    const FrameTextures textures = UploadTextures(in_data, snapshot, noiseGradient, linesGradient);
    BindTextures(program, textures);
    DrawFrameQuad(renderData, PlacedQuad(*in_data, width, height, originX, originY));
    glUseProgram(0);
    glDisable(GL_BLEND);
    DeleteTextures(textures);

    glViewport(0, 0, width, height);
    SelectTarget(in_data, out_data, renderData, renderData.resultTexture);
    ResolvePass(renderData, width, height, renderData.largeTexture, BlendMode::kOff, true);
}

}  // namespace flumo
