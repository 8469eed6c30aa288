// Scoped ownership and scoped locks of the host's handles.
#pragma once

#include <memory>

#include "effect_api/commands.h"
#include "effect_api/suites.h"

namespace flumo {

/// Disposes of a handle through the suite that made it.
struct DisposeHandle {
    using pointer = PF_Handle;
    const PF_HandleSuite1& handles;

    void operator()(PF_Handle handle) const { handles.host_dispose_handle(handle); }
};

/// A handle that is disposed of at scope end unless it is released to a new owner.
using OwnedHandle = std::unique_ptr<void*, DisposeHandle>;

/// A handle of `size` bytes; null when the host has no memory for it.
inline OwnedHandle NewHandle(const PF_HandleSuite1& handles, A_HandleSize size) {
    return {handles.host_new_handle(size), DisposeHandle{handles}};
}

/// Locks `handle` for its own lifetime. The suite and the handle stay the caller's and must outlive the
/// lock. A null handle counts as a failed lock; a failed lock is not unlocked.
class HandleLock {
  public:
    HandleLock(const PF_HandleSuite1& handles, PF_Handle handle)
        : handles_(handles), handle_(handle), data_(handle ? handles.host_lock_handle(handle) : nullptr) {}
    ~HandleLock() {
        if (data_) handles_.host_unlock_handle(handle_);
    }
    HandleLock(const HandleLock&) = delete;
    HandleLock& operator=(const HandleLock&) = delete;

    /// The locked bytes; null when the lock failed.
    void* DataOrNull() const { return data_; }

    /// The locked bytes. Throws PF_Err_OUT_OF_MEMORY when the lock failed.
    void* Data() const {
        if (!data_) throw PF_Err{PF_Err_OUT_OF_MEMORY};
        return data_;
    }

  private:
    const PF_HandleSuite1& handles_;
    PF_Handle handle_;
    void* data_;
};

}  // namespace flumo
