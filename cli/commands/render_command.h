// `flumo render`.
#pragma once

#include "cli/options/render_options.h"
#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"

namespace flumo::cli {

/// Renders and writes every frame. Returns kDone, kFrameFailed when it went on past failed frames, or the
/// status of the signal that stopped it after the frames that were begun. Throws Failure for everything else.
ExitStatus render(const RenderOptions& options, const StdoutGuard& output);

}  // namespace flumo::cli
