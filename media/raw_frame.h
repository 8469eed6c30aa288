// Pictures as plain bytes, for pipes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/frame_size.h"
#include "host/values/frame_rate.h"
#include "media/picture/picture.h"

namespace flumo::media {

/// Straight alpha, four samples a pixel, little-endian; or Y4M: 8 bits, 4:4:4, over black.
enum class RawFormat { kRgba, kRgba64, kRgbaFloat, kY4m };

/// Reads rgba, rgba64le, rgbaf32 or y4m. Throws Failure (usage).
RawFormat parse_raw_format(std::string_view text);

/// What stands before the first frame; empty but for Y4M.
std::string raw_header(RawFormat format, const FrameSize& size, const host::FrameRate& rate);

/// One frame.
std::vector<std::byte> raw_frame(RawFormat format, const Picture& picture);

}  // namespace flumo::media
