// The fault sweep: what an effect asks of its host while it does one thing is counted, then each of those
// calls fails once.
#pragma once

#include <functional>
#include <string>

#include "judge/engine/stage.h"

namespace flumo::judge {

/// What came of a deed.
struct Answer {
    /// The effect reported an error, or visibly gave nothing.
    bool refused = false;
    /// All that came out, to compare with.
    std::string result;
};

/// Something that an effect does on the host's word, repeatable. Calls fail within `act` alone, which
/// catches no HostError: one is a refusal.
struct Deed {
    std::string name;
    std::function<Answer()> act;
    std::function<void()> prepare = [] {};
    std::function<void()> restore = [] {};
    /// Asked after each act that failed.
    std::function<void()> judge = [] {};
};

/// A step for each call and each way in which it can fail. Afterwards: the effect has refused, or its result
/// is the right one; nothing but memory of a refused deed is lost; and the next time all is well.
void sweep(Trial& trial, host::Host& host, const Deed& deed);

}  // namespace flumo::judge
