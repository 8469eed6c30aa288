// The share of a frame's pixels that is rendered.
#pragma once

#include <string>
#include <string_view>

#include "base/frame_size.h"

namespace flumo {

/// num / den of the pixels on each side, above 0 and at most 1.
struct Resolution {
    int num = 1;
    int den = 1;

    bool operator==(const Resolution&) const = default;
};

/// Reads full, half, third, quarter or N/D. Throws Failure (usage).
Resolution parse_resolution(std::string_view text);

/// A text that reads back as the same.
std::string resolution_text(const Resolution& resolution);

/// The size at this resolution, rounded up, as a host does it.
FrameSize reduced(const FrameSize& size, const Resolution& resolution);

}  // namespace flumo
