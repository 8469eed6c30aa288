#include "job/run.h"

#include <algorithm>
#include <new>
#include <string>
#include <thread>

#include "base/failure.h"
#include "host/instance.h"
#include "job/look.h"
#include "job/parts.h"
#include "job/picture_sink.h"
#include "job/pipeline.h"
#include "media/new_file.h"
#include "media/picture_file.h"
#include "media/stream_sink.h"
#include "media/video_sink.h"
#include "media/world_picture.h"
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
    const PF_RationalScale scale{job.resolution.num, static_cast<A_u_long>(job.resolution.den)};
    request.downsample_x = request.downsample_y = scale;
    request.depth = job.depth;
    request.frame = frame;
    request.rate = job.rate;
    return request;
}

Failure frame_failure(int frame, const std::string& why) {
    return {FailureKind::kFrameFailed, "frame " + std::to_string(frame) + ": " + why};
}

// Runs what renders the frame; what it throws names the frame, but for failures of files.
template <typename Work>
void within_frame(int frame, const Work& work) try {
    work();
} catch (const Failure&) {
    throw;
} catch (const std::bad_alloc&) {
    throw frame_failure(frame, "not enough memory");
} catch (const std::exception& error) {
    throw frame_failure(frame, error.what());
}

void render_whole(host::Instance& instance, const RenderJob& job, int frame, host::World& world) {
    instance.render(request_of(job, frame), world);
    const FrameSize size = job.picture_size();
    if (world.width() != size.width || world.height() != size.height)
        throw frame_failure(frame, "the effect left it empty");
}

// Puts the bands of a frame into one world.
void render_bands(host::Instance& instance, const RenderJob& job, int frame, int width, host::World& world) {
    const FrameSize size = job.picture_size();
    world.reshape({.width = size.width, .height = size.height, .depth = job.depth});
    render_in_parts(instance, request_of(job, frame), size, width, [&world](const host::World& band) {
        for (int y = 0; y < band.height(); ++y)
            std::ranges::copy(band.row(y), world.row(band.shape().origin_y + y).begin());
    });
}

std::unique_ptr<media::FrameSink> make_sink(const RunSettings& settings, const RenderJob& job,
                                            const scene::SceneText& scene) {
    const auto existing = settings.no_clobber ? media::Existing::kKeep : media::Existing::kReplace;
    if (job.output.is_pictures()) return std::make_unique<PictureSink>(job, scene, existing);
    if (job.output.is_standard_output())
        return std::make_unique<media::StreamSink>(settings.raw, job.picture_size(), job.rate,
                                                   settings.write_stream);
    if (!job.output.is_video()) return std::make_unique<media::NullSink>();
    const media::VideoSettings video{job.picture_size(), job.depth, job.rate, existing,
                                     scene.of_frames(job.frames)};
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
    const FrameSize size = job.picture_size();
    const std::size_t frame_bytes = static_cast<std::size_t>(size.width) *
                                    static_cast<std::size_t>(size.height) * host::pixel_size(job.depth);
    const std::size_t wanted = shape.render_threads + shape.encoder_threads + 1;
    shape.worlds = std::clamp(kWorldMemory / frame_bytes, shape.render_threads + 1, wanted);
    return shape;
}

// Whether the file of the frame at this position is there; one that is empty or cut short is not.
bool is_done(const RenderJob& job, std::size_t position) {
    return media::is_whole_file(job.path_of(position), job.output.kind());
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
        if (settings_.skip_existing && job_.output.is_pictures() && is_done(job_, position)) {
            progress_.add({FrameResult::kSkipped, frame, job_.path_of(position)});
            return false;
        }
        progress_.begin(frame);
        return render_frame(position, world);
    } catch (const Failure& failure) {
        if (!settings_.keep_going) throw;
        progress_.add({FrameResult::kFailed, job_.frames[position], {}, failure.what()});
        return false;
    }

    // False for a frame that was written band by band.
    bool render_frame(std::size_t position, host::World& world) {
        const int frame = job_.frames[position];
        const auto width = part_width(job_.picture_size(), job_.part_width);
        const auto* pictures = dynamic_cast<const PictureSink*>(&sink_);
        if (width && pictures) {
            write_bands(*pictures, position, *width);
            return false;
        }
        within_frame(frame, [&] {
            if (width) {
                render_bands(instance_, job_, frame, *width, world);
            } else {
                render_whole(instance_, job_, frame, world);
            }
        });
        return true;
    }

    void write_bands(const PictureSink& pictures, std::size_t position, int width) {
        const int frame = job_.frames[position];
        media::NewPicture file = pictures.begin(position);
        within_frame(frame, [&] {
            render_in_parts(instance_, request_of(job_, frame), job_.picture_size(), width,
                            [&file](const host::World& band) { file.write_rows(media::picture_of(band)); });
        });
        file.finish();
        progress_.add({FrameResult::kWritten, frame, job_.path_of(position)});
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
        if (fs::exists(path)) throw output_failure("\"" + path.string() + "\" exists and is to be kept");
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
            .resolution = job.resolution == Resolution() ? std::nullopt : std::optional(job.resolution),
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
    if (settings.skip_existing && job.output.is_video() && is_done(job, 0)) return skip_all(job, progress);
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
