// Keeps standard output for the program's own text.
#pragma once

#include <string>
#include <string_view>

namespace flumo::cli {

/// The effect prints its driver's version lines on file descriptor 1. For as long as a guard lives,
/// descriptor 1 leads into memory, and what the program itself has to say goes out through write().
/// One guard per process, made before any thread.
class StdoutGuard {
  public:
    /// Throws Failure (unwritable output) when the descriptors cannot be rearranged.
    StdoutGuard();
    ~StdoutGuard();
    StdoutGuard(const StdoutGuard&) = delete;
    StdoutGuard& operator=(const StdoutGuard&) = delete;

    /// Writes all of `text` to the real standard output. Throws Failure (unwritable output).
    void write(std::string_view text) const;

    /// Whether the real standard output is a person's terminal.
    bool is_terminal() const;

    /// Everything that was printed on descriptor 1 since the guard was made.
    std::string captured() const;

  private:
    int real_stdout_;
    int memory_;
};

}  // namespace flumo::cli
