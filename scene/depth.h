// Bits per channel of a frame.
#pragma once

#include <string>

#include "base/failure.h"

namespace flumo::scene {

/// Returns 8, 16 or 32 (float). Throws Failure (usage) for another number.
inline int checked_depth(long depth) {
    if (depth != 8 && depth != 16 && depth != 32) {
        throw usage_failure("depth " + std::to_string(depth) + ": expected 8, 16 or 32");
    }
    return static_cast<int>(depth);
}

}  // namespace flumo::scene
