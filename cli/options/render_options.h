// The options of `flumo render`.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/terminal/progress_display.h"
#include "job/render_request.h"
#include "job/run.h"
#include "media/raw_frame.h"

namespace CLI {
class App;
}

namespace flumo::cli {

/// What the command line says.
struct RenderOptions : job::RenderRequest {
    std::optional<media::RawFormat> raw;
    std::optional<ProgressForm> progress;
    int render_threads = job::kDefaultRenderThreads;
    bool skip_existing = false;
    bool make_folders = false;
    bool print_scene = false;  ///< instead of rendering
    bool no_clobber = false;
    bool keep_going = false;
    std::filesystem::path module;
};

/// Adds the options to `command`; parsing fills `options`, which must outlive it.
void add_render_options(CLI::App& command, RenderOptions& options);

}  // namespace flumo::cli
