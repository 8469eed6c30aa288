#include "cli/commands/render_command.h"

#include <unistd.h>

#include <cstdio>
#include <string>

#include "base/failure.h"
#include "cli/commands/scene_command.h"
#include "cli/options/look_options.h"
#include "cli/terminal/job_display.h"
#include "cli/terminal/stop_signal.h"
#include "job/job.h"

namespace flumo::cli {
namespace {

constexpr const char* kShortestExample = R"(flumo render needs to know where the picture goes:

  flumo render -o look.png                  the default look
  flumo render --set NoiseType=voronoi --frames 0-47 -o cells.mp4
  flumo render --help                       everything else
)";

void refuse_what_does_not_fit(const RenderOptions& options) {
    const media::OutputPattern& output = *options.output;
    if (options.raw && !output.is_standard_output()) throw usage_failure("--raw is for -o -");
    if (options.exr_type && !output.is_exr())
        throw usage_failure("--exr-type is for output that ends in .exr");
    if (options.keep_going && output.is_stream())
        throw usage_failure("--keep-going is for pictures: a stream has no place for a missing frame");
    if (options.skip_existing && options.no_clobber)
        throw usage_failure("--skip-existing and --no-clobber contradict each other");
    refuse_contradictions(options);
}

// On llvmpipe, the software driver of Mesa, frames take turns: one that is drawn uses all cores.
int render_threads(const RenderOptions& options, const StdoutGuard& output, ProgressDisplay& display) {
    if (options.render_threads == 1) return 1;
    if (output.captured().find("OpenGL Renderer: llvmpipe") == std::string::npos)
        return options.render_threads;
    display.warn("one thread renders, since llvmpipe gains nothing from more");
    return 1;
}

void write_stream(const StdoutGuard& output, std::string_view bytes) {
    if (output.is_terminal())
        throw output_failure(
            "standard output is a terminal, which shows no raw frames; pipe it to a program");
    output.write(bytes);
}

ExitStatus render_job(const RenderOptions& options, const StdoutGuard& output, ProgressDisplay& display) {
    refuse_what_does_not_fit(options);
    job::Session session(options.module);
    const job::RenderJob job = job::make_render_job(options, session.catalog());
    for (const std::string& warning : job.warnings)
        display.warn(warning);
    const job::RunSettings settings{
        .render_threads = render_threads(options, output, display),
        .skip_existing = options.skip_existing,
        .no_clobber = options.no_clobber,
        .make_folders = options.make_folders,
        .keep_going = options.keep_going,
        .raw = options.raw.value_or(media::RawFormat::kY4m),
        .write_stream = [&output](std::string_view bytes) { write_stream(output, bytes); },
        .stop = [] { return stop_requested().has_value(); },
    };
    const job::RunResult result = job::run_job(session, job, settings, display);
    const auto stop = stop_requested();
    if (stop && result.ending == job::Ending::kStopped) {
        std::fprintf(stderr, "flumo: stopped by a signal after %zu of %zu frames\n", result.progress.done(),
                     result.progress.total);
        return *stop;
    }
    return result.progress.failed > 0 ? ExitStatus::kFrameFailed : ExitStatus::kDone;
}

}  // namespace

ExitStatus render(const RenderOptions& options, const StdoutGuard& output) {
    if (options.print_scene)
        return write_scene({.request = static_cast<const job::RenderRequest&>(options),
                            .output = {},
                            .module = options.module},
                           output);
    if (!options.output) {
        if (isatty(STDERR_FILENO) == 1) std::fputs(kShortestExample, stderr);
        throw usage_failure("render needs an output file, such as: flumo render -o look.png");
    }
    const bool frames_on_stdout = options.output->is_standard_output();
    ProgressDisplay display(display_settings(options.progress, frames_on_stdout, output));
    try {
        return render_job(options, output, display);
    } catch (const std::exception& error) {
        display.give_up(error.what());
        throw;
    }
}

}  // namespace flumo::cli
