#include "job/progress.h"

namespace flumo::job {

void Progress::start(std::size_t total) {
    const std::lock_guard lock(mutex_);
    state_.total = total;
    began_ = std::chrono::steady_clock::now();
    observer_.started(state_);
}

void Progress::begin(int frame) {
    const std::lock_guard lock(mutex_);
    begun_[frame] = std::chrono::steady_clock::now();
    observer_.frame_begun(frame);
}

void Progress::add(FrameEvent event) {
    const std::lock_guard lock(mutex_);
    const auto now = std::chrono::steady_clock::now();
    if (const auto begun = begun_.extract(event.frame))
        event.seconds = std::chrono::duration<double>(now - begun.mapped()).count();
    if (event.result == FrameResult::kWritten) ++state_.rendered;
    if (event.result == FrameResult::kSkipped) ++state_.skipped;
    if (event.result == FrameResult::kFailed) ++state_.failed;
    state_.elapsed = now - began_;
    observer_.frame_done(event, state_);
}

void Progress::end(Ending ending) {
    const std::lock_guard lock(mutex_);
    state_.elapsed = std::chrono::steady_clock::now() - began_;
    observer_.ended(ending, state_);
}

ProgressState Progress::state() const {
    const std::lock_guard lock(mutex_);
    return state_;
}

}  // namespace flumo::job
