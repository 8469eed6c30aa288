#include "effect/entry/gradient_param_index_set.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "effect/params/param_ids.h"

namespace flumo {
namespace {

/// 64-bit FNV-1a over the index's bytes, lowest first.
uint64_t Fnv1a(PF_ParamIndex index) {
    uint64_t hash = 0xCBF29CE484222325;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        hash ^= static_cast<uint32_t>(index) >> shift & 0xFF;
        hash *= 0x100000001B3;
    }
    return hash;
}

size_t Bucket(PF_ParamIndex index) {
    return Fnv1a(index) & 7;
}

}  // namespace

void GradientParamIndexSet::Insert(PF_ParamIndex index) {
    if (!Contains(index)) buckets_[Bucket(index)].push_back(index);
}

bool GradientParamIndexSet::Contains(PF_ParamIndex index) const {
    const auto& bucket = buckets_[Bucket(index)];
    return std::ranges::find(bucket, index) != bucket.end();
}

const GradientParamIndexSet& GradientParamIndices() {
    static const GradientParamIndexSet indices = [] {
        GradientParamIndexSet set;
        set.Insert(ParamIndexOf(Section::Gradient));
        set.Insert(ParamIndexOf(Section::LinesGradient));
        return set;
    }();
    return indices;
}

}  // namespace flumo
