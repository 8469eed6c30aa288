#include "cli/terminal/job_display.h"

#include <cstdio>
#include <cstdlib>

#include "cli/terminal/stop_signal.h"

namespace flumo::cli {
namespace {

// What a second signal would do, once there was a first.
std::string stop_hint() {
    const auto stop = stop_requested();
    if (!stop) return "";
    return stop == ExitStatus::kInterrupted ? "press again to stop" : "a second signal stops at once";
}

}  // namespace

DisplaySettings display_settings(const std::optional<ProgressForm>& form, bool frames_on_stdout,
                                 const StdoutGuard& output) {
    DisplaySettings settings;
    settings.form = form.value_or(form_for_standard_error());
    const char* const no_colour = std::getenv("NO_COLOR");
    settings.colours = !no_colour || *no_colour == '\0';
    settings.on_start = watch_stop_signals;
    settings.stop_hint = stop_hint;
    const bool for_tools = settings.form == ProgressForm::kJson || settings.form == ProgressForm::kOpenJd;
    if (for_tools && !frames_on_stdout) {
        settings.write = [&output](std::string_view text) { output.write(text); };
    } else {
        settings.write = [](std::string_view text) {
            std::fwrite(text.data(), 1, text.size(), stderr);
            std::fflush(stderr);
        };
    }
    return settings;
}

}  // namespace flumo::cli
