// `flumo variations`.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"
#include "job/render_request.h"

namespace CLI {
class App;
}

namespace flumo::cli {

struct VariationsOptions {
    job::RenderRequest request;
    int count = 12;
    std::string vary = "Offset,Evolution,Scale,Gradient";
    double strength = 0.3;
    uint64_t seed = 1;
    std::vector<std::string> sweeps;  ///< Id=VALUE,VALUE,...; instead of count, vary, strength and seed
    std::filesystem::path sheet;
    std::size_t columns = 0;  ///< of the sheet; 0 chooses
    bool make_folders = false;
    bool quiet = false;
    std::filesystem::path module;
};

/// Adds the options to `command`; parsing fills `options`, which must outlive it.
void add_variations_options(CLI::App& command, VariationsOptions& options);

/// Renders the variations of a look, writes the scene of each beside its picture, and a contact sheet if
/// asked for. Returns kDone or the status of the signal that stopped it. Throws Failure.
ExitStatus variations(const VariationsOptions& options, const StdoutGuard& output);

}  // namespace flumo::cli
