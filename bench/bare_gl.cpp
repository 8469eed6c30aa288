#include "bench/bare_gl.h"

#include <glbinding/gl33core/gl.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "bench/reference_text.h"
#include "effect/gpu/gl/draw.h"
#include "effect/gpu/gl/program.h"
#include "effect/gpu/gl_context.h"
#include "effect/gpu/resources.h"
#include "effect/gpu/saved_context.h"
#include "effect/gpu/software_driver.h"
#include "effect/render/frame_look.h"
#include "effect/render/pixel_format.h"
#include "effect/render/screen_matrix.h"
#include "effect/render/uniforms.h"
#include "effect/shaders/shader_texts.h"

using namespace gl33core;

namespace flumo::bench {

namespace {

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

GLuint build_reference() {
    constexpr std::array<int, 2> attributes = {kAttributePosition, kAttributeColor};
    return AESDK_OpenGL_BuildProgram(kUvVertexText, kReferenceFragmentText, attributes);
}

/// The program that the effect draws the image of this look with.
GLuint program_of_effect(AESDK_OpenGL_EffectRenderData& objects, ParamSnapshot& snapshot) {
    return AESDK_OpenGL_ProgramForLook(objects, LookOfFrame(snapshot));
}

}  // namespace

BareGl::BareGl(int width, int height, host::Depth depth, Image image)
    : width_(width),
      height_(height),
      depth_(depth),
      image_(image),
      pixels_(static_cast<size_t>(width) * static_cast<size_t>(height) * host::pixel_size(depth)) {
    const AESDK_OpenGL_SavedContext callers;
    AESDK_OpenGL_StartContext(objects_, SharedCommonData.get());
    AESDK_OpenGL_MakeCurrent(objects_);
    // A program that stands already is not built again.
    (image == Image::kReference ? objects_.mainProgram : reference_) = build_reference();
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
    textures_.clear();
    glDeleteProgram(reference_);
}

PF_Err BareGl::load(PF_InData* in_data) {
    ParamSnapshot snapshot;
    snapshot.in_data = in_data;
    if (const PF_Err err = TakeParamSnapshot(snapshot); err != PF_Err_NONE) return err;
    const AESDK_OpenGL_SavedContext callers;
    AESDK_OpenGL_MakeCurrent(objects_);
    textures_.load(in_data, snapshot, depth_);
    program_ = image_ == Image::kReference ? objects_.mainProgram : program_of_effect(objects_, snapshot);
    for (const GLuint program : {program_, reference_}) {
        if (program == 0) continue;
        glUseProgram(program);
        SetFrameUniforms(program, {.snapshot = snapshot,
                                   .width = width_,
                                   .height = height_,
                                   .downsampleX = 1.0F,
                                   .multiplier16bit = format_of(depth_).multiplier16bit});
        textures_.set_uniforms(program);
    }
    return ReleaseParamSnapshot(snapshot, in_data);
}

void BareGl::draw_image(GLuint program, Size viewport) const {
    target(objects_.framebuffer, objects_.largeTexture, viewport.width, viewport.height);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glUseProgram(program);
    textures_.bind();
    SetBlendMode(BlendMode::kOver);
    draw_quad(objects_.frameVertexArray, objects_.frameVertexBuffer);
    glDisable(GL_BLEND);
}

std::vector<float> BareGl::small_image(GLuint program) const {
    const Size size{std::min(large().width, 128), std::min(large().height, 72)};
    std::vector<float> pixels(4 * static_cast<size_t>(size.width * size.height));
    draw_image(program, size);
    glReadBuffer(GL_COLOR_ATTACHMENT0);
    glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_FLOAT, pixels.data());
    return pixels;
}

int BareGl::differing_pixels() {
    const AESDK_OpenGL_SavedContext callers;
    AESDK_OpenGL_MakeCurrent(objects_);
    textures_.upload_layers();
    const std::vector<float> ours = small_image(program_);
    const std::vector<float> theirs = small_image(reference_);
    int count = 0;
    for (size_t at = 0; at < ours.size(); at += 4)
        count += std::memcmp(&ours[at], &theirs[at], 4 * sizeof(float)) != 0;
    return count;
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
    textures_.upload_layers();
    glFinish();
    cost.main_draw = cost_of([this] {
        draw_image(program_, large());
        glFinish();
    });
    draw_reduction();
    draw_output();
    glFinish();
    cost.read_back = cost_of([this] { read_back(); });
    // Within the frame, as the effect does: whoever frees 100 MB at its end pays for their pages at the next
    // upload.
    textures_.delete_layers();
    cost.all = clock_now() - start;
    return cost;
}

Cost BareGl::draw_reference() {
    const AESDK_OpenGL_SavedContext callers;
    AESDK_OpenGL_MakeCurrent(objects_);
    textures_.upload_layers();
    const Cost cost = cost_of([this] {
        draw_image(reference_, large());
        glFinish();
    });
    textures_.delete_layers();
    return cost;
}

}  // namespace flumo::bench
