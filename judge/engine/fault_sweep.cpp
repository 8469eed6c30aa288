#include "judge/engine/fault_sweep.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "judge/engine/ledger.h"

namespace flumo::judge {

namespace {

/// A number that no effect uses.
constexpr PF_Err kPlannedError = 7321;

/// The host itself refuses to take the thing back, so that it stays lent.
bool is_giving_back(host::Callback which) {
    constexpr host::Callback kReturns[] = {host::Callback::kReleaseSuite, host::Callback::kCheckinParam,
                                           host::Callback::kCheckinLayerPixels,
                                           host::Callback::kDrawbotRelease};
    return std::ranges::find(kReturns, which) != std::end(kReturns);
}

/// A pixel getter that gives no pixels answers that the world has another depth. Effects call it to find the
/// depth, and no rule says what the picture then is.
bool is_question_of_depth(host::Callback which) {
    return which == host::Callback::kGetPixelData8 || which == host::Callback::kGetPixelData16 ||
           which == host::Callback::kGetPixelDataFloat;
}

/// A full clean-up after a failure gives back what was never acquired, which does no harm.
bool is_needless_return(host::MisuseKind kind) {
    return kind == host::MisuseKind::kNotCheckedOut || kind == host::MisuseKind::kNotAcquired ||
           kind == host::MisuseKind::kNotLocked;
}

const char* mode_name(host::FaultMode mode) {
    switch (mode) {
        case host::FaultMode::kError:
            return "error";
        case host::FaultMode::kNull:
            return "null";
        case host::FaultMode::kErrorWithResult:
            break;
    }
    return "error-with-result";
}

std::string step_name(const Operation& operation, const Fault& fault) {
    std::string name = operation.name + "-" + std::to_string(fault.ordinal) + "-" +
                       std::string(host::callback_name(fault.call)) + "-" + mode_name(fault.mode);
    std::ranges::replace(name, ' ', '_');
    return name;
}

Answer answer_of(const Operation& operation) {
    try {
        return operation.run();
    } catch (const host::HostError& error) {
        return {true, error.what(), error.code()};
    }
}

void judge_ledger(CaseContext& context, host::Host& host, const Ledger& before, bool refused) {
    for (const LedgerDifference& difference : differences(before, read_ledger(host))) {
        if (refused && difference.is_memory()) {
            context.note("no memory left after a refusal", difference.text);
        } else {
            context.finding("everything given back", difference.text);
        }
    }
}

class Sweep {
  public:
    Sweep(CaseContext& context, host::Host& host, const Operation& operation)
        : context_(context), host_(host), operation_(operation) {}

    void run_all() {
        right_ = run(operation_);
        operation_.restore();
        if (right_.refused)
            throw std::runtime_error(operation_.name + " fails without a fault: " + right_.result);
        for (const Fault& fault : faults_of(host_, operation_))
            context_.step(step_name(operation_, fault), [&] { fail(fault); });
    }

  private:
    void fail(const Fault& fault) {
        host_.accounting().forget_misuses();
        const Ledger before = read_ledger(host_);
        const FaultyRun faulty = run_with(host_, operation_, fault, kPlannedError);
        operation_.judge();
        operation_.restore();
        context_.expect(faulty.happened, "the same calls each time", "fewer");
        context_.expect(is_question_of_depth(fault.call) || faulty.answer.refused ||
                            faulty.answer.result == right_.result,
                        "an error, or the result that there is without the failure",
                        "success and another result");
        judge_misuses(fault.mode);
        if (!is_giving_back(fault.call)) judge_ledger(context_, host_, before, faulty.answer.refused);
        judge_next();
    }

    void judge_misuses(host::FaultMode mode) {
        for (const host::Misuse& misuse : take_misuses(host_)) {
            if (is_needless_return(misuse.kind)) continue;
            if (mode == host::FaultMode::kNull && misuse.kind == host::MisuseKind::kDrawingReference) {
                context_.note("a null to be noticed before the host does", misuse.text);
            } else {
                context_.finding("no misuse of the host", misuse.text);
            }
        }
    }

    void judge_next() {
        const Ledger before = read_ledger(host_);
        const Answer next = run(operation_);
        operation_.restore();
        context_.expect(!next.refused, "success the next time", next.result);
        context_.expect(next.refused || next.result == right_.result, "the right result the next time",
                        "another");
        judge_ledger(context_, host_, before, false);
    }

    CaseContext& context_;
    host::Host& host_;
    const Operation& operation_;
    Answer right_;
};

}  // namespace

Answer run(const Operation& operation) {
    operation.prepare();
    return answer_of(operation);
}

std::vector<Fault> faults_of(host::Host& host, const Operation& operation) {
    operation.prepare();
    host.faults().start_recording();
    answer_of(operation);
    const std::vector<host::Callback> calls = host.faults().stop_recording();
    operation.restore();
    std::vector<Fault> faults;
    std::map<host::Callback, int> seen;
    for (size_t ordinal = 0; ordinal < calls.size(); ++ordinal) {
        const host::Callback call = calls[ordinal];
        const int nth = seen[call]++;
        const int of = static_cast<int>(std::ranges::count(calls, call));
        for (const host::FaultMode mode : host::fault_modes(call))
            faults.push_back({ordinal, call, nth, of, mode});
    }
    return faults;
}

FaultyRun run_with(host::Host& host, const Operation& operation, const Fault& fault, PF_Err error_number) {
    host::Faults& faults = host.faults();
    operation.prepare();
    faults.start_recording();
    faults.fail(fault.ordinal, fault.mode, error_number);
    Answer answer = answer_of(operation);
    const bool happened = faults.happened();
    faults.clear();
    return {std::move(answer), happened, faults.stop_recording()};
}

void sweep(CaseContext& context, host::Host& host, const Operation& operation) {
    Sweep(context, host, operation).run_all();
}

}  // namespace flumo::judge
