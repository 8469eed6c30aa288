#include "cli/terminal/stop_signal.h"

#include <csignal>

namespace flumo::cli {
namespace {

constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP};

// A handler can reach nothing but a global.
volatile std::sig_atomic_t stop_signal = 0;

void remember(int signal) {
    stop_signal = signal;
    for (const int each : kStopSignals)
        std::signal(each, SIG_DFL);
}

}  // namespace

void ignore_write_signals() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void watch_stop_signals() {
    struct sigaction action = {};
    action.sa_handler = remember;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : kStopSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
    }
}

std::optional<ExitStatus> stop_requested() {
    switch (stop_signal) {
        case 0:
            return std::nullopt;
        case SIGINT:
            return ExitStatus::kInterrupted;
        default:
            return ExitStatus::kTerminated;
    }
}

}  // namespace flumo::cli
