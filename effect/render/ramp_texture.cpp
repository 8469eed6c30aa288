#include "effect/render/ramp_texture.h"

#include <glbinding/gl33core/gl.h>

#include <array>

#include "effect/gradient/value/sample_gradient.h"

using namespace gl33core;

namespace flumo {

namespace {

using RampTexels = std::array<GradientSample, kRampWidth>;
static_assert(sizeof(RampTexels) == sizeof(GLfloat) * 4 * kRampWidth);

RampTexels SampleRamp(const GradientRecord& gradient) {
    RampTexels texels;
    for (int i = 0; i < kRampWidth; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(kRampWidth - 1);
        texels[static_cast<size_t>(i)] = SampleGradient(gradient, t);
    }
    return texels;
}

}  // namespace

GLuint UploadGradientRamp(const GradientRecord& gradient, TextureWrap wrap) {
    const GLuint texture = MakeFloatTexture(kRampWidth, 1, wrap, GL_FLOAT);
    const RampTexels texels = SampleRamp(gradient);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, kRampWidth);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, kRampWidth, 1, GL_RGBA, GL_FLOAT, texels.data());
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    return texture;
}

}  // namespace flumo
