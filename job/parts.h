// Frames that are rendered in parts.
#pragma once

#include <functional>
#include <optional>

#include "base/frame_size.h"
#include "host/instance.h"

namespace flumo::job {

/// The largest width of a part, or nothing for a frame that is rendered as a whole: one of at most 8192
/// pixels a side and 2^25 in all that half of this machine's memory can hold, unless `asked` gives a width.
/// Depends on nothing that changes while the machine runs, so that frames repeat.
std::optional<int> part_width(const FrameSize& frame, std::optional<int> asked);

/// Renders the frame of `request` from its top to its bottom and hands over bands of its whole width, each
/// part_width / 4 rows high. The effect is asked for parts that overlap, since its last pass reads
/// neighbouring pixels; coordinates are rounded differently than in the whole frame, by less than a
/// thousandth of a pixel in frames of 16384. Throws what Instance::render and `take` throw.
void render_in_parts(host::Instance& instance, const host::FrameRequest& request, const FrameSize& frame,
                     int part_width, const std::function<void(const host::World&)>& take);

}  // namespace flumo::job
