#include "cli/terminal/stop_signal.h"

#include <csignal>

namespace flumo::cli {
namespace {

// A handler can reach nothing but a global.
volatile std::sig_atomic_t stop_signal = 0;

void remember(int signal) {
    stop_signal = signal;
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

}  // namespace

void watch_stop_signals() {
    struct sigaction action = {};
    action.sa_handler = remember;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    // A file beyond the limit of its size is an error like a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
}

std::optional<ExitStatus> stop_requested() {
    switch (stop_signal) {
        case SIGINT:
            return ExitStatus::kInterrupted;
        case SIGTERM:
            return ExitStatus::kTerminated;
        default:
            return std::nullopt;
    }
}

}  // namespace flumo::cli
