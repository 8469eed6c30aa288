// The progress of a job as text.
#pragma once

#include <chrono>
#include <string>

#include "job/progress.h"

namespace flumo::cli {

/// Whole seconds, rounded up, as "0:19" or "1:02:03".
std::string clock_text(double seconds);

/// "42 of 100 frames (42 %), 3.1 frames/s, 0:19 left". `waited` is the time since that state: it is
/// taken from what is left, and as long as that is unknown the time since the start is shown instead.
std::string progress_text(const job::ProgressState& state, std::chrono::duration<double> waited = {});

/// The same after a bar of at most 24 characters, in at most `columns` characters; what does not fit is left
/// out from the end. With `colours` the filled part of the bar is green.
std::string bar_text(const job::ProgressState& state, std::chrono::duration<double> waited,
                     std::size_t columns, bool colours);

/// "7 of 7 frames (100 %), 0:04", "2 of 3 frames, 1 failed, 0:04", "all 7 frames were there".
std::string summary_text(const job::ProgressState& state);

/// "frame 12: shot.0012.png, 0.43 s (12 of 96, 0:40 left)".
std::string frame_text(const job::FrameEvent& event, const job::ProgressState& state);

}  // namespace flumo::cli
