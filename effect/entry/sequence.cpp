#include "effect/entry/sequence.h"

#include <bit>
#include <new>

#include "effect/suites/host_handle.h"
#include "effect/suites/suite_handler.h"

namespace flumo {
namespace {

static_assert(std::endian::native == std::endian::little, "the flat record is stored as it lies in memory");

/// Makes a live handle and stores it. False when there is no memory for it; a handle that cannot be
/// locked is not stored, and that is no failure.
bool StoreLiveHandle(PF_InData* in_data, PF_OutData* out_data) {
    AEGP_SuiteHandler suites(in_data->pica_basicP);
    const PF_HandleSuite1& handles = suites.HandleSuite();
    const PF_Handle handle = handles.host_new_handle(sizeof(SequenceStateByte));
    if (!handle) return false;
    const HandleLock lock(handles, handle);
    if (!lock.DataOrNull()) return true;
    new (lock.Data()) SequenceStateByte;
    out_data->sequence_data = handle;
    return true;
}

/// Makes a flat handle and stores it, after `fill` has worked on its locked bytes.
template <typename Fill>
PF_Err StoreFlatHandle(PF_InData* in_data, PF_OutData* out_data, const Fill& fill) {
    if (!in_data->sequence_data) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    if (!*in_data->sequence_data) return PF_Err_NONE;
    AEGP_SuiteHandler suites(in_data->pica_basicP);
    const PF_HandleSuite1& handles = suites.HandleSuite();
    const PF_Handle flat = handles.host_new_handle(sizeof(FlatSequenceRecord));
    if (!flat) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    const HandleLock lock(handles, flat);
    if (!lock.DataOrNull()) return PF_Err_NONE;
    fill(handles, lock.Data());
    out_data->sequence_data = flat;
    return PF_Err_NONE;
}

}  // namespace

PF_Err SequenceSetup(PF_InData* in_data, PF_OutData* out_data) {
    return StoreLiveHandle(in_data, out_data) ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
}

PF_Err SequenceResetup(PF_InData* in_data, PF_OutData* out_data) {
    if (in_data->sequence_data && *in_data->sequence_data) StoreLiveHandle(in_data, out_data);
    return PF_Err_NONE;
}

PF_Err SequenceFlatten(PF_InData* in_data, PF_OutData* out_data) {
    return StoreFlatHandle(in_data, out_data, [in_data](const PF_HandleSuite1& handles, void* bytes) {
        new (bytes) FlatSequenceRecord;
        handles.host_dispose_handle(in_data->sequence_data);
    });
}

PF_Err GetFlattenedSequenceData(PF_InData* in_data, PF_OutData* out_data) {
    return StoreFlatHandle(in_data, out_data, [](const PF_HandleSuite1&, void*) {});
}

PF_Err SequenceSetdown(PF_InData* in_data, PF_OutData*) {
    if (in_data->sequence_data) {
        AEGP_SuiteHandler suites(in_data->pica_basicP);
        suites.HandleSuite().host_dispose_handle(in_data->sequence_data);
    }
    return PF_Err_NONE;
}

}  // namespace flumo
