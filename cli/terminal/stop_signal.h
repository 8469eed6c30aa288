// SIGINT, SIGTERM and SIGHUP as a question that the frame loop asks.
#pragma once

#include <optional>

#include "cli/terminal/exit_status.h"

namespace flumo::cli {

/// From here on SIGPIPE and SIGXFSZ are ignored: a closed pipe or a file beyond the limit of its size is an
/// error of the write that meets it.
void ignore_write_signals();

/// From here on the first SIGINT, SIGTERM or SIGHUP only asks to stop, and the second one ends the process; a
/// signal that the process was started to ignore stays ignored. To be called once all inputs are read, since
/// a read that waits, as for a FIFO, is not interrupted.
void watch_stop_signals();

/// The status with which to end after the frames that were begun, once a signal came.
std::optional<ExitStatus> stop_requested();

}  // namespace flumo::cli
