// SIGINT and SIGTERM as a question that the frame loop asks.
#pragma once

#include <optional>

#include "cli/terminal/exit_status.h"

namespace flumo::cli {

/// From here on the first SIGINT or SIGTERM only asks to stop; the second one ends the process.
/// SIGPIPE is ignored, so that a closed pipe is an error of the write and not a death.
void watch_stop_signals();

/// The status with which to end after the frame that is begun, once a signal came.
std::optional<ExitStatus> stop_requested();

}  // namespace flumo::cli
