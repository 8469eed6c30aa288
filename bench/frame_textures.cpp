#include "bench/frame_textures.h"

#include <glbinding/gl33core/gl.h>

#include <algorithm>

#include "effect/gpu/gl/texture.h"
#include "effect/gradient/value/gradient_lock.h"
#include "effect/render/pixel_format.h"
#include "effect/render/ramp_texture.h"
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

GLuint ramp(AEGP_SuiteHandler& suites, double visible, PF_ArbitraryH gradient) {
    if (visible == 0.0) return 0;
    return UploadGradientRamp(GradientLock(suites.HandleSuite(), gradient).Record(), kWrapClamp);
}

}  // namespace

GLuint FrameTextures::upload(const Pixels& layer) const {
    if (layer.bytes.empty()) return 0;
    const PixelFormatRow& format = PixelFormatInfo(host::pixel_format(depth_));
    const GLuint texture = MakeFloatTexture(layer.shape.width, layer.shape.height, kWrapClamp, GL_FLOAT);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, layer.shape.rowbytes / static_cast<GLint>(format.pixelSize));
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, layer.shape.width, layer.shape.height, GL_RGBA, format.pixelType,
                    layer.bytes.data());
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    return texture;
}

void FrameTextures::load(PF_InData* in_data, ParamSnapshot& snapshot, host::Depth depth) {
    clear();
    depth_ = depth;
    const std::array<PF_LayerDef*, kLayers> chosen = {SnapshotLayer1(snapshot), SnapshotLayer2(snapshot),
                                                      SnapshotLayer3(snapshot)};
    for (size_t i = 0; i < kLayers; ++i) {
        if (chosen[i] == nullptr) continue;
        const auto* first = reinterpret_cast<const std::byte*>(chosen[i]->data);
        const auto size = static_cast<size_t>(chosen[i]->rowbytes) * static_cast<size_t>(chosen[i]->height);
        layers_[i] = {*chosen[i], {first, first + size}};
        textures_[i] = upload(layers_[i]);
    }
    AEGP_SuiteHandler suites(in_data->pica_basicP);
    textures_[kLayers] = ramp(suites, snapshot.linesVisible, snapshot.linesGradient);
    textures_[kLayers + 1] = ramp(suites, snapshot.noiseVisible, snapshot.noiseGradient);
}

void FrameTextures::upload_layers() {
    for (size_t i = 0; i < kLayers; ++i)
        if (textures_[i] == 0) textures_[i] = upload(layers_[i]);
}

void FrameTextures::delete_layers() {
    glDeleteTextures(kLayers, textures_.data());
    std::fill_n(textures_.begin(), kLayers, 0U);
}

void FrameTextures::clear() {
    glDeleteTextures(static_cast<GLsizei>(textures_.size()), textures_.data());
    textures_ = {};
    layers_ = {};
}

void FrameTextures::set_uniforms(GLuint program) const {
    for (size_t unit = 0; unit < kSamplers.size(); ++unit) {
        const auto& [sampler, use] = kSamplers[unit];
        glUniform1i(glGetUniformLocation(program, sampler), static_cast<GLint>(unit));
        if (use != nullptr) glUniform1i(glGetUniformLocation(program, use), textures_[unit] != 0 ? 1 : 0);
    }
}

void FrameTextures::bind() const {
    for (size_t unit = 0; unit < textures_.size(); ++unit) {
        glActiveTexture(GL_TEXTURE0 + static_cast<unsigned int>(unit));
        glBindTexture(GL_TEXTURE_2D, textures_[unit]);
    }
}

}  // namespace flumo::bench
