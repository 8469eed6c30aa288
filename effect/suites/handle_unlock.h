// The unlocking half of work on a locked host handle.
#pragma once

#include "effect_api/suites.h"

namespace flumo {

/// Unlocks a handle at scope end. Suite and handle are the caller's.
class HandleUnlock {
  public:
    HandleUnlock(const PF_HandleSuite1& handles, PF_Handle handle) : handles_(handles), handle_(handle) {}
    ~HandleUnlock() { handles_.host_unlock_handle(handle_); }
    HandleUnlock(const HandleUnlock&) = delete;
    HandleUnlock& operator=(const HandleUnlock&) = delete;

  private:
    const PF_HandleSuite1& handles_;
    PF_Handle handle_;
};

}  // namespace flumo
