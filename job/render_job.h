// What is to be rendered, with nothing left open.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/frame_size.h"
#include "host/values/world.h"
#include "job/render_request.h"
#include "media/output_pattern.h"
#include "scene/control.h"
#include "scene/scene.h"
#include "scene/track.h"

namespace flumo::job {

struct RenderJob {
    FrameSize size = {};  ///< at full resolution
    Resolution resolution = {};
    host::Depth depth = host::Depth::k8;
    std::vector<int> frames = {0};
    host::FrameRate rate = {};
    scene::Tracks tracks = {};
    media::OutputPattern output;
    media::ExrType exr_type = media::ExrType::kFloat;
    std::optional<int> part_width = {};  ///< as in the request
    bool linear = false;                 ///< colours are converted to linear light, which the format can hold
    /// Number of the first file, where files are not numbered by frames.
    std::optional<int> start_number = {};

    /// One line for each control that the request sets and that changes no picture.
    std::vector<std::string> warnings = {};

    /// The size of the files' pictures.
    FrameSize picture_size() const { return reduced(size, resolution); }

    /// Where the frame at this position of `frames` goes.
    std::filesystem::path path_of(std::size_t position) const;
};

/// The depth that the scene asks for, or else the one that is usual for the output's format.
host::Depth depth_of(const scene::Scene& scene, const media::OutputKind& output);

/// The request over its scene over defaults. Throws Failure: (usage) for values that the controls do not take
/// and for several frames that would get one name, (unreadable input) for a scene, gradient or picture file.
RenderJob make_render_job(const RenderRequest& request, const scene::ControlCatalog& catalog);

}  // namespace flumo::job
