#include "frei0r/work_thread.h"

#include <csignal>

namespace flumo::frei0r {
namespace {

/// A thread that is started meanwhile begins with all signals blocked.
class BlockedSignals {
  public:
    BlockedSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

  private:
    sigset_t before_{};
};

}  // namespace

WorkThread::WorkThread() {
    const BlockedSignals blocked;
    thread_ = std::thread([this] { serve(); });
}

WorkThread::~WorkThread() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void WorkThread::run(const std::function<void()>& work) {
    std::packaged_task<void()> task(work);
    std::future<void> done = task.get_future();
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(task));
    }
    wake_.notify_one();
    done.get();
}

void WorkThread::serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        std::packaged_task<void()> task = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        task();
        lock.lock();
    }
}

}  // namespace flumo::frei0r
