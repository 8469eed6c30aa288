#include "job/run.h"

#include <algorithm>
#include <new>
#include <string>
#include <thread>

#include "base/failure.h"
#include "host/instance.h"
#include "job/look.h"
#include "job/picture_sink.h"
#include "job/pipeline.h"
#include "media/new_file.h"
#include "media/stream_sink.h"
#include "media/video_sink.h"
#include "scene/scene_text.h"

namespace flumo::job {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostEncoders = 16;
constexpr std::size_t kWorldMemory = std::size_t{1} << 30;

host::FrameRequest request_of(const RenderJob& job, int frame) {
    host::FrameRequest request;
    request.width = job.size.width;
    request.height = job.size.height;
    request.depth = job.depth;
    request.frame = frame;
    request.rate = job.rate;
    return request;
}

Failure frame_failure(int frame, const std::string& why) {
    return {FailureKind::kFrameFailed, "frame " + std::to_string(frame) + ": " + why};
}

void render_frame(host::Instance& instance, const RenderJob& job, int frame, host::World& world) try {
    instance.render(request_of(job, frame), world);
    if (world.width() != job.size.width || world.height() != job.size.height)
        throw frame_failure(frame, "the effect left it empty");
} catch (const Failure&) {
    throw;
} catch (const std::bad_alloc&) {
    throw frame_failure(frame, "not enough memory");
} catch (const std::exception& error) {
    throw frame_failure(frame, error.what());
}

std::unique_ptr<media::FrameSink> make_sink(const RunSettings& settings, const RenderJob& job,
                                            const scene::SceneText& scene) {
    const auto existing = settings.no_clobber ? media::Existing::kKeep : media::Existing::kReplace;
    if (job.output.is_pictures()) return std::make_unique<PictureSink>(job, scene, existing);
    if (job.output.is_standard_output())
        return std::make_unique<media::StreamSink>(settings.raw, job.size, job.rate, settings.write_stream);
    if (!job.output.is_video()) return std::make_unique<media::NullSink>();
    const media::VideoSettings video{job.size, job.depth, job.rate, existing};
    return std::make_unique<media::VideoSink>(job.path_of(0), std::get<media::VideoFormat>(job.output.kind()),
                                              video);
}

// As many encoders as cores, since they idle while the driver draws; a stream has one. The worlds bound
// the memory: one for each thread and one that waits, fewer for very large frames.
PipelineShape shape_of(const RenderJob& job, int render_threads) {
    PipelineShape shape;
    shape.render_threads = static_cast<std::size_t>(render_threads);
    shape.in_order = job.output.is_stream();
    const std::size_t cores = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostEncoders);
    shape.encoder_threads = shape.in_order ? 1 : cores;
    const std::size_t frame_bytes = static_cast<std::size_t>(job.size.width) *
                                    static_cast<std::size_t>(job.size.height) * host::pixel_size(job.depth);
    const std::size_t wanted = shape.render_threads + shape.encoder_threads + 1;
    shape.worlds = std::clamp(kWorldMemory / frame_bytes, shape.render_threads + 1, wanted);
    return shape;
}

// The frames through the pipeline, with their events.
class Rendering {
  public:
    Rendering(const RunSettings& settings, const RenderJob& job, host::Instance& instance,
              media::FrameSink& sink, Progress& progress)
        : settings_(settings), job_(job), instance_(instance), sink_(sink), progress_(progress) {}

    RunResult run(const PipelineShape& shape) {
        run_pipeline(shape,
                     {job_.frames.size(), [this] { return is_stopped(); },
                      [this](std::size_t position, host::World& world) { return render(position, world); },
                      [this](std::size_t position, const host::World& world) { encode(position, world); }});
        return finish();
    }

  private:
    bool is_stopped() const { return settings_.stop && settings_.stop(); }

    bool render(std::size_t position, host::World& world) try {
        const int frame = job_.frames[position];
        if (settings_.skip_existing && job_.output.is_pictures() && fs::exists(job_.path_of(position))) {
            progress_.add({FrameResult::kSkipped, frame, job_.path_of(position)});
            return false;
        }
        progress_.begin(frame);
        render_frame(instance_, job_, frame, world);
        return true;
    } catch (const Failure& failure) {
        if (!settings_.keep_going) throw;
        progress_.add({FrameResult::kFailed, job_.frames[position], {}, failure.what()});
        return false;
    }

    void encode(std::size_t position, const host::World& world) {
        sink_.write(position, world);
        progress_.add({FrameResult::kWritten, job_.frames[position], job_.path_of(position)});
    }

    RunResult finish() {
        const Ending ending = is_stopped() ? Ending::kStopped : Ending::kDone;
        const ProgressState state = progress_.state();
        if (state.finished() == state.total) sink_.finish();
        progress_.end(ending);
        return {state, ending};
    }

    const RunSettings& settings_;
    const RenderJob& job_;
    host::Instance& instance_;
    media::FrameSink& sink_;
    Progress& progress_;
};

void refuse_existing(const RenderJob& job) {
    for (std::size_t i = 0; i < job.frames.size(); ++i) {
        const fs::path path = job.path_of(i);
        if (fs::exists(path))
            throw output_failure("\"" + path.string() + "\" exists, and --no-clobber keeps it");
    }
}

void make_folders(const RenderJob& job) {
    if (!job.output.is_pictures() && !job.output.is_video()) return;
    for (std::size_t i = 0; i < job.frames.size(); ++i) {
        const fs::path folder = job.path_of(i).parent_path();
        std::error_code error;
        if (!folder.empty()) fs::create_directories(folder, error);
        if (error)
            throw output_failure("cannot make the folder \"" + folder.string() + "\": " + error.message());
    }
}

RunResult skip_all(const RenderJob& job, Progress& progress) {
    progress.start(job.frames.size());
    for (const int frame : job.frames)
        progress.add({FrameResult::kSkipped, frame, job.path_of(0)});
    progress.end(Ending::kDone);
    return {progress.state(), Ending::kDone};
}

scene::Scene scene_of(const RenderJob& job) {
    return {.description = {},
            .size = job.size,
            .depth = static_cast<int>(job.depth),
            .frames = {},
            .rate = job.rate,
            .tracks = job.tracks};
}

}  // namespace

RunResult run_job(Session& session, const RenderJob& job, const RunSettings& settings, Observer& observer) {
    Progress progress(observer);
    if (job.frames.empty()) return skip_all(job, progress);
    if (settings.make_folders) make_folders(job);
    if (settings.no_clobber && (job.output.is_pictures() || job.output.is_video())) refuse_existing(job);
    // A video's file appears when it is whole.
    if (settings.skip_existing && job.output.is_video() && fs::exists(job.path_of(0)))
        return skip_all(job, progress);
    // Reports a folder that cannot be written before the work.
    if (job.output.is_pictures()) const media::NewFile probe(job.path_of(0));
    const scene::SceneText scene(scene_of(job), session.catalog(), session.host());
    const auto instance = session.host().new_instance();
    apply_tracks(*instance, job.tracks, job.depth);
    progress.start(job.frames.size());
    const auto sink = make_sink(settings, job, scene);
    return Rendering(settings, job, *instance, *sink, progress).run(shape_of(job, settings.render_threads));
}

}  // namespace flumo::job
