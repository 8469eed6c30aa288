#include "tests/faults/sweep.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <sstream>

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
    return names[static_cast<size_t>(mode)];
}

/// A frame's clean-up releases its suites before it checks in: a row that expects the check-ins expects both.
bool fits(std::optional<host::MisuseKind> expected, host::MisuseKind seen) {
    return seen == expected ||
           (expected == host::MisuseKind::kNotCheckedOut && seen == host::MisuseKind::kNotAcquired);
}

/// The last `count` kinds of calls, without the suites that are released at the very end.
std::vector<Callback> chain_of(std::vector<Callback> calls, size_t count) {
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
    if (!calls.empty() && calls.back() == Callback::kReleaseSuite) calls.pop_back();
    if (calls.size() > count) calls.erase(calls.begin(), calls.end() - static_cast<std::ptrdiff_t>(count));
    return calls;
}

judge::Operation operation_of(const Command& command) {
    return {.name = command.name,
            .run = [&command] { return judge::Answer{.error = command.run()}; },
            .prepare = command.prepare,
            .restore = command.restore};
}

}  // namespace

Sweep::~Sweep() {
    std::cout << "command; faults tried\n";
    for (const Tally& it : tallies_)
        std::cout << it.command << "; " << it.faults << '\n';
}

void Sweep::over(const Command& command) {
    expect_usual(command);
    const std::vector<judge::Fault> faults = judge::faults_of(fixture_.host(), operation_of(command));
    tallies_.push_back({command.name, faults.size()});
    for (const judge::Fault& fault : faults)
        try_fault(command, fault);
}

void Sweep::expect_usual(const Command& command) {
    const Holdings before = holdings_of(fixture_.host());
    EXPECT_EQ(judge::run(operation_of(command)).error, command.usual) << command.name;
    EXPECT_TRUE(command.complete()) << command.name;
    command.restore();
    EXPECT_EQ(holdings_of(fixture_.host()), before) << command.name;
    EXPECT_THAT(fixture_.host().accounting().misuses(), testing::IsEmpty()) << command.name;
}

void Sweep::try_fault(const Command& command, const judge::Fault& fault) {
    std::ostringstream what;
    what << command.name << ": " << host::callback_name(fault.call) << " number " << fault.nth << " gives "
         << mode_name(fault.mode);
    SCOPED_TRACE(what.str());
    const Expectation* row = find_expectation(command.name, fault.call, fault.nth, fault.mode);
    ASSERT_NE(row, nullptr) << "nothing is expected";
    const Also& also = row->also;
    const Holdings before = holdings_of(fixture_.host());
    const auto [answer, happened, calls] =
        judge::run_with(fixture_.host(), operation_of(command), fault, kPlanned);
    EXPECT_TRUE(happened);
    EXPECT_EQ(answer.error, row->result != PF_Err_NONE ? row->result : command.usual);
    EXPECT_TRUE(caller_.is_current()) << "the caller's GL context is lost";

    const bool goes_on = row->result == PF_Err_NONE || also.goes_on;
    const auto later = calls.begin() + static_cast<std::ptrdiff_t>(fault.ordinal) + 1;
    EXPECT_TRUE(!goes_on || also.incomplete || command.complete());
    EXPECT_TRUE(goes_on || std::all_of(later, calls.end(), gives_back));
    EXPECT_TRUE(calls.size() <= command.chain.size() ||
                chain_of(calls, command.chain.size()) == command.chain);

    command.restore();
    const int params = also.later_controls ? fault.of - fault.nth - 1 : 0;
    const Holdings expected{before.handles + also.handles, before.locks + also.locks, before.params + params,
                            before.textures + also.textures, before.others};
    EXPECT_EQ(holdings_of(fixture_.host()), expected);
    fixture_.kept_objects += also.textures;
    expect_told(also.message, also.misuse);
    EXPECT_TRUE(fixture_.renders_as_before(kDepths[fault.ordinal % std::size(kDepths)])) << "the next frame";
}

void Sweep::expect_told(std::string_view message, std::optional<host::MisuseKind> misuse) {
    host::Accounting& accounting = fixture_.host().accounting();
    const std::vector<std::string> shown(message.empty() ? 0 : 1, std::string(message));
    EXPECT_EQ(accounting.messages(), shown);
    EXPECT_EQ(accounting.misuses().empty(), !misuse);
    for (const host::Misuse& told : accounting.misuses())
        EXPECT_TRUE(fits(misuse, told.kind)) << told;
    accounting.forget_misuses();
    accounting.forget_messages();
}

}  // namespace flumo::test
