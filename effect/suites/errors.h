// Failures as exceptions inside the effect, and as the numbers that the host understands.
#pragma once

#include <type_traits>

#include "effect_api/commands.h"
#include "effect_api/drawbot.h"

namespace flumo {

/// A drawing call of the host failed; `status` is the host's number.
struct DRAWBOT_Exception {
    SPErr status;
};

/// Throws the PF_Err, unless it is PF_Err_NONE.
inline void ThrowOnError(PF_Err err) {
    if (err != PF_Err_NONE) throw PF_Err{err};
}

/// Throws DRAWBOT_Exception, unless the status of a drawing call is 0.
inline void ThrowOnDrawingError(SPErr status) {
    if (status != 0) throw DRAWBOT_Exception{status};
}

/// Runs `body`, which returns a PF_Err or nothing, and turns every exception into a number for the host: a
/// thrown PF_Err as it is, a drawing failure as its status, anything else as PF_Err_OUT_OF_MEMORY.
template <typename Body>
PF_Err CommandResult(const Body& body) noexcept {
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
            body();
            return PF_Err_NONE;
        } else {
            return body();
        }
    } catch (PF_Err thrown) {
        return thrown;
    } catch (const DRAWBOT_Exception& failure) {
        return failure.status;
    } catch (...) {
        return PF_Err_OUT_OF_MEMORY;
    }
}

}  // namespace flumo
