// How far a rendering came, as people and tools read it.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "job/progress.h"

namespace flumo::cli {

/// A line that is drawn over and over, on a terminal; lines now and then, anywhere else; a JSON object a
/// line; the lines that Open Job Description sessions listen for; nothing.
enum class ProgressForm { kBar, kLines, kJson, kOpenJd, kNone };

/// Reads bar, lines, json, openjd or none. Throws Failure (usage).
ProgressForm parse_progress_form(std::string_view text);

/// A bar where standard error is a terminal that can move its cursor, lines elsewhere.
ProgressForm form_for_standard_error();

/// "42 of 100 frames (42 %), 3.1 frames/s, 0:19 left"
std::string progress_text(const job::ProgressState& state);

/// Writes a job's events in one of the forms. A frame that fails also gets a line on standard error.
class ProgressDisplay : public job::Observer {
  public:
    using Write = std::function<void(std::string_view)>;

    /// `write` takes whole lines (the bar's also without an end). Colours are for the bar alone.
    ProgressDisplay(ProgressForm form, bool colours, Write write);

    void started(const job::ProgressState& state) override;
    void frame_done(const job::FrameEvent& event, const job::ProgressState& state) override;
    void ended(job::Ending ending, const job::ProgressState& state) override;
    /// A failure that ends the program. After the job only.
    void give_up(const std::string& why);

  private:
    void tell_people(bool last);

    ProgressForm form_;
    bool colours_;
    Write write_;
    job::ProgressState state_;  ///< at the last event
    std::chrono::steady_clock::time_point told_ = std::chrono::steady_clock::now();
};

}  // namespace flumo::cli
