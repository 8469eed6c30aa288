#include "cli/render_job.h"

#include "cli/exit_status.h"
#include "cli/scene.h"
#include "cli/text_list.h"

namespace flumo::cli {
namespace {

std::string as_written(const Assignment& assignment) {
    if (assignment.option.starts_with("--layer")) return assignment.option;
    return assignment.option + " " + assignment.id;
}

Track read_assignment(const Assignment& assignment, const ControlCatalog& catalog) try {
    const Control& control = catalog.find(assignment.id);
    if (assignment.option == "--gradient" && control.kind != ControlKind::kArbitrary) {
        throw usage_failure("this control is no gradient; Gradient and LinesGradient are");
    }
    return {&control, {{0, parse_control_value(control, assignment.value)}}};
} catch (const Failure& failure) {
    throw Failure(failure.status(), as_written(assignment) + ": " + failure.what());
}

void require_different_names(const RenderJob& job) {
    if (job.frames.size() <= 1 || !job.output.is_pictures() || job.output.has_frame_number()) return;
    throw usage_failure("output " + in_quotes(job.output.text()) + ": " + std::to_string(job.frames.size()) +
                        " frames need a place for the number, such as shot.####.png");
}

// A frame's own scene, and its sample type.
Scene scene_from_exr(const std::filesystem::path& path, ExrType& type, const ControlCatalog& catalog) {
    ExrNotes notes;
    try {
        notes = read_exr_notes(path);
    } catch (const std::exception& error) {
        throw input_failure("cannot read \"" + path.string() + "\": " + error.what());
    }
    if (notes.scene.empty()) throw input_failure(path.string() + ": no scene of flumo in its header");
    type = notes.type;
    return parse_scene(notes.scene, path, catalog);
}

Scene scene_of(const RenderOptions& options, ExrType& type, const ControlCatalog& catalog) {
    if (!options.scene.empty() && !options.from.empty())
        throw usage_failure("--scene and --from each name a scene: expected one of them");
    if (!options.from.empty()) return scene_from_exr(options.from, type, catalog);
    return options.scene.empty() ? Scene() : read_scene(options.scene, catalog);
}

void refuse_what_does_not_fit(const RenderOptions& options) {
    const OutputPattern& output = *options.output;
    if (options.raw && !output.is_standard_output()) throw usage_failure("--raw is for -o -");
    if (options.keep_going && output.is_stream())
        throw usage_failure("--keep-going is for pictures: a stream has no place for a missing frame");
    if (options.skip_existing && options.no_clobber)
        throw usage_failure("--skip-existing and --no-clobber contradict each other");
}

// Numbers count through the whole list, so that shards do not meet.
void take_shard(RenderJob& job, const Shard& shard) {
    const ShardRange range = range_of(shard, job.frames.size());
    job.frames = std::vector<int>(job.frames.begin() + static_cast<std::ptrdiff_t>(range.begin),
                                  job.frames.begin() + static_cast<std::ptrdiff_t>(range.end));
    if (job.start_number) *job.start_number += static_cast<int>(range.begin);
}

}  // namespace

std::filesystem::path RenderJob::path_of(size_t position) const {
    return output.path_of(start_number ? *start_number + static_cast<int>(position) : frames[position]);
}

RenderJob make_render_job(const RenderOptions& options, const ControlCatalog& catalog) {
    refuse_what_does_not_fit(options);
    ExrType type = ExrType::kFloat;
    Scene scene = scene_of(options, type, catalog);
    RenderJob job{.tracks = std::move(scene.tracks), .output = *options.output};
    job.size = options.size.value_or(scene.size.value_or(job.size));
    job.depth = static_cast<host::Depth>(options.depth.value_or(scene.depth.value_or(8)));
    job.frames = options.frames.value_or(scene.frames.value_or(job.frames));
    job.rate = options.rate.value_or(scene.rate.value_or(job.rate));
    job.exr_type = options.exr_type.value_or(type);
    job.start_number = options.start_number;
    for (const Assignment& assignment : options.assignments) {
        const Track track = read_assignment(assignment, catalog);
        job.tracks[track.control->index] = track;
    }
    require_different_names(job);
    if (options.shard) take_shard(job, *options.shard);
    return job;
}

}  // namespace flumo::cli
