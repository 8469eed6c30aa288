// Every fault of a command against the table of expectations.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "judge/engine/fault_sweep.h"
#include "tests/faults/effect_fixture.h"
#include "tests/support/caller_context.h"

namespace flumo::test {

/// A command that can be run any number of times.
struct Command {
    std::string name;
    std::function<void()> prepare = [] {};
    /// Calls to the host fail within this alone.
    std::function<PF_Err()> run;
    /// What a run without a failure comes to.
    PF_Err usual = PF_Err_NONE;
    /// Whether the last run did the whole of its work.
    std::function<bool()> complete = [] { return true; };
    /// Gives back what the last run handed out.
    std::function<void()> restore = [] {};
    /// Kinds of calls that end the command in this order whatever fails; suites may be released after them.
    std::vector<host::Callback> chain{};
};

/// Runs commands once for each way in which each of their calls to the host can fail. After each failure: the
/// expected number, nothing kept that is not expected, the caller's GL context, and the next frame.
class Sweep {
  public:
    explicit Sweep(EffectFixture& fixture) : fixture_(fixture) {}
    /// Prints one line for each command.
    ~Sweep();

    void over(const Command& command);

  private:
    struct Tally {
        std::string command;
        size_t faults = 0;
    };

    void expect_usual(const Command& command);
    void try_fault(const Command& command, const judge::Fault& fault);
    void expect_told(std::string_view message, std::optional<host::MisuseKind> misuse);

    EffectFixture& fixture_;
    host::test::CallerContext caller_;
    std::vector<Tally> tallies_;
};

}  // namespace flumo::test
