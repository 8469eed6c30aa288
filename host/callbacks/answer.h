// How every function of the host answers: counted, failed on purpose where a test asks for it, and never
// with an exception into the effect.
#pragma once

#include <exception>
#include <optional>
#include <string>

#include "host/call.h"
#include "host/host.h"

namespace flumo::host {

/// The planned failure of this call, if it is to fail.
inline std::optional<FaultMode> count_call(Call& call, Callback which) {
    return call.counted ? call.host.faults().next(which) : std::nullopt;
}

/// Runs `work` and turns an exception into an error number; the exception is kept in the call.
template <class Work>
PF_Err guarded(Call& call, Work&& work) {
    try {
        return work(call);
    } catch (const HostError& error) {
        call.problem = std::current_exception();
        return error.code();
    } catch (...) {
        call.problem = std::current_exception();
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
}

/// A call that returns an error number. `work(Call&)` does it, `clear()` makes its outputs null.
template <class Work, class Clear>
PF_Err answer(Callback which, Work&& work, Clear&& clear) {
    Call* call = current_call();
    if (!call) return PF_Err_BAD_CALLBACK_PARAM;
    const auto fault = count_call(*call, which);
    if (fault == FaultMode::kError) return call->host.faults().error_number();
    if (fault == FaultMode::kNull) {
        clear();
        return PF_Err_NONE;
    }
    const PF_Err error = guarded(*call, work);
    return fault ? call->host.faults().error_number() : error;
}

template <class Work>
PF_Err answer(Callback which, Work&& work) {
    return answer(which, work, [] {});
}

/// Notes a misuse and gives the number for it.
inline PF_Err misused(Call& call, MisuseKind kind, const std::string& what) {
    call.host.accounting().misuse(kind, what);
    return PF_Err_BAD_CALLBACK_PARAM;
}

/// As answer(), for calls that are handed the effect reference: it must be the running call's.
template <class Work>
PF_Err answer_ref(Callback which, PF_ProgPtr effect_ref, Work&& work) {
    return answer(which, [&](Call& call) -> PF_Err {
        if (effect_ref != call.ref()) {
            return misused(call, MisuseKind::kWrongCall,
                           std::string(callback_name(which)) + " with a foreign effect reference");
        }
        return work(call);
    });
}

}  // namespace flumo::host
