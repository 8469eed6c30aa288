#include "cli/terminal/stdout_guard.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <iostream>
#include <system_error>

#include "base/failure.h"

namespace flumo::cli {
namespace {

void flush_streams() {
    std::cout.flush();
    std::fflush(stdout);
}

Failure stdout_failure() {
    return output_failure("standard output: " + std::generic_category().message(errno));
}

}  // namespace

StdoutGuard::StdoutGuard()
    : real_stdout_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)),
      memory_(memfd_create("flumo-stdout", MFD_CLOEXEC)) {
    // A caller may have closed standard output; then only write() fails, and only if it is used.
    if (memory_ < 0 || dup2(memory_, STDOUT_FILENO) < 0) throw stdout_failure();
}

StdoutGuard::~StdoutGuard() {
    flush_streams();
    if (real_stdout_ >= 0) {
        dup2(real_stdout_, STDOUT_FILENO);
        close(real_stdout_);
    } else {
        close(STDOUT_FILENO);
    }
    close(memory_);
}

void StdoutGuard::write(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t written = ::write(real_stdout_, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) throw stdout_failure();
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

bool StdoutGuard::is_terminal() const {
    return isatty(real_stdout_) == 1;
}

std::string StdoutGuard::captured() const {
    flush_streams();
    std::string text(static_cast<std::size_t>(lseek(memory_, 0, SEEK_END)), '\0');
    const ssize_t got = pread(memory_, text.data(), text.size(), 0);
    text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return text;
}

}  // namespace flumo::cli
