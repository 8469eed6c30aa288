// `flumo info`.
#pragma once

#include <filesystem>

#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"

namespace CLI {
class App;
}

namespace flumo::cli {

struct InfoOptions {
    std::filesystem::path module;
    bool json = false;
    bool check = false;
};

/// Adds the options to `command`; parsing fills `options`, which must outlive it.
void add_info_options(CLI::App& command, InfoOptions& options);

/// Writes what the effect is called, the flags that it set by name, and the OpenGL driver that it found. With
/// `check` it also compiles the programs and renders a small frame; with `json` the object has the verdict
/// under `check`, also when it is bad. Returns kDone or kNoOpenGl; throws Failure for everything else.
ExitStatus info(const InfoOptions& options, const StdoutGuard& output);

}  // namespace flumo::cli
