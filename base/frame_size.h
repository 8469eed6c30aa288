// The size of a frame in pixels.
#pragma once

#include <string_view>

namespace flumo {

/// Largest side of a frame, in pixels.
inline constexpr int kLargestSide = 30000;

struct FrameSize {
    int width = 1920;
    int height = 1080;
};

/// Throws Failure (usage) unless both sides are 1 to kLargestSide.
FrameSize checked_frame_size(long width, long height);

/// Reads WIDTHxHEIGHT. Throws Failure (usage).
FrameSize parse_frame_size(std::string_view text);

}  // namespace flumo
