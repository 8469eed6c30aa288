// One machine's part of a list of frames.
#pragma once

#include <cstddef>
#include <string_view>

namespace flumo::job {

/// Part `part` (from 1) of `count`.
struct Shard {
    int part = 1;
    int count = 1;
};

/// Reads K/N with 1 <= K <= N. Throws Failure (usage).
Shard parse_shard(std::string_view text);

/// Positions [begin, end) in the list.
struct ShardRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Neighbouring frames, so that the parts of a video can be joined; all parts together hold every one of
/// `frames` positions once, and differ by at most one in length.
ShardRange range_of(const Shard& shard, std::size_t frames);

}  // namespace flumo::job
