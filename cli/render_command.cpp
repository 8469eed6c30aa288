#include "cli/render_command.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <thread>

#include "cli/look.h"
#include "cli/new_file.h"
#include "cli/picture_sink.h"
#include "cli/pipeline.h"
#include "cli/render_job.h"
#include "cli/scene_text.h"
#include "cli/session.h"
#include "cli/stop_signal.h"
#include "cli/text_list.h"
#include "cli/video_sink.h"

namespace flumo::cli {
namespace {

namespace fs = std::filesystem;

constexpr size_t kMostEncoders = 16;
constexpr size_t kWorldMemory = size_t{1} << 30;

constexpr const char* kShortestExample = R"(flumo render needs to know where the picture goes:

  flumo render -o look.png                  the default look
  flumo render --set NoiseType=voronoi --frames 0-47 -o cells.mp4
  flumo render --help                       everything else
)";

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
    return {ExitStatus::kFrameFailed, "frame " + std::to_string(frame) + ": " + why};
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

Progress make_progress(const RenderOptions& options, const StdoutGuard& output) {
    const ProgressForm form = options.progress.value_or(form_for_standard_error());
    const bool for_tools = form == ProgressForm::kJson || form == ProgressForm::kOpenJd;
    const char* const no_colour = std::getenv("NO_COLOR");
    const bool colours = !no_colour || *no_colour == '\0';
    // Standard output belongs to the frames when they go there.
    if (for_tools && !(options.output && options.output->is_standard_output()))
        return {form, colours, [&output](std::string_view text) { output.write(text); }};
    return {form, colours, [](std::string_view text) {
                std::fwrite(text.data(), 1, text.size(), stderr);
                std::fflush(stderr);
            }};
}

std::unique_ptr<FrameSink> make_sink(const RenderOptions& options, const RenderJob& job,
                                     const SceneText& scene, const StdoutGuard& output) {
    const Existing existing = options.no_clobber ? Existing::kKeep : Existing::kReplace;
    if (job.output.is_pictures()) return std::make_unique<PictureSink>(job, scene, existing);
    if (job.output.is_standard_output())
        return std::make_unique<StreamSink>(job, options.raw.value_or(RawFormat::kY4m), output);
    if (!job.output.is_video()) return std::make_unique<NullSink>();
    const VideoSettings settings{job.size, job.depth, job.rate, existing};
    return std::make_unique<VideoSink>(job.path_of(0), std::get<VideoFormat>(job.output.kind()), settings);
}

// llvmpipe, the software driver of Mesa, looks into the unfinished work of other threads' contexts without a
// lock and now and then crashes over it, as of 22.3. It draws for one context at a time, so nothing is lost.
int render_threads(const RenderOptions& options, const StdoutGuard& output) {
    if (options.render_threads == 1) return 1;
    if (output.captured().find("OpenGL Renderer: llvmpipe") == std::string::npos)
        return options.render_threads;
    std::fputs("flumo: one thread renders, since llvmpipe gains nothing from more and may crash\n", stderr);
    return 1;
}

// As many encoders as cores, since they idle while the driver draws; a stream has one. The worlds bound
// the memory: one for each thread and one that waits, fewer for very large frames.
PipelineShape shape_of(const RenderJob& job, int render_threads) {
    PipelineShape shape;
    shape.render_threads = static_cast<size_t>(render_threads);
    shape.in_order = job.output.is_stream();
    const size_t cores = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, kMostEncoders);
    shape.encoder_threads = shape.in_order ? 1 : cores;
    const size_t frame_bytes = static_cast<size_t>(job.size.width) * static_cast<size_t>(job.size.height) *
                               host::pixel_size(job.depth);
    const size_t wanted = shape.render_threads + shape.encoder_threads + 1;
    shape.worlds = std::clamp(kWorldMemory / frame_bytes, shape.render_threads + 1, wanted);
    return shape;
}

// One rendering from its first to its last frame.
class Rendering {
  public:
    Rendering(const RenderOptions& options, const RenderJob& job, host::Instance& instance, FrameSink& sink,
              Progress& progress)
        : options_(options), job_(job), instance_(instance), sink_(sink), progress_(progress) {}

    ExitStatus run(const PipelineShape& shape) {
        progress_.start(job_.frames.size());
        run_pipeline(shape, {job_.frames.size(), [] { return stop_requested().has_value(); },
                             [this](size_t position, host::World& world) { return render(position, world); },
                             [this](size_t position, const host::World& world) { encode(position, world); }});
        return finish();
    }

  private:
    bool render(size_t position, host::World& world) try {
        const int frame = job_.frames[position];
        if (options_.skip_existing && job_.output.is_pictures() && fs::exists(job_.path_of(position))) {
            progress_.frame_skipped(frame, job_.path_of(position));
            return false;
        }
        render_frame(instance_, job_, frame, world);
        return true;
    } catch (const Failure& failure) {
        if (!options_.keep_going) throw;
        std::fprintf(stderr, "flumo: %s\n", failure.what());
        progress_.frame_failed(job_.frames[position], failure.what());
        return false;
    }

    void encode(size_t position, const host::World& world) {
        sink_.write(position, world);
        progress_.frame_written(job_.frames[position], job_.path_of(position));
    }

    ExitStatus finish() {
        const ProgressState state = progress_.state();
        const auto stop = stop_requested();
        if (state.done() == state.total) sink_.finish();
        progress_.end(stop ? "stopped" : "done");
        if (stop) {
            std::fprintf(stderr, "flumo: stopped by a signal after %zu of %zu frames\n", state.done(),
                         state.total);
            return *stop;
        }
        return state.failed > 0 ? ExitStatus::kFrameFailed : ExitStatus::kDone;
    }

    const RenderOptions& options_;
    const RenderJob& job_;
    host::Instance& instance_;
    FrameSink& sink_;
    Progress& progress_;
};

void refuse_existing(const RenderJob& job) {
    for (size_t i = 0; i < job.frames.size(); ++i) {
        const fs::path path = job.path_of(i);
        if (fs::exists(path))
            throw output_failure("\"" + path.string() + "\" exists, and --no-clobber keeps it");
    }
}

ExitStatus skip_all(const RenderJob& job, Progress& progress) {
    progress.start(job.frames.size());
    for (const int frame : job.frames)
        progress.frame_skipped(frame, job.path_of(0));
    progress.end("done");
    return ExitStatus::kDone;
}

ExitStatus render_job(const RenderOptions& options, const StdoutGuard& output, Progress& progress) {
    Session session(options.module);
    const RenderJob job = make_render_job(options, session.catalog());
    if (job.frames.empty()) return skip_all(job, progress);
    if (options.no_clobber && (job.output.is_pictures() || job.output.is_video())) refuse_existing(job);
    // A video's file appears when it is whole.
    if (options.skip_existing && job.output.is_video() && fs::exists(job.path_of(0)))
        return skip_all(job, progress);
    // A folder that cannot be written is told before the work and not after it.
    if (job.output.is_pictures()) const NewFile probe(job.path_of(0));
    const SceneText scene(job, session);
    const auto instance = session.host().new_instance();
    apply_tracks(*instance, job.tracks, job.depth);
    const auto sink = make_sink(options, job, scene, output);
    return Rendering(options, job, *instance, *sink, progress)
        .run(shape_of(job, render_threads(options, output)));
}

}  // namespace

ExitStatus render(const RenderOptions& options, const StdoutGuard& output) {
    if (!options.output) {
        if (isatty(STDERR_FILENO) == 1) std::fputs(kShortestExample, stderr);
        throw usage_failure("render needs an output file, such as: flumo render -o look.png");
    }
    Progress progress = make_progress(options, output);
    try {
        return render_job(options, output, progress);
    } catch (const std::exception& error) {
        progress.give_up(error.what());
        throw;
    }
}

}  // namespace flumo::cli
