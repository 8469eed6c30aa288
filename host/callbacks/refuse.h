// Slots of the host's tables that this host does not serve: they answer with an error instead of being null.
#pragma once

#include "host/callbacks/answer.h"

namespace flumo::host {

template <class Function>
struct Refusal;

template <class Result, class... Arguments>
struct Refusal<Result (*)(Arguments...)> {
    static Result call(Arguments...) {
        if (Call* call = current_call()) {
            count_call(*call, Callback::kNotOffered);
            misused(*call, MisuseKind::kNotOffered, "called an operation that this host does not offer");
        }
        return Result(PF_Err_INVALID_CALLBACK);
    }
};

template <class... Slots>
void refuse(Slots&... slots) {
    ((slots = Refusal<Slots>::call), ...);
}

}  // namespace flumo::host
