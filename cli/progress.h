// How far a rendering came, for people and for tools.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace flumo::cli {

/// A line that is drawn over and over, on a terminal; lines now and then, anywhere else; a JSON object a
/// line; the lines that Open Job Description sessions listen for; nothing.
enum class ProgressForm { kBar, kLines, kJson, kOpenJd, kNone };

/// Reads bar, lines, json, openjd or none. Throws Failure (usage).
ProgressForm parse_progress_form(std::string_view text);

/// A bar where standard error is a terminal that can move its cursor, lines elsewhere.
ProgressForm form_for_standard_error();

struct ProgressState {
    size_t total = 0;     ///< frames of the job
    size_t rendered = 0;  ///< written by this run
    size_t skipped = 0;   ///< left as they were
    size_t failed = 0;
    std::chrono::duration<double> elapsed{};

    size_t done() const { return rendered + skipped + failed; }
    double percent() const { return total == 0 ? 100.0 : 100.0 * double(done()) / double(total); }
    /// Frames written per second; 0 before the first.
    double rate() const { return elapsed.count() > 0 ? double(rendered) / elapsed.count() : 0; }
    /// At the rate so far; 0 while that is unknown.
    double seconds_left() const { return rate() > 0 ? double(total - done()) / rate() : 0; }
};

/// "42 of 100 frames (42 %), 3.1 frames/s, 0:19 left"
std::string progress_text(const ProgressState& state);

/// Counts and tells. May be called from several threads.
class Progress {
  public:
    using Write = std::function<void(std::string_view)>;

    /// `write` takes whole lines (the bar's also without an end). Colours are for the bar alone.
    Progress(ProgressForm form, bool colours, Write write);

    void start(size_t total);
    void frame_written(int frame, const std::filesystem::path& file);
    void frame_skipped(int frame, const std::filesystem::path& file);
    void frame_failed(int frame, const std::string& why);
    /// How it ended: "done" or "stopped".
    void end(std::string_view how);
    /// A failure that ends the program.
    void give_up(const std::string& why);

    ProgressState state() const;

  private:
    void tell_frame(std::string_view event, int frame, std::string_view key, const std::string& text);
    void tell_people(bool last);

    const ProgressForm form_;
    const bool colours_;
    const Write write_;
    mutable std::mutex mutex_;
    ProgressState state_;
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point told_ = began_;
};

}  // namespace flumo::cli
