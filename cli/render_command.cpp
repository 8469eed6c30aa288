#include "cli/render_command.h"

#include <cstdio>
#include <new>
#include <string>

#include "cli/look.h"
#include "cli/new_file.h"
#include "cli/picture_file.h"
#include "cli/render_job.h"
#include "cli/session.h"
#include "cli/stop_signal.h"
#include "cli/world_picture.h"

namespace flumo::cli {
namespace {

host::FrameRequest request_of(const RenderJob& job, int frame) {
    host::FrameRequest request;
    request.width = job.size.width;
    request.height = job.size.height;
    request.depth = job.depth;
    request.frame = frame;
    return request;
}

Failure frame_failure(int frame, const std::string& why) {
    return {ExitStatus::kFrameFailed, "frame " + std::to_string(frame) + ": " + why};
}

// `world` keeps its memory from frame to frame.
void render_frame(host::Instance& instance, const RenderJob& job, int frame, host::World& world) try {
    instance.render(request_of(job, frame), world);
} catch (const host::HostError& error) {
    throw frame_failure(frame, error.what());
} catch (const std::bad_alloc&) {
    throw frame_failure(frame, "not enough memory");
}

ExitStatus stopped(ExitStatus status, size_t done, size_t all) {
    std::fprintf(stderr, "flumo: stopped by a signal after %zu of %zu frames\n", done, all);
    return status;
}

ExitStatus render_frames(host::Instance& instance, const RenderJob& job) {
    host::World world;
    for (size_t i = 0; i < job.frames.size(); ++i) {
        if (const auto stop = stop_requested()) return stopped(*stop, i, job.frames.size());
        render_frame(instance, job, job.frames[i], world);
        write_picture(job.output.path_of(job.frames[i]), job.output.format(), picture_of(world));
    }
    const auto stop = stop_requested();
    return stop ? stopped(*stop, job.frames.size(), job.frames.size()) : ExitStatus::kDone;
}

}  // namespace

ExitStatus render(const RenderOptions& options) {
    if (!options.output)
        throw usage_failure("render needs an output file, such as: flumo render -o look.png");
    Session session(options.module);
    const RenderJob job = make_render_job(options, session.catalog());
    // A folder that cannot be written is told before the work and not after it.
    { const NewFile probe(job.output.path_of(job.frames.front())); }
    const auto instance = session.host().new_instance();
    apply_tracks(*instance, job.tracks, job.depth);
    return render_frames(*instance, job);
}

}  // namespace flumo::cli
