// The parameter indices whose events the effect answers.
#pragma once

#include <array>
#include <vector>

#include "effect_api/params.h"

namespace flumo {

/// A hash set of parameter indices: 64-bit FNV-1a over the four bytes, lowest first, modulo eight buckets. A
/// bucket holds any number of members.
class GradientParamIndexSet {
  public:
    void Insert(PF_ParamIndex index);
    bool Contains(PF_ParamIndex index) const;

  private:
    std::array<std::vector<PF_ParamIndex>, 8> buckets_;
};

/// The indices of the two gradient controls. Built on the first call, for which other threads wait,
/// and read without a lock afterwards. Throws std::bad_alloc on a first call without memory; the next call
/// tries again.
const GradientParamIndexSet& GradientParamIndices();

}  // namespace flumo
