// The fault sweep: the calls that an effect makes to its host during one operation are recorded, then the
// operation is repeated with each of these calls failing once.
//
//   for (const Fault& fault : faults_of(host, operation)) {
//       const FaultyRun run = run_with(host, operation, fault, 7321);
//       ...                                        // judge the result
//       operation.restore();
//   }
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/host.h"
#include "judge/engine/case_context.h"

namespace flumo::judge {

/// The result of an operation.
struct Answer {
    /// The effect reported an error, or visibly gave nothing.
    bool refused = false;
    /// All results, to compare with; the error's text after a HostError.
    std::string result{};
    PF_Err error = PF_Err_NONE;
};

/// Something that an effect does for its host and that can be repeated. Calls are recorded and fail within
/// `run` alone; a HostError that leaves it is a refusal.
struct Operation {
    std::string name;
    std::function<Answer()> run;
    std::function<void()> prepare = [] {};
    /// Gives back what `run` has acquired.
    std::function<void()> restore = [] {};
    /// Called after each run with a failure, before `restore`.
    std::function<void()> judge = [] {};
};

/// One call of an operation to its host, and how it fails.
struct Fault {
    /// Among all calls of the operation, from 0.
    size_t ordinal;
    host::Callback call;
    /// Among the calls of the same kind, from 0; `of` is their number.
    int nth;
    int of;
    host::FaultMode mode;
};

struct FaultyRun {
    Answer answer;
    /// False when the operation made fewer calls than before.
    bool happened;
    std::vector<host::Callback> calls;
};

/// Prepares and runs the operation, without restoring.
Answer run(const Operation& operation);
/// Runs the operation once, whole, and lists every way in which each of its calls can fail.
std::vector<Fault> faults_of(host::Host& host, const Operation& operation);
/// Prepares and runs the operation with one failure, which answers with `error_number`. Does not restore.
FaultyRun run_with(host::Host& host, const Operation& operation, const Fault& fault, PF_Err error_number);

/// Judges an operation of any effect, a step for each fault. Afterwards: the effect has refused, or its
/// result is the right one; nothing but memory of a refused operation is lost; and the next run succeeds.
void sweep(CaseContext& context, host::Host& host, const Operation& operation);

}  // namespace flumo::judge
