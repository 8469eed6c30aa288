// The number that a command ends with, for tests that expect errors.
#pragma once

#include "host/module/host_error.h"

namespace flumo::host::test {

/// Runs commands of the host's until one fails.
template <class Work>
PF_Err result_of(const Work& work) {
    try {
        work();
        return PF_Err_NONE;
    } catch (const HostError& error) {
        return error.code();
    }
}

}  // namespace flumo::host::test
