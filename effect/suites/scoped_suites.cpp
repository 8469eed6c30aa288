#include "effect/suites/scoped_suites.h"

namespace flumo {

AcquiredDrawbot::AcquiredDrawbot(PF_InData* in_data, PF_OutData* out_data)
    : in_data_(in_data), out_data_(out_data) {
    const PF_Err err = AEFX_AcquireDrawbotSuites(in_data, out_data, &suites_);
    if (err != PF_Err_NONE) ReleaseAcquiredDrawbotSuites(in_data, out_data, suites_);
    ThrowOnError(err);
}

}  // namespace flumo
