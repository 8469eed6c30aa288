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
    if (job.frames.size() == 1 || job.output.has_frame_number()) return;
    throw usage_failure("output " + in_quotes(job.output.text()) + ": " + std::to_string(job.frames.size()) +
                        " frames need a place for the number, such as shot.####.png");
}

}  // namespace

RenderJob make_render_job(const RenderOptions& options, const ControlCatalog& catalog) {
    Scene scene;
    if (!options.scene.empty()) scene = read_scene(options.scene, catalog);
    RenderJob job{.tracks = std::move(scene.tracks), .output = *options.output};
    job.size = options.size.value_or(scene.size.value_or(job.size));
    job.depth = static_cast<host::Depth>(options.depth.value_or(scene.depth.value_or(8)));
    job.frames = options.frames.value_or(scene.frames.value_or(job.frames));
    for (const Assignment& assignment : options.assignments) {
        const Track track = read_assignment(assignment, catalog);
        job.tracks[track.control->index] = track;
    }
    require_different_names(job);
    return job;
}

}  // namespace flumo::cli
