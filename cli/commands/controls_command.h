// `flumo controls`.
#pragma once

#include <filesystem>

#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"

namespace CLI {
class App;
}

namespace flumo::cli {

struct ControlsOptions {
    std::filesystem::path module;
    bool json = false;
    bool needs = false;
};

/// Adds the options to `command`; parsing fills `options`, which must outlive it.
void add_controls_options(CLI::App& command, ControlsOptions& options);

/// Writes the controls as the effect registered them: a line each, aligned, with a heading; or a JSON array
/// of objects with index, id, diskId, name, kind, group, default and what else the kind has: range, slider,
/// choices, percent; `keyframes` tells whether it may vary over time. With `needs` a Markdown table of what
/// the controls need to have an effect. Uses no OpenGL.
ExitStatus controls(const ControlsOptions& options, const StdoutGuard& output);

}  // namespace flumo::cli
