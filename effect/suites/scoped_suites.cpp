#include "effect/suites/scoped_suites.h"

namespace flumo {
namespace {

// Releases the suites that a broken acquisition has already given.
void ReleasePartial(PF_InData* in_data, PF_OutData* out_data, const DrawbotSuites& suites) {
    const auto release = [&](const void* suite, const char* name, int32 version) {
        if (suite) AEFX_ReleaseSuite(in_data, out_data, name, version, nullptr);
    };
    release(suites.draw, kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1);
    release(suites.supplier, kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1);
    release(suites.surface, kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2);
    release(suites.path, kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1);
}

}  // namespace

AcquiredDrawbot::AcquiredDrawbot(PF_InData* in_data, PF_OutData* out_data)
    : in_data_(in_data), out_data_(out_data) {
    const PF_Err status = AEFX_AcquireDrawbotSuites(in_data, out_data, &suites_);
    if (!status) return;
    ReleasePartial(in_data, out_data, suites_);
    throw PF_Err{status};
}

}  // namespace flumo
