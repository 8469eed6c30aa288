// How the program ends, as scripts see it.
#pragma once

#include "base/failure.h"

namespace flumo::cli {

/// Exit status of the process. Documented in `flumo --help`: the numbers are a promise to scripts.
enum class ExitStatus : int {
    kDone = 0,              ///< everything asked for was done
    kFrameFailed = 1,       ///< the effect failed on at least one frame or event, or a check found something
    kUsage = 2,             ///< options, values or a scene's contents are not acceptable
    kUnreadableInput = 3,   ///< a module, scene, gradient or layer file cannot be read
    kNoOpenGl = 4,          ///< the effect found no usable OpenGL
    kUnwritableOutput = 5,  ///< a file, its folder or standard output cannot be written
    kInterrupted = 130,     ///< stopped by SIGINT
    kTerminated = 143,      ///< stopped by SIGTERM
};

/// The status with which the program ends after a failure.
inline ExitStatus status_of(const Failure& failure) {
    switch (failure.kind()) {
        case FailureKind::kUsage:
            return ExitStatus::kUsage;
        case FailureKind::kUnreadableInput:
            return ExitStatus::kUnreadableInput;
        case FailureKind::kNoOpenGl:
            return ExitStatus::kNoOpenGl;
        case FailureKind::kUnwritableOutput:
            return ExitStatus::kUnwritableOutput;
        case FailureKind::kFrameFailed:
            break;
    }
    return ExitStatus::kFrameFailed;
}

}  // namespace flumo::cli
