#include "judge/engine/sweep.h"

#include <algorithm>

#include "judge/engine/ledger.h"

namespace flumo::judge {

namespace {

/// A number that no effect would come up with.
constexpr PF_Err kPlannedError = 7321;

/// The host itself refuses to take the thing back, so that it stays out.
bool is_giving_back(host::Callback which) {
    constexpr host::Callback kReturns[] = {host::Callback::kReleaseSuite, host::Callback::kCheckinParam,
                                           host::Callback::kCheckinLayerPixels,
                                           host::Callback::kDrawbotRelease};
    return std::ranges::find(kReturns, which) != std::end(kReturns);
}

/// A pixel getter that gives no pixels answers that the world has another depth: effects ask it just for
/// that, and what becomes of the picture is theirs to say.
bool is_question_of_depth(host::Callback which) {
    return which == host::Callback::kGetPixelData8 || which == host::Callback::kGetPixelData16 ||
           which == host::Callback::kGetPixelDataFloat;
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

std::string step_name(const Deed& deed, std::size_t ordinal, host::Callback which, host::FaultMode mode) {
    std::string name = deed.name + "-" + std::to_string(ordinal) + "-" +
                       std::string(host::callback_name(which)) + "-" + mode_name(mode);
    std::ranges::replace(name, ' ', '_');
    return name;
}

Answer act(const Deed& deed) {
    try {
        return deed.act();
    } catch (const host::HostError& error) {
        return {true, error.what()};
    }
}

Answer whole(const Deed& deed) {
    deed.prepare();
    const Answer answer = act(deed);
    deed.restore();
    return answer;
}

void judge_ledger(Trial& trial, host::Host& host, const Ledger& before, bool refused) {
    for (const std::string& difference : differences(before, read_ledger(host))) {
        if (refused && is_memory(difference)) {
            trial.note("a refusal that leaves nothing behind", difference);
        } else {
            trial.finding("everything given back", difference);
        }
    }
}

class Sweep {
  public:
    Sweep(Trial& trial, host::Host& host, const Deed& deed) : trial_(trial), host_(host), deed_(deed) {}

    void run() {
        right_ = whole(deed_);
        if (right_.refused) throw std::runtime_error(deed_.name + " fails by itself: " + right_.result);
        const std::vector<host::Callback> calls = record();
        for (std::size_t i = 0; i < calls.size(); ++i) {
            for (const host::FaultMode mode : host::fault_modes(calls[i])) {
                trial_.step(step_name(deed_, i, calls[i], mode), [&] { fail(i, calls[i], mode); });
            }
        }
    }

  private:
    std::vector<host::Callback> record() {
        deed_.prepare();
        host_.faults().start_recording();
        act(deed_);
        std::vector<host::Callback> calls = host_.faults().stop_recording();
        deed_.restore();
        return calls;
    }

    void fail(std::size_t ordinal, host::Callback which, host::FaultMode mode) {
        host_.accounting().forget_misuses();
        const Ledger before = read_ledger(host_);
        deed_.prepare();
        host_.faults().fail(ordinal, mode, kPlannedError);
        const Answer answer = act(deed_);
        host_.faults().clear();
        deed_.judge();
        deed_.restore();
        judge_answer(answer, which);
        judge_misuses(mode);
        if (!is_giving_back(which)) judge_ledger(trial_, host_, before, answer.refused);
        judge_next();
    }

    void judge_answer(const Answer& answer, host::Callback which) {
        trial_.expect(host_.faults().happened(), "the same calls each time", "fewer");
        if (is_question_of_depth(which)) return;
        trial_.expect(answer.refused || answer.result == right_.result,
                      "an error, or the result that there is without the failure",
                      "success and another result");
    }

    void judge_misuses(host::FaultMode mode) {
        for (const std::string& misuse : take_misuses(host_)) {
            if (is_needless_return(misuse)) continue;
            if (mode == host::FaultMode::kNull && is_null_handed_on(misuse)) {
                trial_.note("a null to be noticed before the host does", misuse);
            } else {
                trial_.finding("no misuse of the host", misuse);
            }
        }
    }

    void judge_next() {
        const Ledger before = read_ledger(host_);
        const Answer next = whole(deed_);
        trial_.expect(!next.refused, "success the next time", next.result);
        trial_.expect(next.refused || next.result == right_.result, "the right result the next time",
                      "another");
        judge_ledger(trial_, host_, before, false);
    }

    Trial& trial_;
    host::Host& host_;
    const Deed& deed_;
    Answer right_;
};

}  // namespace

void sweep(Trial& trial, host::Host& host, const Deed& deed) {
    Sweep(trial, host, deed).run();
}

}  // namespace flumo::judge
