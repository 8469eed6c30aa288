// The parameter indices whose events the effect answers.
#pragma once

#include <array>
#include <vector>

#include "effect_api/params.h"

namespace flumo {

/// A hash set of parameter indices: FNV-1a over the four bytes, eight buckets. At one member a bucket it
/// holds eight without growing, and it never gets more than two.
class GradientParamIndexSet {
  public:
    void Insert(PF_ParamIndex index);
    bool Contains(PF_ParamIndex index) const;

  private:
    std::array<std::vector<PF_ParamIndex>, 8> buckets_;
};

/// The indices of the two gradient controls. Built on the first call, which other threads wait for;
/// read without a lock from then on.
const GradientParamIndexSet& GradientParamIndices();

}  // namespace flumo
