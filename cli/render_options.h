// The options of `flumo render`.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/frame_size.h"
#include "cli/output_pattern.h"

namespace CLI {
class App;
}

namespace flumo::cli {

/// One Id=value of the command line; the value is read once the effect has told its controls.
struct Assignment {
    std::string option;  ///< as written, for messages: --set, --gradient, --layer1
    std::string id;
    std::string value;
};

/// What the command line says; what it leaves out is empty, and a scene or a default fills it.
struct RenderOptions {
    std::optional<FrameSize> size;
    std::optional<int> depth;
    std::optional<std::vector<int>> frames;
    std::vector<Assignment> assignments;  ///< in groups by option; later ones win
    std::filesystem::path scene;
    std::filesystem::path module;
    std::optional<OutputPattern> output;
};

/// Adds the options to `command`; parsing fills `options`, which must outlive it.
void add_render_options(CLI::App& command, RenderOptions& options);

}  // namespace flumo::cli
