#include "effect/gradient/editor/ramp_image.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "effect/gradient/value/sample_gradient.h"

namespace flumo {
namespace {

using PanelPixel = std::array<uint8_t, 4>;
constexpr uint8_t kOpaque = 255;

// Truncates without rounding or clamping. What no 32-bit integer holds gives 0, as the conversion
// would on the target machine.
uint8_t PanelByte(float channel) {
    const float scaled = channel * 255.0F;
    const bool fits = scaled >= -2147483648.0F && scaled < 2147483648.0F;
    return fits ? static_cast<uint8_t>(static_cast<int32_t>(scaled)) : uint8_t{0};
}

PanelPixel MakePixel(const GradientSample& colour, DRAWBOT_PixelLayout layout) {
    const uint8_t r = PanelByte(colour.r);
    const uint8_t g = PanelByte(colour.g);
    const uint8_t b = PanelByte(colour.b);
    return layout == kDRAWBOT_PixelLayout_32RGB ? PanelPixel{kOpaque, r, g, b} : PanelPixel{b, g, r, kOpaque};
}

}  // namespace

void FillRampPixels(const GradientStopMap& stops, A_long width, A_long height, DRAWBOT_PixelLayout layout,
                    void* pixels) {
    auto* row = static_cast<std::byte*>(pixels);
    const size_t rowBytes = static_cast<size_t>(width) * sizeof(PanelPixel);
    for (A_long i = 0; i < width; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(width);
        const PanelPixel pixel = MakePixel(SampleGradient(stops, t), layout);
        std::memcpy(row + static_cast<size_t>(i) * sizeof(PanelPixel), pixel.data(), sizeof(PanelPixel));
    }
    for (A_long y = 1; y < height; ++y)
        std::memcpy(row + static_cast<size_t>(y) * rowBytes, row, rowBytes);
}

}  // namespace flumo
