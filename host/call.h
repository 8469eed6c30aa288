// The call into the effect that a thread is in. Most of the host's functions have no parameter that tells
// the caller, so the running call is kept per thread.
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
    /// The exception of a callback of the host; the effect got an error number.
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

/// While it exists, calls into the effect from this thread are the host's own management: the callbacks
/// that they use are neither counted nor failed.
class UncountedCalls {
  public:
    explicit UncountedCalls(Host& host) : call_(host), current_(call_) {}

  private:
    Call call_;
    CurrentCall current_;
};

}  // namespace flumo::host
