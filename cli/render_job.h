// What is to be rendered, with nothing left open.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "cli/control.h"
#include "cli/frame_size.h"
#include "cli/output_pattern.h"
#include "cli/render_options.h"
#include "cli/track.h"
#include "host/world.h"

namespace flumo::cli {

struct RenderJob {
    FrameSize size = {};
    host::Depth depth = host::Depth::k8;
    std::vector<int> frames = {0};
    host::FrameRate rate = {};
    Tracks tracks = {};
    OutputPattern output;
    ExrType exr_type = ExrType::kFloat;
    /// Number of the first file, where files are not numbered by frames.
    std::optional<int> start_number = {};

    /// Where the frame at this position of `frames` goes.
    std::filesystem::path path_of(size_t position) const;
};

/// Options over scene over defaults. Throws Failure: (usage) for values that the controls do not take and
/// for several frames that would get one name, (unreadable input) for a scene, EXR or gradient file.
RenderJob make_render_job(const RenderOptions& options, const ControlCatalog& catalog);

}  // namespace flumo::cli
