// What is to be rendered, with nothing left open.
#pragma once

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
    Tracks tracks = {};
    OutputPattern output;
};

/// Options over scene over defaults. Throws Failure: (usage) for values that the controls do not take and
/// for several frames that would get one name, (unreadable input) for a scene or gradient file.
RenderJob make_render_job(const RenderOptions& options, const ControlCatalog& catalog);

}  // namespace flumo::cli
