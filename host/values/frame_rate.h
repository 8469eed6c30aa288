// Frames per second.
#pragma once

namespace flumo::host {

/// Frames per second as num / den, for example 30000 / 1001.
struct FrameRate {
    int num = 25;
    int den = 1;
};

}  // namespace flumo::host
