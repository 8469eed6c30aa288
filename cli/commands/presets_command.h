// `flumo presets`.
#pragma once

#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"

namespace flumo::cli {

/// Writes the names of the presets, each with what its scene says about itself. Throws Failure.
ExitStatus list_presets(const StdoutGuard& output);

}  // namespace flumo::cli
