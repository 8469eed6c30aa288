// The host's suites whose absence is not shown to the user: acquired on first use, kept for one command,
// released at its end.
//
//     AEGP_SuiteHandler suites(in_data->pica_basicP);
//     PF_Handle handle = suites.HandleSuite().host_new_handle(16);
#pragma once

#include <array>

#include "effect_api/suites.h"

namespace flumo {

/// A local variable of one call on one thread. Getters throw PF_Err_BAD_CALLBACK_PARAM when the host reports
/// an error or gives no pointer; nothing is shown to the user. The references live as long as the handler.
class AEGP_SuiteHandler {
  public:
    /// Throws PF_Err_BAD_CALLBACK_PARAM when `basic` is null. `basic` stays the host's.
    explicit AEGP_SuiteHandler(const SPBasicSuite* basic);
    /// Releases each acquired suite once; the host's results are ignored.
    ~AEGP_SuiteHandler();
    AEGP_SuiteHandler(const AEGP_SuiteHandler&) = delete;
    AEGP_SuiteHandler& operator=(const AEGP_SuiteHandler&) = delete;

    const PF_HandleSuite1& HandleSuite();
    const PF_ANSICallbacksSuite1& AnsiSuite();
    const AEGP_UtilitySuite3& UtilitySuite();
    const PF_iterateFloatSuite1& IterateFloatSuite();

  private:
    enum Slot { kHandle, kAnsi, kUtility, kIterateFloat, kSlotCount };
    const void* Acquire(Slot slot);

    const SPBasicSuite* basic_;
    std::array<const void*, kSlotCount> cached_{};
};

}  // namespace flumo
