// The handle that the host keeps for each applied instance. All that an instance needs lies in its
// controls, so the handle is a placeholder that nothing reads back; the host's contract asks for it.
#pragma once

#include <cstdint>

#include "effect/identity/identity.h"
#include "effect_api/effect.h"

namespace flumo {

/// What a live sequence handle holds.
struct SequenceStateByte {
    std::uint8_t state = 0;
};
static_assert(sizeof(SequenceStateByte) == 1);

/// The flat form, whose bytes lie in saved projects, little-endian.
struct FlatSequenceRecord {
    std::uint8_t flat = 1;
    char tag[4] = {'T', 'E', 'M', 'P'};
    std::uint8_t zero[3] = {};
    std::int32_t size = 8;
    std::int32_t version = kEffectVersion;
};
static_assert(sizeof(FlatSequenceRecord) == 16);
static_assert(offsetof(FlatSequenceRecord, size) == 8 && offsetof(FlatSequenceRecord, version) == 12);

// The handlers below use the handle suite alone and throw PF_Err 516 where it is missing. Their results
// for the same lack of memory differ, and stay as they are.

/// Makes a live handle. PF_Err_OUT_OF_MEMORY without one.
PF_Err SequenceSetup(PF_InData* in_data, PF_OutData* out_data);

/// Replaces what was loaded or copied by a new live handle; the old one stays the host's. Always
/// PF_Err_NONE: without a handle to replace, or memory for the new one, nothing happens.
PF_Err SequenceResetup(PF_InData* in_data, PF_OutData* out_data);

/// Replaces the live handle by a flat one and disposes of it. PF_Err_INTERNAL_STRUCT_DAMAGED without a
/// live handle or memory; an emptied or unlockable one leaves everything as it is, without an error.
PF_Err SequenceFlatten(PF_InData* in_data, PF_OutData* out_data);

/// Gives the host a flat handle beside the live one, which stays. The bytes are not filled, on purpose:
/// nothing reads them back. Results as SequenceFlatten.
PF_Err GetFlattenedSequenceData(PF_InData* in_data, PF_OutData* out_data);

/// Disposes of the handle, live or flat, and leaves out_data alone.
PF_Err SequenceSetdown(PF_InData* in_data, PF_OutData* out_data);

}  // namespace flumo
