// The host's drawing suites, which are acquired and released together.
#pragma once

#include "effect_api/drawbot.h"
#include "effect_api/effect.h"

namespace flumo {

/// The four suites; a member is null while its suite is not acquired.
struct DrawbotSuites {
    const DRAWBOT_DrawbotSuite1* draw;
    const DRAWBOT_SupplierSuite1* supplier;
    const DRAWBOT_SurfaceSuite2* surface;
    const DRAWBOT_PathSuite1* path;
};

/// Acquires the four suites in the order of the record. The first that is missing ends it with
/// PF_Err_BAD_CALLBACK_PARAM and a message to the user; those before it stay acquired. A null `suites`
/// gives PF_Err_UNRECOGNIZED_PARAM_TYPE, with a message too.
PF_Err AEFX_AcquireDrawbotSuites(PF_InData* in_data, PF_OutData* out_data, DrawbotSuites* suites);

/// Releases all four in the same order, acquired or not. Always PF_Err_NONE.
PF_Err AEFX_ReleaseDrawbotSuites(PF_InData* in_data, PF_OutData* out_data);

/// Releases those suites of the group that were acquired, as after a failed AEFX_AcquireDrawbotSuites.
void ReleaseAcquiredDrawbotSuites(PF_InData* in_data, PF_OutData* out_data, const DrawbotSuites& suites);

}  // namespace flumo
