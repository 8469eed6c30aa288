#include "effect/render/upload.h"

#include <glbinding/gl33core/gl.h>

#include "effect/suites/errors.h"
#include "effect_api/suites.h"

using namespace gl33core;

namespace flumo {

namespace {

// GL knows no negative row length: rows that lie bottom up in memory go one by one.
void UploadBottomUp(const PF_LayerDef& world, const void* pixels, GLenum channelType) {
    const auto* first = static_cast<const char*>(pixels);
    for (A_long y = 0; y < world.height; ++y) {
        const char* row = first + static_cast<ptrdiff_t>(y) * world.rowbytes;
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, y, world.width, 1, GL_RGBA, channelType, row);
    }
}

void UploadRows(const PF_LayerDef& world, const void* pixels, GLenum channelType, size_t pixelSize) {
    if (pixels == nullptr) return;
    if (world.rowbytes < 0) return UploadBottomUp(world, pixels, channelType);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, world.rowbytes / static_cast<GLint>(pixelSize));
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, world.width, world.height, GL_RGBA, channelType, pixels);
}

PF_Err Upload16(const PF_InData& in_data, PF_LayerDef& world) {
    PF_Pixel16* pixels = nullptr;
    const PF_Err err = in_data.utils->get_pixel_data16(&world, nullptr, &pixels);
    UploadRows(world, pixels, GL_UNSIGNED_SHORT, sizeof(PF_Pixel16));
    return err;
}

PF_Err Upload8(const PF_InData& in_data, PF_LayerDef& world) {
    PF_Pixel8* pixels = nullptr;
    const PF_Err err = in_data.utils->get_pixel_data8(&world, nullptr, &pixels);
    UploadRows(world, pixels, GL_UNSIGNED_BYTE, sizeof(PF_Pixel8));
    return err;
}

PF_Err GetFloatPixels(const PF_InData& in_data, PF_LayerDef& world, PF_PixelFloat** pixels) {
    const SPBasicSuite& basic = *in_data.pica_basicP;
    const void* suite = nullptr;
    const SPErr missing = basic.AcquireSuite(kPFPixelDataSuite, kPFPixelDataSuiteVersion1, &suite);
    if (missing != 0 || suite == nullptr) throw PixelDataSuiteMissing::kBadCallbackParam;
    const auto& getters = *static_cast<const PF_PixelDataSuite1*>(suite);
    const PF_Err err = getters.get_pixel_data_float(&world, nullptr, pixels);
    basic.ReleaseSuite(kPFPixelDataSuite, kPFPixelDataSuiteVersion1);
    return err;
}

PF_Err UploadFloat(const PF_InData& in_data, PF_LayerDef& world) {
    PF_PixelFloat* pixels = nullptr;
    const PF_Err err = GetFloatPixels(in_data, world, &pixels);
    UploadRows(world, pixels, GL_FLOAT, sizeof(PF_PixelFloat));
    return err;
}

// The host flags 16 bits alone. A world without the flag has 8 bits if the getter of that depth returns
// pixels, else floats.
bool HasEightBits(const PF_InData& in_data, PF_LayerDef& world) {
    PF_Pixel8* pixels = nullptr;
    in_data.utils->get_pixel_data8(&world, nullptr, &pixels);
    return pixels != nullptr;
}

PF_Err UploadPixels(const PF_InData& in_data, PF_LayerDef& world) {
    if ((world.world_flags & PF_WorldFlag_DEEP) != 0) return Upload16(in_data, world);
    if (HasEightBits(in_data, world)) return Upload8(in_data, world);
    return UploadFloat(in_data, world);
}

}  // namespace

GLuint UploadLayer(PF_InData* in_data, PF_LayerDef* world, TextureWrap wrap) {
    const GLuint texture = MakeFloatTexture(world->width, world->height, wrap, GL_FLOAT);
    ThrowOnError(UploadPixels(*in_data, *world));
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    return texture;
}

}  // namespace flumo
