// The call into the effect that a thread is in. Most of the host's functions are given nothing that says
// who asks, so the running call is kept by thread.
#pragma once

#include <exception>
#include <string>
#include <vector>

#include "effect_api/effect.h"
#include "host/faults.h"
#include "host/values/value.h"

namespace flumo::host {

class Host;
class Instance;
class SuiteProvider;
struct FrameState;

/// A control that is checked out. Owns what the effect's record borrows.
struct ParamLoan {
    Value value;
    bool returned = false;
};

/// One call into the effect. Belongs to the thread that makes it.
struct Call {
    explicit Call(Host& host, Instance* instance = nullptr, SuiteProvider* suites = nullptr);
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call() = default;

    PF_ProgPtr ref() { return reinterpret_cast<PF_ProgPtr>(this); }

    Host& host;
    Instance* instance;
    SuiteProvider* suites;
    /// Set in the smart commands only.
    FrameState* frame = nullptr;
    /// False for a call that the host makes while it answers another: only the outer one is counted.
    bool counted;
    std::vector<ParamLoan> params;
    /// What the host itself failed with while it answered; the effect was told an error number.
    std::exception_ptr problem;
};

/// Null on a thread that is in no call.
Call* current_call();

/// Makes a call the thread's current one, until its end.
class CurrentCall {
  public:
    explicit CurrentCall(Call& call);
    ~CurrentCall();
    CurrentCall(const CurrentCall&) = delete;
    CurrentCall& operator=(const CurrentCall&) = delete;

  private:
    Call* outer_;
};

/// While it lives, calls into the effect from this thread are the host's own housekeeping: what they ask
/// of the host is neither counted nor failed.
class UncountedCalls {
  public:
    explicit UncountedCalls(Host& host) : call_(host), current_(call_) {}

  private:
    Call call_;
    CurrentCall current_;
};

}  // namespace flumo::host
