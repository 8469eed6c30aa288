// `flumo scene`.
#pragma once

#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"
#include "job/render_request.h"

namespace CLI {
class App;
}

namespace flumo::cli {

struct SceneOptions {
    job::RenderRequest request;
    std::filesystem::path output;  ///< "-" or empty is standard output
    std::filesystem::path module;
};

/// Adds the options to `command`; parsing fills `options`, which must outlive it.
void add_scene_options(CLI::App& command, SceneOptions& options);

/// Writes the scene that the options describe, without the controls that are not set. Uses
/// no OpenGL. Throws Failure.
ExitStatus write_scene(const SceneOptions& options, const StdoutGuard& output);

}  // namespace flumo::cli
