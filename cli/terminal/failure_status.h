// The exit status that tells scripts what kind of failure ended the program.
#pragma once

#include "base/failure.h"
#include "cli/terminal/exit_status.h"

namespace flumo::cli {

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
