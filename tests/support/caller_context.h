// A GL context that a host's own thread has current while it calls an effect.
#pragma once

#include "judge/engine/callers_context.h"

namespace flumo::host::test {

/// Current on its thread while it lives.
class CallerContext {
  public:
    /// Whether it was made, and this thread has exactly this context, its surface and its API current.
    bool is_current() const { return context_ && context_->is_current(); }

  private:
    std::unique_ptr<judge::CallersContext> context_ = judge::CallersContext::make();
};

}  // namespace flumo::host::test
