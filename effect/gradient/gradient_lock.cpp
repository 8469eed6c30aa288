#include "effect/gradient/gradient_lock.h"

namespace flumo {

GradientLock::GradientLock(const PF_HandleSuite1& handles, GradientHandle gradient)
    : handles_(handles),
      gradient_(gradient),
      record_(gradient ? static_cast<GradientRecord*>(handles.host_lock_handle(gradient)) : nullptr) {}

GradientLock::~GradientLock() {
    if (record_) handles_.host_unlock_handle(gradient_);
}

GradientRecord& GradientLock::Record() const {
    if (!record_) throw PF_Err{PF_Err_OUT_OF_MEMORY};
    return *record_;
}

}  // namespace flumo
