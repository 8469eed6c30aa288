// The border between thrown failures and the numbers that the host understands.
#pragma once

#include "effect/suites/drawbot_owners.h"
#include "effect_api/commands.h"

namespace flumo {

/// Runs `body`, which returns a PF_Err, and gives the host a number for whatever leaves it: a thrown
/// PF_Err as it is, a drawing failure as its status, anything else as PF_Err_OUT_OF_MEMORY.
template <typename Body>
PF_Err CommandResult(const Body& body) noexcept {
    try {
        return body();
    } catch (PF_Err thrown) {
        return thrown;
    } catch (const DRAWBOT_Exception& failure) {
        return failure.status;
    } catch (...) {
        return PF_Err_OUT_OF_MEMORY;
    }
}

}  // namespace flumo
