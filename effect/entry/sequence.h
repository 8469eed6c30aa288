// The handle that the host keeps for each applied instance. The state of an instance is in its controls, so
// the handle is a placeholder that nothing reads back; the host requires it of effects that flatten sequence
// data.
#pragma once

#include <cstdint>

#include "effect/identity/identity.h"
#include "effect_api/effect.h"

namespace flumo {

/// What a live sequence handle holds.
struct SequenceStateByte {
    uint8_t state = 0;
};
static_assert(sizeof(SequenceStateByte) == 1);

/// The flat form, whose bytes are stored in projects, little-endian.
struct FlatSequenceRecord {
    uint8_t flat = 1;
    char tag[4] = {'T', 'E', 'M', 'P'};
    uint8_t zero[3] = {};
    int32_t size = 8;
    int32_t version = kEffectVersion;
};
static_assert(sizeof(FlatSequenceRecord) == 16);
static_assert(offsetof(FlatSequenceRecord, size) == 8 && offsetof(FlatSequenceRecord, version) == 12);

// The handlers below use the handle suite alone and throw PF_Err_BAD_CALLBACK_PARAM where it is missing. For
// the same lack of memory SequenceSetup returns PF_Err_OUT_OF_MEMORY and the flattening handlers
// PF_Err_INTERNAL_STRUCT_DAMAGED, as hosts expect.

/// Makes a live handle. PF_Err_OUT_OF_MEMORY when the host has no memory for it; a handle that cannot be
/// locked is not stored, and the result is PF_Err_NONE.
PF_Err SequenceSetup(PF_InData* in_data, PF_OutData* out_data);

/// Replaces what was loaded or copied by a new live handle; the old one stays the host's. Always
/// PF_Err_NONE: without a handle to replace, or memory for the new one, nothing happens.
PF_Err SequenceResetup(PF_InData* in_data, PF_OutData* out_data);

/// Stores a flat handle in out_data and disposes of the live one. PF_Err_INTERNAL_STRUCT_DAMAGED without a
/// live handle or memory. When the live handle is empty, or the new one cannot be locked, nothing is stored
/// or disposed of and the result is PF_Err_NONE; a new handle that cannot be locked stays allocated.
PF_Err SequenceFlatten(PF_InData* in_data, PF_OutData* out_data);

/// Stores a new flat handle in out_data; the live one stays valid. The bytes are not filled, since nothing
/// reads them back. Results as SequenceFlatten.
PF_Err GetFlattenedSequenceData(PF_InData* in_data, PF_OutData* out_data);

/// Disposes of the handle, live or flat, and leaves out_data alone.
PF_Err SequenceSetdown(PF_InData* in_data, PF_OutData* out_data);

}  // namespace flumo
