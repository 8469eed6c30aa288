// The progress of a job, as events.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace flumo::job {

struct ProgressState {
    std::size_t total = 0;     ///< frames of the job
    std::size_t rendered = 0;  ///< written by this run
    std::size_t skipped = 0;   ///< left as they were
    std::size_t failed = 0;
    std::chrono::duration<double> elapsed{};

    /// Frames that are there now.
    std::size_t done() const { return rendered + skipped; }
    /// Frames that need no more work.
    std::size_t finished() const { return done() + failed; }
    double percent() const { return total == 0 ? 100.0 : 100.0 * double(finished()) / double(total); }
    /// Frames written per second; nothing before the first.
    std::optional<double> rate() const {
        if (rendered == 0 || !(elapsed.count() > 0)) return std::nullopt;
        return double(rendered) / elapsed.count();
    }
    /// At the rate so far; nothing while that is unknown.
    std::optional<double> seconds_left() const {
        const auto per_second = rate();
        if (!per_second) return std::nullopt;
        return double(total - finished()) / *per_second;
    }
};

enum class FrameResult { kWritten, kSkipped, kFailed };

struct FrameEvent {
    FrameResult result = FrameResult::kWritten;
    int frame = 0;
    std::filesystem::path file{};  ///< of a frame that was written or skipped
    std::string why{};             ///< of a frame that failed, one line
    double seconds = 0;            ///< from its beginning until it was written
};

enum class Ending { kDone, kStopped };

/// Receives the events of a job: one call at a time, from any of the job's threads. `state` counts the event.
class Observer {
  public:
    virtual ~Observer() = default;
    /// All inputs are read; the first frame comes next.
    virtual void started(const ProgressState& state) = 0;
    /// A frame is about to be rendered; frame_done() follows unless an exception ends the job.
    virtual void frame_begun(int frame) = 0;
    virtual void frame_done(const FrameEvent& event, const ProgressState& state) = 0;
    /// Not called after an exception.
    virtual void ended(Ending ending, const ProgressState& state) = 0;

  protected:
    Observer() = default;
    Observer(const Observer&) = default;
    Observer& operator=(const Observer&) = default;
};

/// Counts frames and calls the observer, which must outlive it. May be called from several threads.
class Progress {
  public:
    explicit Progress(Observer& observer) : observer_(observer) {}

    void start(std::size_t total);
    void begin(int frame);
    /// Fills in the seconds of a frame that was started.
    void add(FrameEvent event);
    void end(Ending ending);

    ProgressState state() const;

  private:
    Observer& observer_;
    mutable std::mutex mutex_;
    ProgressState state_;
    std::map<int, std::chrono::steady_clock::time_point> begun_;
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
};

}  // namespace flumo::job
