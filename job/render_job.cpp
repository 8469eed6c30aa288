#include "job/render_job.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text_list.h"
#include "scene/control_needs.h"
#include "scene/scene.h"

namespace flumo::job {
namespace {

std::string as_written(const Assignment& assignment) {
    if (assignment.option.starts_with("--layer")) return assignment.option;
    return assignment.option + " " + assignment.id;
}

scene::Track read_assignment(const Assignment& assignment, const scene::ControlCatalog& catalog) try {
    const scene::Control& control = catalog.find(assignment.id);
    if (assignment.option == "--gradient" && control.kind != scene::ControlKind::kArbitrary) {
        throw usage_failure("this control is no gradient; Gradient and LinesGradient are");
    }
    return {&control, {{0, scene::parse_control_value(control, assignment.value)}}};
} catch (const Failure& failure) {
    throw Failure(failure.kind(), as_written(assignment) + ": " + failure.what());
}

void require_different_names(const RenderJob& job) {
    if (job.frames.size() <= 1 || !job.output.is_pictures() || job.output.has_frame_number()) return;
    throw usage_failure("output " + in_quotes(job.output.text()) + ": " + std::to_string(job.frames.size()) +
                        " frames need a place for the number, such as shot.####.png");
}

// A frame's own scene, and its sample type.
scene::Scene scene_from_exr(const std::filesystem::path& path, media::ExrType& type,
                            const scene::ControlCatalog& catalog) {
    media::ExrNotes notes;
    try {
        notes = media::read_exr_notes(path);
    } catch (const std::exception& error) {
        throw input_failure("cannot read \"" + path.string() + "\": " + error.what());
    }
    if (notes.scene.empty()) throw input_failure(path.string() + ": no scene of flumo in its header");
    type = notes.type;
    return scene::parse_scene(notes.scene, path, catalog);
}

scene::Scene scene_of(const RenderRequest& request, media::ExrType& type,
                      const scene::ControlCatalog& catalog) {
    if (!request.from.empty()) return scene_from_exr(request.from, type, catalog);
    return request.scene.empty() ? scene::Scene() : scene::read_scene(request.scene, catalog);
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

// Numbers count through the whole list, so that shards do not meet.
void take_shard(RenderJob& job, const Shard& shard) {
    const ShardRange range = range_of(shard, job.frames.size());
    job.frames = std::vector<int>(job.frames.begin() + static_cast<std::ptrdiff_t>(range.begin),
                                  job.frames.begin() + static_cast<std::ptrdiff_t>(range.end));
    if (job.start_number) *job.start_number += static_cast<int>(range.begin);
}

}  // namespace

std::filesystem::path RenderJob::path_of(std::size_t position) const {
    return output.path_of(start_number ? *start_number + static_cast<int>(position) : frames[position]);
}

RenderJob make_render_job(const RenderRequest& request, const scene::ControlCatalog& catalog) {
    media::ExrType type = media::ExrType::kFloat;
    scene::Scene scene = scene_of(request, type, catalog);
    RenderJob job{.tracks = std::move(scene.tracks), .output = *request.output};
    job.size = request.size.value_or(scene.size.value_or(job.size));
    job.depth = static_cast<host::Depth>(request.depth.value_or(scene.depth.value_or(8)));
    job.frames = request.frames.value_or(scene.frames.value_or(job.frames));
    job.rate = request.rate.value_or(scene.rate.value_or(job.rate));
    job.exr_type = request.exr_type.value_or(type);
    job.start_number = request.start_number;
    for (const Assignment& assignment : request.assignments) {
        const scene::Track track = read_assignment(assignment, catalog);
        job.tracks[track.control->index] = track;
    }
    job.warnings = warnings_of(request, job.tracks, catalog);
    require_different_names(job);
    if (request.shard) take_shard(job, *request.shard);
    return job;
}

}  // namespace flumo::job
