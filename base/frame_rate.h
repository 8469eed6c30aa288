// Frames per second.
#pragma once

#include <string>
#include <string_view>

#include "host/values/frame_rate.h"

namespace flumo {

/// Reads N or N/D, such as 25 or 30000/1001, both parts 1 to 1000000. Throws Failure (usage).
host::FrameRate parse_frame_rate(std::string_view text);

/// The other way: "25", "30000/1001".
std::string frame_rate_text(const host::FrameRate& rate);

}  // namespace flumo
