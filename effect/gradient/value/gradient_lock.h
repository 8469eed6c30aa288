// The scoped lock that gives access to the stops of a gradient handle.
#pragma once

#include "effect/gradient/value/gradient.h"
#include "effect/suites/host_handle.h"

namespace flumo {

/// Locks `gradient` for its own lifetime. The stops have no other lock. The suite and
/// the handle stay the caller's and must outlive the lock.
class GradientLock {
  public:
    GradientLock(const PF_HandleSuite1& handles, GradientHandle gradient) : lock_(handles, gradient) {}

    /// The locked record. Throws PF_Err_OUT_OF_MEMORY when the lock failed.
    GradientRecord& Record() const { return *static_cast<GradientRecord*>(lock_.Data()); }

    /// The stops of the locked record; throws like Record().
    GradientStopMap& Stops() const { return *Record().stops; }

  private:
    HandleLock lock_;
};

}  // namespace flumo
