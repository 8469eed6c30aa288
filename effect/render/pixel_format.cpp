#include "effect/render/pixel_format.h"

#include <glbinding/gl33core/gl.h>

#include <algorithm>
#include <array>

#include "effect_api/commands.h"

using namespace gl33core;

namespace flumo {

namespace {

// GL reads a 16-bit channel as value / 65535; the host's full scale is 32768.
constexpr float kSixteenBit = 65535.0F / 32768.0F;

constexpr std::array<PixelFormatRow, 3> kFormats = {{
    {PF_PixelFormat_ARGB128, sizeof(PF_PixelFloat), GL_FLOAT, 1.0F},
    {PF_PixelFormat_ARGB64, sizeof(PF_Pixel16), GL_UNSIGNED_SHORT, kSixteenBit},
    {PF_PixelFormat_ARGB32, sizeof(PF_Pixel8), GL_UNSIGNED_BYTE, 1.0F},
}};

}  // namespace

const PixelFormatRow& PixelFormatInfo(PF_PixelFormat format) {
    const auto row = std::find_if(kFormats.begin(), kFormats.end(),
                                  [format](const PixelFormatRow& it) { return it.format == format; });
    if (row == kFormats.end()) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    return *row;
}

}  // namespace flumo
