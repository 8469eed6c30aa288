// How far a job came, told as events.
#pragma once

#include <chrono>
#include <filesystem>
#include <mutex>
#include <string>

namespace flumo::job {

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

enum class FrameResult { kWritten, kSkipped, kFailed };

struct FrameEvent {
    FrameResult result = FrameResult::kWritten;
    int frame = 0;
    std::filesystem::path file{};  ///< of a frame that was written or skipped
    std::string why{};             ///< of a frame that failed, one line
};

enum class Ending { kDone, kStopped };

/// Is told how a job advances: one call at a time, from any of the job's threads. `state` counts the event.
class Observer {
  public:
    virtual ~Observer() = default;
    virtual void started(const ProgressState& state) = 0;
    virtual void frame_done(const FrameEvent& event, const ProgressState& state) = 0;
    /// Not called after an exception.
    virtual void ended(Ending ending, const ProgressState& state) = 0;

  protected:
    Observer() = default;
    Observer(const Observer&) = default;
    Observer& operator=(const Observer&) = default;
};

/// Counts frames and tells the observer, which must outlive it. May be called from several threads.
class Progress {
  public:
    explicit Progress(Observer& observer) : observer_(observer) {}

    void start(size_t total);
    void add(const FrameEvent& event);
    void end(Ending ending);

    ProgressState state() const;

  private:
    Observer& observer_;
    mutable std::mutex mutex_;
    ProgressState state_;
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
};

}  // namespace flumo::job
