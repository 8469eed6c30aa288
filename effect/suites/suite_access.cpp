#include "effect/suites/suite_access.h"

namespace flumo {

PF_Err AEFX_AcquireSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int32 version,
                         const char* message, const void** suite) {
    *suite = nullptr;
    if (in_data->pica_basicP) in_data->pica_basicP->AcquireSuite(name, version, suite);
    if (*suite) return PF_Err_NONE;
    ShowErrorMessage(in_data, out_data, message ? message : "Not able to acquire AEFX Suite.");
    return PF_Err_BAD_CALLBACK_PARAM;
}

PF_Err AEFX_ReleaseSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int32 version,
                         const char* message) {
    if (in_data->pica_basicP) {
        in_data->pica_basicP->ReleaseSuite(name, version);
        return PF_Err_NONE;
    }
    ShowErrorMessage(in_data, out_data, message ? message : "Not able to release AEFX Suite.");
    return PF_Err_BAD_CALLBACK_PARAM;
}

void ShowErrorMessage(PF_InData* in_data, PF_OutData* out_data, const char* message) {
    out_data->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    in_data->utils->ansi.sprintf(out_data->return_msg, message);
}

}  // namespace flumo
