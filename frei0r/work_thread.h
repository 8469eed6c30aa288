// A thread that does one piece of work at a time.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

namespace flumo::frei0r {

/// Takes no signals: those are for the threads of the program.
class WorkThread {
  public:
    WorkThread();
    /// Does what is still to be done, then ends the thread.
    ~WorkThread();
    WorkThread(const WorkThread&) = delete;
    WorkThread& operator=(const WorkThread&) = delete;

    /// Returns once the work is done, and throws what it throws. May be called from several threads, not from
    /// the work itself.
    void run(const std::function<void()>& work);

  private:
    void serve();

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::packaged_task<void()>> waiting_;
    bool ending_ = false;
    std::thread thread_;
};

}  // namespace flumo::frei0r
