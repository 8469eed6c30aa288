#include "base/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <thread>
#include <utility>

extern char** environ;

namespace flumo {
namespace {

// A file in memory, so that neither stream of the child can fill up while the other is read.
class MemoryFile {
  public:
    MemoryFile() : file_(memfd_create("flumo-child", MFD_CLOEXEC)) {}
    ~MemoryFile() { close(file_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    int descriptor() const { return file_; }

    template <typename Container>
    Container contents() const {
        Container bytes(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), {});
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t got =
                pread(file_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
            if (got <= 0) break;
            done += static_cast<std::size_t>(got);
        }
        bytes.resize(done);
        return bytes;
    }

  private:
    int file_;
};

// Streams and signals of the child: a SIGPIPE that this process ignores is not ignored there.
class SpawnSettings {
  public:
    SpawnSettings(int input, int output, int errors, short flags) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
        posix_spawnattr_init(&attributes);
        sigset_t broken_pipe;
        sigemptyset(&broken_pipe);
        sigaddset(&broken_pipe, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &broken_pipe);
        posix_spawnattr_setflags(&attributes, static_cast<short>(POSIX_SPAWN_SETSIGDEF | flags));
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

int exit_status(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

int wait_for(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return exit_status(status);
}

// Nothing when the child still runs at the end of that time.
std::optional<int> wait_until(pid_t child, std::chrono::steady_clock::time_point end) {
    constexpr std::chrono::milliseconds kPause(3);
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= end) return std::nullopt;
        std::this_thread::sleep_for(kPause);
    }
    return exit_status(status);
}

class NullDevice {
  public:
    NullDevice() : file_(open("/dev/null", O_RDWR | O_CLOEXEC)) {}
    ~NullDevice() { close(file_); }
    NullDevice(const NullDevice&) = delete;
    NullDevice& operator=(const NullDevice&) = delete;

    int descriptor() const { return file_; }

  private:
    int file_;
};

// 0 when it cannot be started.
pid_t spawn(const std::vector<std::string>& arguments, const SpawnSettings& settings) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, argv[0], &settings.actions, &settings.attributes, argv.data(), environ);
    return error == 0 ? child : 0;
}

}  // namespace

std::optional<ChildResult> run_child(const std::vector<std::string>& arguments,
                                     std::chrono::milliseconds time_limit) {
    const NullDevice input;
    const MemoryFile output;
    const MemoryFile errors;
    const SpawnSettings settings(input.descriptor(), output.descriptor(), errors.descriptor(), 0);
    const pid_t child = spawn(arguments, settings);
    if (child == 0) return std::nullopt;
    std::optional<int> status;
    if (time_limit.count() > 0) status = wait_until(child, std::chrono::steady_clock::now() + time_limit);
    const bool timed_out = time_limit.count() > 0 && !status;
    if (timed_out) kill(child, SIGKILL);
    if (!status) status = wait_for(child);
    return ChildResult{*status, output.contents<std::vector<uint8_t>>(), errors.contents<std::string>(),
                       timed_out};
}

class FedChild::Errors : public MemoryFile {};

FedChild::FedChild(const std::vector<std::string>& arguments) : errors_(std::make_unique<Errors>()) {
    // A pair of sockets and no pipe: MSG_NOSIGNAL makes a failed write of what would end this process by
    // SIGPIPE.
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::runtime_error("no connection to " + arguments[0]);
    const NullDevice output;
    const SpawnSettings settings(ends[0], output.descriptor(), errors_->descriptor(), POSIX_SPAWN_SETPGROUP);
    process_ = spawn(arguments, settings);
    close(ends[0]);
    input_ = ends[1];
    if (process_ != 0) return;
    close(input_);
    throw std::runtime_error("cannot start " + arguments[0] + "; is it installed?");
}

FedChild::~FedChild() {
    if (process_ == 0) return;
    close(input_);
    kill(process_, SIGKILL);
    wait_for(process_);
}

bool FedChild::write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = send(input_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

ChildResult FedChild::finish() {
    close(input_);
    const int status = wait_for(std::exchange(process_, 0));
    return {status, {}, errors_->contents<std::string>(), false};
}

ReadChild::ReadChild(const std::vector<std::string>& arguments) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe from " + arguments[0]);
    const NullDevice unused;
    const SpawnSettings settings(unused.descriptor(), ends[1], unused.descriptor(), POSIX_SPAWN_SETPGROUP);
    process_ = spawn(arguments, settings);
    close(ends[1]);
    output_ = ends[0];
    if (process_ != 0) return;
    close(output_);
    throw std::runtime_error("cannot start " + arguments[0] + "; is it installed?");
}

ReadChild::~ReadChild() {
    close(output_);
    kill(process_, SIGKILL);
    wait_for(process_);
}

std::size_t ReadChild::read(std::span<std::byte> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = ::read(output_, bytes.data() + done, bytes.size() - done);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

}  // namespace flumo
