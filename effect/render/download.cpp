#include "effect/render/download.h"

#include <glbinding/gl33core/gl.h>

#include <algorithm>
#include <cstring>
#include <span>

#include "effect/gpu/software_driver.h"
#include "effect/suites/errors.h"

using namespace gl33core;

namespace flumo {

namespace {

using RenderData = AESDK_OpenGL_EffectRenderData;

/// What the pixel function of the float case needs: the frame's pixels, and the world that sets its row
/// length.
struct FloatFrame {
    std::span<const PF_PixelFloat> pixels;
    const PF_EffectWorld* inputWorld;
};

// May run on other threads of the host; it only reads the frame and makes no GL call. A world too large for
// the record's 16-bit size has pixels that were never drawn.
PF_Err CopyFloatPixel(void* refcon, A_long x, A_long y, PF_PixelFloat*, PF_PixelFloat* out) {
    const auto& frame = *static_cast<const FloatFrame*>(refcon);
    const auto index = static_cast<size_t>(static_cast<ptrdiff_t>(y) * frame.inputWorld->width + x);
    if (index < frame.pixels.size()) *out = frame.pixels[index];
    return PF_Err_NONE;
}

void IterateFloats(const RenderData& renderData, const PF_iterateFloatSuite1& iteration, PF_InData* in_data,
                   PF_EffectWorld* inputWorld, PF_EffectWorld* outputWorld,
                   std::span<const PF_PixelFloat> pixels) {
    FloatFrame frame{pixels, inputWorld};
    const SoftwareTurnPause pause(renderData);
    ThrowOnError(iteration.iterate(in_data, 0, inputWorld->height, inputWorld, nullptr, &frame,
                                   CopyFloatPixel, outputWorld));
}

template <typename Pixel>
using PixelGetter = PF_Err (*)(PF_EffectWorld*, PF_PixelPtr, Pixel**);

// The getter's result is not tested; without pixels nothing is written. Rows and columns beyond the
// frame keep what the world held.
template <typename Pixel>
void CopyRows(PixelGetter<Pixel> getPixels, const RenderData& renderData, PF_EffectWorld& world,
              const void* buffer) {
    const auto* source = static_cast<const Pixel*>(buffer);
    const auto columns = static_cast<size_t>(std::clamp<A_long>(world.width, 0, renderData.width));
    const A_long rows = std::min<A_long>(world.height, renderData.height);
    for (A_long y = 0; y < rows; ++y) {
        Pixel* pixels = nullptr;
        getPixels(&world, nullptr, &pixels);
        if (pixels == nullptr) continue;
        char* target = reinterpret_cast<char*>(pixels) + static_cast<ptrdiff_t>(y) * world.rowbytes;
        std::memcpy(target, source + static_cast<ptrdiff_t>(y) * renderData.width, columns * sizeof(Pixel));
    }
}

void ReadFrame(const RenderData& renderData, GLenum pixelType, void* buffer) {
    glReadBuffer(GL_COLOR_ATTACHMENT0);
    glReadPixels(0, 0, renderData.width, renderData.height, GL_RGBA, pixelType, buffer);
}

}  // namespace

void DownloadOutput(const RenderData& renderData, AEGP_SuiteHandler& suites, PF_EffectWorld* inputWorld,
                    PF_EffectWorld* outputWorld, PF_InData* in_data, const PixelFormatRow& format) {
    const PF_HandleSuite1& handles = suites.HandleSuite();
    const A_long pixelCount = A_long{renderData.width} * A_long{renderData.height};
    const PF_Handle handle =
        handles.host_new_handle(static_cast<A_HandleSize>(pixelCount) * format.pixelSize);
    if (handle == nullptr) throw PF_Err{PF_Err_OUT_OF_MEMORY};
    void* buffer = handles.host_lock_handle(handle);
    if (buffer == nullptr) throw PF_Err{PF_Err_OUT_OF_MEMORY};
    ReadFrame(renderData, format.pixelType, buffer);
    switch (format.format) {
        case PF_PixelFormat_ARGB32:
            CopyRows<PF_Pixel8>(in_data->utils->get_pixel_data8, renderData, *outputWorld, buffer);
            break;
        case PF_PixelFormat_ARGB64:
            CopyRows<PF_Pixel16>(in_data->utils->get_pixel_data16, renderData, *outputWorld, buffer);
            break;
        case PF_PixelFormat_ARGB128:
            IterateFloats(renderData, suites.IterateFloatSuite(), in_data, inputWorld, outputWorld,
                          {static_cast<const PF_PixelFloat*>(buffer), static_cast<size_t>(pixelCount)});
            break;
        default:
            throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    }
    handles.host_unlock_handle(handle);
    handles.host_dispose_handle(handle);
}

}  // namespace flumo
