// Other programs: run to their end, or fed while they run.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace flumo {

struct ChildResult {
    int status = 0;               ///< its exit status, 128 + N when signal N ended it
    std::vector<uint8_t> output;  ///< all of its standard output
    std::string errors;           ///< all of its standard error
    bool timed_out = false;       ///< it was ended because its time was over
};

/// Runs the program arguments[0], found by PATH, with no standard input, and waits for its end.
/// Nothing is returned when it cannot be started, as when it is not installed. With a time limit above 0 it
/// is ended (SIGKILL) when that time is over.
std::optional<ChildResult> run_child(const std::vector<std::string>& arguments,
                                     std::chrono::milliseconds time_limit = {});

/// A running program that is fed through its standard input; its standard output leads nowhere. It has a
/// process group of its own, so that Ctrl-C on the terminal reaches only this program, which then decides.
class FedChild {
  public:
    /// Throws std::runtime_error when the program cannot be started.
    explicit FedChild(const std::vector<std::string>& arguments);
    /// Ends the program, if it still runs, and waits for it.
    ~FedChild();
    FedChild(const FedChild&) = delete;
    FedChild& operator=(const FedChild&) = delete;

    /// Writes all bytes, waiting while the program reads. False when it reads no more; no SIGPIPE is raised.
    bool write(std::span<const std::byte> bytes);

    /// Closes its standard input and waits for its end.
    ChildResult finish();

  private:
    class Errors;
    std::unique_ptr<Errors> errors_;
    int input_ = -1;
    pid_t process_ = 0;
};

/// A running program whose standard output is read while it runs; it has no standard input.
class ReadChild {
  public:
    /// Throws std::runtime_error when the program cannot be started.
    explicit ReadChild(const std::vector<std::string>& arguments);
    /// Ends the program, if it still runs, and waits for it.
    ~ReadChild();
    ReadChild(const ReadChild&) = delete;
    ReadChild& operator=(const ReadChild&) = delete;

    /// Fills `bytes`, waiting for the program. Returns how many there were: fewer only at its end.
    std::size_t read(std::span<std::byte> bytes);

  private:
    int output_ = -1;
    pid_t process_ = 0;
};

}  // namespace flumo
