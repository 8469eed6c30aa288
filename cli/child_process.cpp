#include "cli/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

extern char** environ;

namespace flumo::cli {
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
        Container bytes(static_cast<size_t>(lseek(file_, 0, SEEK_END)), {});
        size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t got =
                pread(file_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
            if (got <= 0) break;
            done += static_cast<size_t>(got);
        }
        bytes.resize(done);
        return bytes;
    }

  private:
    int file_;
};

// Streams and signals of the child: our own ignored SIGPIPE is not handed down.
class SpawnSettings {
  public:
    SpawnSettings(int output, int errors) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
        posix_spawnattr_init(&attributes);
        sigset_t broken_pipe;
        sigemptyset(&broken_pipe);
        sigaddset(&broken_pipe, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &broken_pipe);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
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

int wait_for(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

std::optional<ChildResult> run_child(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    const MemoryFile output;
    const MemoryFile errors;
    const SpawnSettings settings(output.descriptor(), errors.descriptor());
    pid_t child = 0;
    if (posix_spawnp(&child, argv[0], &settings.actions, &settings.attributes, argv.data(), environ) != 0) {
        return std::nullopt;
    }
    const int status = wait_for(child);
    return ChildResult{status, output.contents<std::vector<uint8_t>>(), errors.contents<std::string>()};
}

}  // namespace flumo::cli
