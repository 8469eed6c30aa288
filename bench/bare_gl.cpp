#include "bench/bare_gl.h"

#include <glbinding/gl33core/gl.h>

#include <array>

#include "effect/gpu/gl/draw.h"
#include "effect/gpu/gl_context.h"
#include "effect/gpu/resources.h"
#include "effect/gpu/saved_context.h"
#include "effect/gradient/value/gradient_lock.h"
#include "effect/render/pixel_format.h"
#include "effect/render/ramp_texture.h"
#include "effect/render/screen_matrix.h"
#include "effect/render/uniforms.h"
#include "effect/render/upload.h"
#include "effect/suites/suite_handler.h"

using namespace gl33core;

namespace flumo::bench {

namespace {

struct SamplerRow {
    const char* sampler;
    /// Switch beside the sampler; null where there is none.
    const char* use;
};

constexpr std::array<SamplerRow, 5> kSamplers = {{{"inputTexture1", "useLayer1"},
                                                  {"inputTexture2", "useLayer2"},
                                                  {"inputTexture3", "useLayer3"},
                                                  {"linesGradientTexture", nullptr},
                                                  {"noiseGradientTexture", nullptr}}};

GLint location(GLuint program, const char* name) {
    return glGetUniformLocation(program, name);
}

const PixelFormatRow& format_of(host::Depth depth) {
    return PixelFormatInfo(host::pixel_format(depth));
}

void target(GLuint framebuffer, GLuint texture, int width, int height) {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glDrawBuffer(GL_COLOR_ATTACHMENT0);
    glViewport(0, 0, width, height);
}

void draw_quad(GLuint vertex_array, GLuint buffer) {
    glBindVertexArray(vertex_array);
    DrawQuad(buffer);
    glBindVertexArray(0);
}

void draw_source(GLuint program, GLuint source, const AESDK_OpenGL_EffectRenderData& objects) {
    glUseProgram(program);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, source);
    draw_quad(objects.quadVertexArray, objects.quadVertexBuffer);
}

void set_screen(GLuint program, int width, int height) {
    const Matrix4 matrix = ScreenMatrix(width, height);
    glUseProgram(program);
    glUniformMatrix4fv(location(program, "ModelviewProjection"), 1, GL_FALSE, matrix.data());
    glUniform1i(location(program, "inputTexture"), 0);
}

void fill_frame_quad(GLuint buffer, int width, int height) {
    const QuadVertices quad =
        FrameQuad(static_cast<float>(width), static_cast<float>(height), 0.0F, 0.0F, 1.0F, 1.0F);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferSubData(GL_ARRAY_BUFFER, 0, sizeof(quad), quad.data());
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

}  // namespace

BareGl::BareGl(int width, int height, host::Depth depth)
    : width_(width),
      height_(height),
      depth_(depth),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * host::pixel_size(depth)) {
    const AESDK_OpenGL_SavedContext callers;
    AESDK_OpenGL_StartContext(objects_, SharedCommonData.get());
    AESDK_OpenGL_MakeCurrent(objects_);
    AESDK_OpenGL_PrepareResources(objects_, static_cast<uint16_t>(width), static_cast<uint16_t>(height), 1);
    fill_frame_quad(objects_.frameVertexBuffer, width, height);
    set_screen(objects_.blurProgram, width, height);
    glUniform2f(location(objects_.blurProgram, "px"), 0.5F / static_cast<float>(width),
                0.5F / static_cast<float>(height));
    set_screen(objects_.outputProgram, width, height);
    glUniform1f(location(objects_.outputProgram, "multiplier16bit"), format_of(depth).multiplier16bit);
    glUseProgram(0);
}

BareGl::~BareGl() {
    const AESDK_OpenGL_SavedContext callers;
    AESDK_OpenGL_MakeCurrent(objects_);
    glDeleteTextures(static_cast<GLsizei>(textures_.size()), textures_.data());
}

PF_Err BareGl::load(PF_InData* in_data) {
    ParamSnapshot snapshot;
    snapshot.in_data = in_data;
    if (const PF_Err err = TakeParamSnapshot(snapshot); err != PF_Err_NONE) return err;
    const AESDK_OpenGL_SavedContext callers;
    AESDK_OpenGL_MakeCurrent(objects_);
    glDeleteTextures(static_cast<GLsizei>(textures_.size()), textures_.data());
    textures_.clear();
    const GLuint program = objects_.mainProgram;
    glUseProgram(program);
    SetFrameUniforms(program, {.snapshot = snapshot,
                               .width = width_,
                               .height = height_,
                               .downsampleX = 1.0F,
                               .multiplier16bit = format_of(depth_).multiplier16bit});
    for (PF_LayerDef* layer : {SnapshotLayer1(snapshot), SnapshotLayer2(snapshot), SnapshotLayer3(snapshot)})
        textures_.push_back(layer != nullptr ? UploadLayer(in_data, layer, kWrapClamp) : 0);
    AEGP_SuiteHandler suites(in_data->pica_basicP);
    const auto ramp = [&suites](double visible, PF_ArbitraryH gradient) {
        if (visible == 0.0) return GLuint{0};
        return UploadGradientRamp(GradientLock(suites.HandleSuite(), gradient).Record(), kWrapClamp);
    };
    // A driver's code depends on which samplers have a texture: none is bound here that the effect leaves
    // out.
    textures_.push_back(ramp(snapshot.linesVisible, snapshot.linesGradient));
    textures_.push_back(ramp(snapshot.noiseVisible, snapshot.noiseGradient));
    for (std::size_t unit = 0; unit < kSamplers.size(); ++unit) {
        const auto& [sampler, use] = kSamplers[unit];
        glUniform1i(location(program, sampler), static_cast<GLint>(unit));
        if (use != nullptr) glUniform1i(location(program, use), textures_[unit] != 0 ? 1 : 0);
    }
    return ReleaseParamSnapshot(snapshot, in_data);
}

void BareGl::draw_main() const {
    target(objects_.framebuffer, objects_.largeTexture, 2 * width_, 2 * height_);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glUseProgram(objects_.mainProgram);
    for (std::size_t unit = 0; unit < textures_.size(); ++unit) {
        glActiveTexture(GL_TEXTURE0 + static_cast<unsigned int>(unit));
        glBindTexture(GL_TEXTURE_2D, textures_[unit]);
    }
    SetBlendMode(BlendMode::kOver);
    draw_quad(objects_.frameVertexArray, objects_.frameVertexBuffer);
    glDisable(GL_BLEND);
}

void BareGl::draw_reduction() const {
    target(objects_.framebuffer, objects_.resultTexture, width_, height_);
    draw_source(objects_.blurProgram, objects_.largeTexture, objects_);
}

void BareGl::draw_output() const {
    target(objects_.framebuffer, objects_.outputTexture, width_, height_);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glBlendEquation(GL_FUNC_ADD);
    draw_source(objects_.outputProgram, objects_.resultTexture, objects_);
    glDisable(GL_BLEND);
}

void BareGl::read_back() {
    glReadBuffer(GL_COLOR_ATTACHMENT0);
    glReadPixels(0, 0, width_, height_, GL_RGBA, format_of(depth_).pixelType, pixels_.data());
}

BareCost BareGl::draw() {
    const AESDK_OpenGL_SavedContext callers;
    AESDK_OpenGL_MakeCurrent(objects_);
    BareCost cost;
    const Cost start = clock_now();
    draw_main();
    glFinish();
    cost.main_draw = clock_now() - start;
    draw_reduction();
    draw_output();
    glFinish();
    cost.read_back = cost_of([this] { read_back(); });
    cost.all = clock_now() - start;
    return cost;
}

}  // namespace flumo::bench
