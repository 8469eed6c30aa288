// The effect, set up in a host of its own on a thread of its own.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "frei0r/work_thread.h"
#include "host/host.h"

namespace flumo::frei0r {

/// An editor starts and ends threads as it plays, and the effect keeps an OpenGL context for each thread that
/// it ever drew on. So all its work is done on one thread, and the threads of the program never have a
/// context of the effect. Costs nothing until the first run().
class Effect {
  public:
    Effect() = default;
    /// Sets the effect down, if it was set up. Everything that was made with the host must be gone.
    ~Effect();
    Effect(const Effect&) = delete;
    Effect& operator=(const Effect&) = delete;

    /// Does the work on the effect's thread and returns when it is done; throws what it throws, and Failure
    /// (no OpenGL) without doing it when the effect cannot be set up here. May be called from several
    /// threads.
    void run(const std::function<void(host::Host&)>& work);

  private:
    WorkThread& thread();
    host::Host& started_host();

    std::mutex mutex_;
    std::unique_ptr<WorkThread> thread_;
    // Of the thread alone.
    std::unique_ptr<host::Module> module_;
    std::unique_ptr<host::Host> host_;
    std::string why_not_;
};

}  // namespace flumo::frei0r
