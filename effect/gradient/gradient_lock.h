// The scoped lock through which every reader and writer reaches the stops of a gradient handle.
#pragma once

#include "effect/gradient/gradient.h"
#include "effect_api/suites.h"

namespace flumo {

/// Locks `gradient` for its own lifetime. The suite and the handle stay the caller's and must outlive
/// the lock. The handle lock is the only guard that the stops have.
class GradientLock {
  public:
    /// A null handle counts as a lock that yields nothing; only a lock that was given is given back.
    GradientLock(const PF_HandleSuite1& handles, GradientHandle gradient);
    ~GradientLock();
    GradientLock(const GradientLock&) = delete;
    GradientLock& operator=(const GradientLock&) = delete;

    /// The locked record. Throws PF_Err_OUT_OF_MEMORY when the lock yielded nothing.
    GradientRecord& Record() const;

    /// The stops of the locked record; throws like Record().
    GradientStopMap& Stops() const { return *Record().stops; }

  private:
    const PF_HandleSuite1& handles_;
    GradientHandle gradient_;
    GradientRecord* record_;
};

}  // namespace flumo
