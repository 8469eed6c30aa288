// Acquiring and releasing suites whose absence is shown to the user. The caller pairs the two itself.
#pragma once

#include "effect_api/suites.h"

namespace flumo {

/// Puts the suite into `*suite`. The pointer decides, not the number that the host returns: a suite that
/// comes with an error is a success here. Without a basic suite or a pointer the result is
/// PF_Err_BAD_CALLBACK_PARAM, and `message` is shown to the user.
/// @param message null for a standard text; passed as a format, so it must hold no percent sign
/// @param suite receives the pointer; null after a failure
PF_Err AEFX_AcquireSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int32 version,
                         const char* message, const void** suite);

/// Releases a suite, also one that was never acquired; the host's result is ignored. Without a
/// basic suite the result is PF_Err_BAD_CALLBACK_PARAM, and `message` is shown to the user.
PF_Err AEFX_ReleaseSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int32 version,
                         const char* message);

/// Marks `out_data` as carrying an error for the user and prints `message` into it.
void ShowErrorMessage(PF_InData* in_data, PF_OutData* out_data, const char* message);

}  // namespace flumo
