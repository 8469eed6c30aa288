// The callbacks on gradient values. The host treats the values as opaque and calls the effect to make, copy,
// store, compare, blend and print them.
#pragma once

#include <array>
#include <bit>

#include "effect/gradient/value/gradient.h"
#include "effect_api/arbitrary.h"
#include "effect_api/effect.h"

namespace flumo {

/// What a gradient control registers as its refcon: the eight characters themselves, in memory order,
/// in the place of a pointer.
inline void* GradientRefcon() {
    return std::bit_cast<void*>(std::array<char, 8>{'G', 'R', 'A', 'D', 'I', 'E', 'N', 'T'});
}

/// Whether the call is one of the eleven callbacks and carries the gradient refcon.
bool IsGradientCallback(const PF_ArbParamsExtra* extra);

/// Runs the callback that `extra` selects and returns its result; a selector that is none gives
/// PF_Err_UNRECOGNIZED_PARAM_TYPE. Throws nothing: returns PF_Err_BAD_CALLBACK_PARAM for a
/// missing suite and PF_Err_OUT_OF_MEMORY for a failed lock.
PF_Err DispatchGradientCallback(PF_InData* in_data, PF_OutData* out_data, PF_ArbParamsExtra* extra);

/// Makes a white gradient and writes its handle to `slot`. When the host cannot make a handle, the slot stays
/// as it was and the result is still PF_Err_NONE. Throws PF_Err_BAD_CALLBACK_PARAM without the handle suite
/// and PF_Err_OUT_OF_MEMORY when the new handle cannot be locked.
PF_Err GradientNew(PF_InData* in_data, GradientHandle* slot);

}  // namespace flumo
