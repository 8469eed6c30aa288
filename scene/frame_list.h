// Frame lists as renderers write them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace flumo::scene {

/// The frames of a list in the order written, each once: `7`, `1-100`, `1-100x2` (every second; `:`
/// may stand for `x`), several parts with commas, negative numbers as in `-10--5`.
/// Throws Failure (usage) for anything else: a reversed range, a step below 1, more than a million
/// frames.
std::vector<int> parse_frame_list(std::string_view text);

/// A list that reads back as these frames, which must differ: three or more of one ascending step as a range.
std::string frame_list_text(std::span<const int> frames);

}  // namespace flumo::scene
