// A job's progress as people and tools read it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <thread>

#include "job/progress.h"

namespace flumo::cli {

/// kBar: a line that is drawn again and again, on a terminal. kLines: a line a frame. kJson: a JSON object a
/// line. kOpenJd: the lines that Open Job Description sessions read. kNone: failures
/// only, no warnings.
enum class ProgressForm { kBar, kLines, kJson, kOpenJd, kNone };

/// Reads bar, lines, json, openjd or none. Throws Failure (usage).
ProgressForm parse_progress_form(std::string_view text);

/// A bar where standard error is a terminal that can move its cursor, lines elsewhere.
ProgressForm form_for_standard_error();

/// Columns of the terminal that standard error is; 80 where it is none.
std::size_t terminal_columns();

struct DisplaySettings {
    ProgressForm form = ProgressForm::kLines;
    bool colours = false;  ///< for the bar alone
    /// Takes whole lines, those of the bar also without an end. May throw, which ends the job.
    std::function<void(std::string_view)> write;
    std::function<std::size_t()> columns = terminal_columns;
    /// Called once when the job starts.
    std::function<void()> on_start = [] {};
    /// What to say about a stop that was asked for, such as "press again to stop"; empty as long as none was.
    std::function<std::string()> stop_hint = [] { return std::string(); };
};

/// Writes a job's events in one of the forms. Warnings, failed frames and the answer to a signal are also
/// lines on standard error. While a job runs, a thread redraws the bar and looks for a stop several times a
/// second.
class ProgressDisplay : public job::Observer {
  public:
    explicit ProgressDisplay(DisplaySettings settings);

    void started(const job::ProgressState& state) override;
    void frame_begun(int frame) override;
    void frame_done(const job::FrameEvent& event, const job::ProgressState& state) override;
    void ended(job::Ending ending, const job::ProgressState& state) override;

    /// Something that does not keep the job from running. Before the job only.
    void warn(const std::string& message);
    /// A failure that ends the program. After the job only.
    void give_up(const std::string& why);

  private:
    void tick();
    void tell_stop();
    void draw_bar();
    void say(const std::string& line);

    const DisplaySettings settings_;
    std::mutex mutex_;  ///< guards what follows
    std::condition_variable_any changed_;
    job::ProgressState state_;  ///< at the last event
    std::chrono::steady_clock::time_point told_ = std::chrono::steady_clock::now();
    std::set<int> begun_;  ///< frames that are being rendered or written
    bool is_started_ = false;
    bool stop_told_ = false;
    bool bar_is_drawn_ = false;
    std::jthread ticker_;  ///< last, so that it ends first
};

}  // namespace flumo::cli
