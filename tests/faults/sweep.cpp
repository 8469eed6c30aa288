#include "tests/faults/sweep.h"

#include <gmock/gmock.h>

#include <iostream>
#include <map>

#include "tests/faults/expectations.h"
#include "tests/faults/gl_spy.h"

namespace flumo::test {
namespace {

using host::Callback;
using host::FaultMode;

/// What is with the effect at a moment between commands.
struct Holdings {
    int handles, locks, params, textures;
    /// Layers, drawing objects and suites, which never stay.
    int others;
    bool operator==(const Holdings&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Holdings& it) {
        return out << it.handles << " handles, " << it.locks << " locks, " << it.params << " controls, "
                   << it.textures << " textures, " << it.others << " others";
    }
};

Holdings holdings_of(host::Host& host) {
    const host::Accounting& accounting = host.accounting();
    int others = accounting.lent(host::Lent::kLayer) + accounting.lent(host::Lent::kDrawbotObject);
    for (const auto& [suite, times] : accounting.acquired_suites())
        others += times;
    return {static_cast<int>(host.handles().live_count()), static_cast<int>(host.handles().lock_count()),
            accounting.lent(host::Lent::kParam), static_cast<int>(gl_spy::alive(GlObject::kTexture)), others};
}

bool gives_back(Callback call) {
    switch (call) {
        case Callback::kUnlockHandle:
        case Callback::kDisposeHandle:
        case Callback::kReleaseSuite:
        case Callback::kCheckinParam:
        case Callback::kCheckinLayerPixels:
        case Callback::kDrawbotRelease:
        case Callback::kSprintf:
            return true;
        default:
            return false;
    }
}

const char* mode_name(FaultMode mode) {
    constexpr const char* names[] = {"an error", "null", "an error with a result"};
    return names[static_cast<std::size_t>(mode)];
}

/// The last `count` kinds of calls, not looking at the suites that are released at the very end.
std::vector<Callback> chain_of(std::vector<Callback> calls, std::size_t count) {
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
    if (!calls.empty() && calls.back() == Callback::kReleaseSuite) calls.pop_back();
    if (calls.size() > count) calls.erase(calls.begin(), calls.end() - static_cast<std::ptrdiff_t>(count));
    return calls;
}

}  // namespace

struct Sweep::Fault {
    uint64_t ordinal;
    Callback call;
    int nth;
    FaultMode mode;
    /// Calls of the same kind in the whole command.
    int of;
};

Sweep::~Sweep() {
    std::cout << "command; calls counted; faults tried\n";
    for (const Tally& it : tallies_)
        std::cout << it.command << "; " << it.calls << "; " << it.faults << '\n';
}

void Sweep::over(const Command& command) {
    const std::vector<Callback> calls = count_calls(command);
    tallies_.push_back({command.name, calls.size()});
    std::map<Callback, int> seen;
    for (uint64_t ordinal = 0; ordinal < calls.size(); ++ordinal) {
        const Callback call = calls[ordinal];
        const int nth = seen[call]++;
        for (const FaultMode mode : host::fault_modes(call)) {
            try_fault(command, {ordinal, call, nth, mode, static_cast<int>(std::ranges::count(calls, call))});
            ++tallies_.back().faults;
        }
    }
}

std::vector<Callback> Sweep::count_calls(const Command& command) {
    const Holdings before = holdings_of(stage_.host());
    command.prepare();
    stage_.host().faults().start_recording();
    EXPECT_EQ(command.run(), command.usual) << command.name;
    std::vector<Callback> calls = stage_.host().faults().stop_recording();
    EXPECT_TRUE(command.complete()) << command.name;
    command.tidy();
    EXPECT_EQ(holdings_of(stage_.host()), before) << command.name;
    EXPECT_THAT(stage_.host().accounting().misuses(), testing::IsEmpty()) << command.name;
    return calls;
}

void Sweep::try_fault(const Command& command, const Fault& fault) {
    std::ostringstream what;
    what << command.name << ": " << host::callback_name(fault.call) << " number " << fault.nth << " gives "
         << mode_name(fault.mode);
    SCOPED_TRACE(what.str());
    const Expectation* row = find_expectation(command.name, fault.call, fault.nth, fault.mode);
    ASSERT_NE(row, nullptr) << "nothing is promised";
    const Also& also = row->also;
    const Holdings before = holdings_of(stage_.host());
    const std::vector<Callback> calls =
        run_with(command, fault, row->result != PF_Err_NONE ? row->result : command.usual);
    EXPECT_TRUE(caller_.is_current()) << "the caller's GL context is lost";

    const bool goes_on = row->result == PF_Err_NONE || also.goes_on;
    const auto behind = calls.begin() + static_cast<std::ptrdiff_t>(fault.ordinal) + 1;
    EXPECT_TRUE(!goes_on || also.incomplete || command.complete());
    EXPECT_TRUE(goes_on || std::all_of(behind, calls.end(), gives_back));
    EXPECT_TRUE(calls.size() <= command.chain.size() ||
                chain_of(calls, command.chain.size()) == command.chain);

    command.tidy();
    const int params = also.later_controls ? fault.of - fault.nth - 1 : 0;
    const Holdings expected{before.handles + also.handles, before.locks + also.locks, before.params + params,
                            before.textures + also.textures, before.others};
    EXPECT_EQ(holdings_of(stage_.host()), expected);
    stage_.kept_objects += also.textures;
    expect_told(also.message, also.misuse);
    EXPECT_TRUE(stage_.renders_as_before(kDepths[fault.ordinal % std::size(kDepths)])) << "the next frame";
}

std::vector<Callback> Sweep::run_with(const Command& command, const Fault& fault, PF_Err expected) {
    host::Faults& faults = stage_.host().faults();
    command.prepare();
    faults.start_recording();
    faults.fail(fault.ordinal, fault.mode, kPlanned);
    EXPECT_EQ(command.run(), expected);
    EXPECT_TRUE(faults.happened());
    faults.clear();
    return faults.stop_recording();
}

void Sweep::expect_told(std::string_view message, std::string_view misuse) {
    host::Accounting& accounting = stage_.host().accounting();
    const std::vector<std::string> shown(message.empty() ? 0 : 1, std::string(message));
    EXPECT_EQ(accounting.messages(), shown);
    EXPECT_EQ(accounting.misuses().empty(), misuse.empty());
    for (const std::string& told : accounting.misuses())
        EXPECT_THAT(told, testing::ContainsRegex(std::string(misuse)));
    accounting.forget_misuses();
    accounting.forget_messages();
}

}  // namespace flumo::test
