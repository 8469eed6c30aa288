#include "cli/commands/render_command.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/failure.h"
#include "cli/terminal/progress_display.h"
#include "cli/terminal/stop_signal.h"
#include "job/job.h"

namespace flumo::cli {
namespace {

constexpr const char* kShortestExample = R"(flumo render needs to know where the picture goes:

  flumo render -o look.png                  the default look
  flumo render --set NoiseType=voronoi --frames 0-47 -o cells.mp4
  flumo render --help                       everything else
)";

// What a second signal would do, once there was a first.
std::string stop_hint() {
    const auto stop = stop_requested();
    if (!stop) return "";
    return stop == ExitStatus::kInterrupted ? "press again to stop" : "a second signal stops at once";
}

DisplaySettings display_settings(const RenderOptions& options, const StdoutGuard& output) {
    DisplaySettings settings;
    settings.form = options.progress.value_or(form_for_standard_error());
    const char* const no_colour = std::getenv("NO_COLOR");
    settings.colours = !no_colour || *no_colour == '\0';
    settings.on_start = watch_stop_signals;
    settings.stop_hint = stop_hint;
    const bool for_tools = settings.form == ProgressForm::kJson || settings.form == ProgressForm::kOpenJd;
    // Standard output belongs to the frames when they go there.
    if (for_tools && !(options.output && options.output->is_standard_output())) {
        settings.write = [&output](std::string_view text) { output.write(text); };
    } else {
        settings.write = [](std::string_view text) {
            std::fwrite(text.data(), 1, text.size(), stderr);
            std::fflush(stderr);
        };
    }
    return settings;
}

void refuse_what_does_not_fit(const RenderOptions& options) {
    const media::OutputPattern& output = *options.output;
    if (options.raw && !output.is_standard_output()) throw usage_failure("--raw is for -o -");
    if (options.exr_type && !output.is_exr())
        throw usage_failure("--exr-type is for output that ends in .exr");
    if (options.keep_going && output.is_stream())
        throw usage_failure("--keep-going is for pictures: a stream has no place for a missing frame");
    if (options.skip_existing && options.no_clobber)
        throw usage_failure("--skip-existing and --no-clobber contradict each other");
    if (!options.scene.empty() && !options.from.empty())
        throw usage_failure("--scene and --from each name a scene: expected one of them");
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
    if (!options.output) {
        if (isatty(STDERR_FILENO) == 1) std::fputs(kShortestExample, stderr);
        throw usage_failure("render needs an output file, such as: flumo render -o look.png");
    }
    ProgressDisplay display(display_settings(options, output));
    try {
        return render_job(options, output, display);
    } catch (const std::exception& error) {
        display.give_up(error.what());
        throw;
    }
}

}  // namespace flumo::cli
