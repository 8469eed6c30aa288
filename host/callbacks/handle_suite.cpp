// Handles, as the suite and as the utility callbacks offer them.
#include "host/callbacks/answer.h"
#include "host/callbacks/tables.h"

namespace flumo::host {

namespace {

PF_Handle new_handle(A_HandleSize size) {
    Call* call = current_call();
    if (!call || count_call(*call, Callback::kNewHandle)) return nullptr;
    return call->host.handles().create(size);
}

void* lock_handle(PF_Handle handle) {
    Call* call = current_call();
    if (!call || count_call(*call, Callback::kLockHandle)) return nullptr;
    void* memory = call->host.handles().lock(handle);
    if (!memory) misused(*call, MisuseKind::kHandle, "locked a handle that does not live");
    return memory;
}

void unlock_handle(PF_Handle handle) {
    Call* call = current_call();
    if (!call) return;
    count_call(*call, Callback::kUnlockHandle);
    if (!call->host.handles().unlock(handle))
        misused(*call, MisuseKind::kNotLocked, "unlocked a handle that is not locked");
}

void dispose_handle(PF_Handle handle) {
    Call* call = current_call();
    if (!call) return;
    count_call(*call, Callback::kDisposeHandle);
    const auto disposal = call->host.handles().dispose(handle);
    if (disposal == HandleTable::Disposal::kUnknown)
        misused(*call, MisuseKind::kHandle, "disposed of a handle that does not live");
    if (disposal == HandleTable::Disposal::kWasLocked)
        misused(*call, MisuseKind::kHandle, "disposed of a locked handle");
    if (disposal == HandleTable::Disposal::kOverrun)
        misused(*call, MisuseKind::kHandle, "wrote past the end of a handle");
}

A_HandleSize handle_size(PF_Handle handle) {
    Call* call = current_call();
    if (!call || count_call(*call, Callback::kHandleSize)) return 0;
    if (!call->host.handles().lives(handle))
        misused(*call, MisuseKind::kHandle, "asked the size of a handle that does not live");
    return call->host.handles().size(handle);
}

PF_Err resize_handle(A_HandleSize size, PF_Handle* handle) {
    return answer(Callback::kResizeHandle, [&](Call& call) -> PF_Err {
        return call.host.handles().resize(*handle, size) ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
    });
}

}  // namespace

const PF_HandleSuite1& handle_suite() {
    static const PF_HandleSuite1 suite{new_handle,     lock_handle, unlock_handle,
                                       dispose_handle, handle_size, resize_handle};
    return suite;
}

}  // namespace flumo::host
