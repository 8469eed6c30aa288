// A progress display for the commands that render.
#pragma once

#include <optional>

#include "cli/terminal/progress_display.h"
#include "cli/terminal/stdout_guard.h"

namespace flumo::cli {

/// The display's form as given or by what standard error is, colours unless NO_COLOR is set, and signals
/// watched from the start of the job on. Lines for tools go to standard output, or to standard error where
/// `frames_on_stdout`. `output` must outlive the display.
DisplaySettings display_settings(const std::optional<ProgressForm>& form, bool frames_on_stdout,
                                 const StdoutGuard& output);

}  // namespace flumo::cli
