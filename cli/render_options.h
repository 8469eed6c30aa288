// The options of `flumo render`.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/exr_file.h"
#include "cli/frame_size.h"
#include "cli/output_pattern.h"
#include "cli/progress.h"
#include "cli/raw_frame.h"
#include "cli/shard.h"
#include "host/instance.h"

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

/// One thread renders while others encode. Measured with llvmpipe on two cores, 40 frames of 1280x720 into
/// PNG: 75 s with one render thread, 83 s with two and 97 s with four, at the same 74 s of processor time,
/// since all contexts of a process share one rasteriser that draws for one of them at a time.
inline constexpr int kDefaultRenderThreads = 1;

/// What the command line says; what it leaves out is empty, and a scene or a default fills it.
struct RenderOptions {
    std::optional<FrameSize> size;
    std::optional<int> depth;
    std::optional<std::vector<int>> frames;
    std::vector<Assignment> assignments;  ///< in groups by option; later ones win
    std::filesystem::path scene;
    std::filesystem::path from;  ///< an EXR that holds its own scene
    std::optional<host::FrameRate> rate;
    std::optional<int> start_number;
    std::optional<Shard> shard;
    std::optional<ExrType> exr_type;
    std::optional<RawFormat> raw;
    std::optional<ProgressForm> progress;
    int render_threads = kDefaultRenderThreads;
    bool skip_existing = false;
    bool no_clobber = false;
    bool keep_going = false;
    std::filesystem::path module;
    std::optional<OutputPattern> output;
};

/// Adds the options to `command`; parsing fills `options`, which must outlive it.
void add_render_options(CLI::App& command, RenderOptions& options);

}  // namespace flumo::cli
