// `flumo render`.
#pragma once

#include "cli/exit_status.h"
#include "cli/render_options.h"

namespace flumo::cli {

/// Renders and writes every frame. Returns kDone, or the status of the signal that stopped it after a
/// finished frame. Throws Failure for everything else.
ExitStatus render(const RenderOptions& options);

}  // namespace flumo::cli
