#include "job/shard.h"

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo::job {

Shard parse_shard(std::string_view text) {
    const auto parts = split(text, '/');
    const auto part = parse_number<int>(parts.front());
    const auto count = parse_number<int>(parts.back());
    if (parts.size() != 2 || !part || !count || *part < 1 || *part > *count) {
        throw usage_failure("shard " + in_quotes(text) + ": expected K/N with K from 1 to N, such as 2/8");
    }
    return {*part, *count};
}

ShardRange range_of(const Shard& shard, std::size_t frames) {
    const auto count = static_cast<std::size_t>(shard.count);
    const auto bound = [&](int part) { return frames * static_cast<std::size_t>(part) / count; };
    return {bound(shard.part - 1), bound(shard.part)};
}

}  // namespace flumo::job
