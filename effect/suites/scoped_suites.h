// Suites whose absence is shown to the user, held for one scope.
#pragma once

#include "effect/suites/drawbot_suites.h"
#include "effect/suites/errors.h"
#include "effect/suites/suite_access.h"
#include "effect_api/suites.h"

namespace flumo {

/// One suite. When it is missing, the constructor leaves a message for the user and throws
/// PF_Err_BAD_CALLBACK_PARAM.
template <typename Suite>
class AcquiredSuite {
  public:
    AcquiredSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int32 version)
        : in_data_(in_data), out_data_(out_data), name_(name), version_(version) {
        const void* suite = nullptr;
        ThrowOnError(AEFX_AcquireSuite(in_data, out_data, name, version, nullptr, &suite));
        suite_ = static_cast<const Suite*>(suite);
    }
    ~AcquiredSuite() { AEFX_ReleaseSuite(in_data_, out_data_, name_, version_, nullptr); }
    AcquiredSuite(const AcquiredSuite&) = delete;
    AcquiredSuite& operator=(const AcquiredSuite&) = delete;

    const Suite* operator->() const { return suite_; }

  private:
    PF_InData* in_data_;
    PF_OutData* out_data_;
    const char* name_;
    int32 version_;
    const Suite* suite_ = nullptr;
};

/// The four drawing suites. When one is missing, the constructor leaves a message for the user, releases
/// those that it acquired before and throws PF_Err_BAD_CALLBACK_PARAM.
class AcquiredDrawbot {
  public:
    AcquiredDrawbot(PF_InData* in_data, PF_OutData* out_data);
    ~AcquiredDrawbot() { AEFX_ReleaseDrawbotSuites(in_data_, out_data_); }
    AcquiredDrawbot(const AcquiredDrawbot&) = delete;
    AcquiredDrawbot& operator=(const AcquiredDrawbot&) = delete;

    const DrawbotSuites& Suites() const { return suites_; }

  private:
    PF_InData* in_data_;
    PF_OutData* out_data_;
    DrawbotSuites suites_{};
};

}  // namespace flumo
