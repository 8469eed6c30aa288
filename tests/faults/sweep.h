// The one loop over a command's calls to its host.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/faults/stage.h"
#include "tests/support/caller_context.h"

namespace flumo::test {

/// A command that can be run any number of times. Only what `run` does is counted and failed.
struct Command {
    std::string name;
    std::function<void()> prepare = [] {};
    std::function<PF_Err()> run;
    /// What a run without a failure comes to.
    PF_Err usual = PF_Err_NONE;
    /// Whether the last run did the whole of its work.
    std::function<bool()> complete = [] { return true; };
    /// Gives back what the last run handed out.
    std::function<void()> tidy = [] {};
    /// Kinds of calls that end the command in this order whatever fails; suites may be released behind them.
    std::vector<host::Callback> chain{};
};

/// Runs commands once to count their calls and once more for each way in which each of these calls can fail.
/// After each failure: the promised number, nothing kept that is not promised, the caller's GL context, and
/// the next frame.
class Sweep {
  public:
    explicit Sweep(Stage& stage) : stage_(stage) {}
    /// One line for each command.
    ~Sweep();

    void over(const Command& command);

  private:
    struct Tally {
        std::string command;
        std::size_t calls = 0;
        int faults = 0;
    };
    struct Fault;

    std::vector<host::Callback> count_calls(const Command& command);
    void try_fault(const Command& command, const Fault& fault);
    std::vector<host::Callback> run_with(const Command& command, const Fault& fault, PF_Err expected);
    void expect_told(std::string_view message, std::string_view misuse);

    Stage& stage_;
    host::test::CallerContext caller_;
    std::vector<Tally> tallies_;
};

}  // namespace flumo::test
