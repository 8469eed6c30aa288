// Plays a module through the cases, each in a process of its own, and collects what they find. A module that
// ends its process or does not return is a finding.
//
//   Judge judge(subject, launch);
//   for (const Case* each : judge.cases_up_to(3)) report(judge.play(*each, {}));
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "judge/cases/case_table.h"
#include "judge/engine/finding.h"
#include "judge/engine/subject.h"

namespace flumo::judge {

/// How a process ended in which a case was played.
struct ChildEnd {
    /// The lines of the CaseContext.
    std::string output;
    std::string errors;
    /// Exit status, 128 + N when signal N ended it.
    int status = 0;
    bool timed_out = false;
};

/// Plays one case in another process and waits for its end.
using Launch = std::function<ChildEnd(const Case&, const StepChoice&)>;

struct CaseResult {
    const Case* played = nullptr;
    int steps = 0;
    /// Why the case does not apply; empty when it was played.
    std::string skipped{};
    std::vector<Finding> findings{};
    std::vector<Finding> notes{};

    /// Whether it failed before its first step, so that cases of higher levels cannot run.
    bool failed_in_set_up() const;
};

class Judge {
  public:
    Judge(Subject subject, Launch launch) : subject_(std::move(subject)), launch_(std::move(launch)) {}

    /// A Windows module is read and not played here: one case.
    std::vector<const Case*> cases_up_to(int level) const;
    /// Continues after a step that ended the process, a few times.
    CaseResult play(const Case& played, StepChoice choice) const;

  private:
    Subject subject_;
    Launch launch_;
};

/// Whether the case was played to its end and never came to the one step that was chosen.
bool lacks_step(const CaseResult& result, const StepChoice& choice);

/// What "CASE" or "CASE:STEP" names. Nothing for a case that does not exist.
struct Place {
    const Case* played = nullptr;
    StepChoice choice;
};
std::optional<Place> find_place(const std::string& text);

}  // namespace flumo::judge
