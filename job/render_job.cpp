#include "job/render_job.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text_list.h"
#include "job/request_scene.h"
#include "media/picture_file.h"
#include "scene/control_needs.h"

namespace flumo::job {
namespace {

void require_different_names(const RenderJob& job) {
    if (job.frames.size() <= 1 || !job.output.is_pictures() || job.output.has_frame_number()) return;
    throw usage_failure("output " + in_quotes(job.output.text()) + ": " + std::to_string(job.frames.size()) +
                        " frames need a place for the number, such as shot.####.png");
}

const media::PictureFormatRow* picture_row(const media::OutputKind& kind) {
    const auto* format = std::get_if<media::PictureFormat>(&kind);
    return format ? &media::row_of(*format) : nullptr;
}

bool is_linear(const RenderRequest& request, const media::FrameNotes& notes) {
    const auto* picture = picture_row(request.output->kind());
    const bool possible = picture && picture->takes_linear;
    if (request.linear && !possible)
        throw usage_failure("output " + in_quotes(request.output->text()) +
                            ": linear light needs OpenEXR, such as shot.####.exr");
    return possible && (request.linear || notes.linear);
}

// A scene file may set what another one uses, so only what the request itself sets is looked at.
std::vector<std::string> warnings_of(const RenderRequest& request, const scene::Tracks& tracks,
                                     const scene::ControlCatalog& catalog) {
    std::vector<std::string> warnings;
    for (const Assignment& assignment : request.assignments) {
        const std::string why = scene::why_without_effect(catalog.find(assignment.id), tracks, catalog);
        if (!why.empty() && std::ranges::find(warnings, why) == warnings.end()) warnings.push_back(why);
    }
    return warnings;
}

// Files are numbered through the whole list, so that shards write different names.
void take_shard(RenderJob& job, const Shard& shard) {
    const ShardRange range = range_of(shard, job.frames.size());
    job.frames = std::vector<int>(job.frames.begin() + static_cast<std::ptrdiff_t>(range.begin),
                                  job.frames.begin() + static_cast<std::ptrdiff_t>(range.end));
    if (job.start_number) *job.start_number += static_cast<int>(range.begin);
}

}  // namespace

host::Depth depth_of(const scene::Scene& scene, const media::OutputKind& output) {
    if (scene.depth) return static_cast<host::Depth>(*scene.depth);
    if (const auto* picture = picture_row(output)) return picture->usual_depth;
    const auto* video = std::get_if<media::VideoFormat>(&output);
    return video ? media::row_of(*video).usual_depth : host::Depth::k8;
}

std::filesystem::path RenderJob::path_of(std::size_t position) const {
    return output.path_of(start_number ? *start_number + static_cast<int>(position) : frames[position]);
}

RenderJob make_render_job(const RenderRequest& request, const scene::ControlCatalog& catalog) {
    media::FrameNotes notes;
    scene::Scene scene = scene_of_request(request, catalog, notes);
    RenderJob job{.tracks = std::move(scene.tracks), .output = *request.output};
    job.size = scene.size.value_or(job.size);
    job.depth = depth_of(scene, request.output->kind());
    job.frames = scene.frames.value_or(job.frames);
    job.rate = scene.rate.value_or(job.rate);
    job.exr_type = request.exr_type.value_or(notes.exr_type);
    job.resolution = scene.resolution.value_or(job.resolution);
    job.linear = is_linear(request, notes);
    job.part_width = request.part_width;
    job.start_number = request.start_number;
    job.warnings = warnings_of(request, job.tracks, catalog);
    require_different_names(job);
    if (request.shard) take_shard(job, *request.shard);
    return job;
}

}  // namespace flumo::job
