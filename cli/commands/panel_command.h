// `flumo panel`.
#pragma once

#include "cli/options/panel_options.h"
#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"

namespace flumo::cli {

/// Sends the events to the control, prints the stops before and after each, and writes the picture and the
/// stored bytes where asked to. An event that the effect answers with an error does not stop the others.
/// Throws Failure: for bad input before anything is written, for a failed event after everything is.
ExitStatus panel(const PanelRequest& request, const StdoutGuard& output);

}  // namespace flumo::cli
