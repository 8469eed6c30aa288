// The host's three depths and their GL types.
#pragma once

#include <glbinding/gl/types.h>

#include <cstddef>

#include "effect_api/world.h"

namespace flumo {

/// One depth: bytes of a pixel, GL type of a channel, and the factor that turns a channel read through GL
/// into 0 to 1.
struct PixelFormatRow {
    PF_PixelFormat format;
    size_t pixelSize;
    gl::GLenum pixelType;
    float multiplier16bit;
};

/// The row of a format. Throws PF_Err_BAD_CALLBACK_PARAM for one that is not ARGB at 8, 16 or 32 bits.
const PixelFormatRow& PixelFormatInfo(PF_PixelFormat format);

}  // namespace flumo
