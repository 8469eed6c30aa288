// The three ways to a host's suite, and what each makes of a lack.
#include <gmock/gmock.h>

#include <functional>

#include "effect/suites/drawbot_suites.h"
#include "effect/suites/suite_access.h"
#include "effect/suites/suite_handler.h"
#include "host/suite_provider.h"
#include "tests/support/hosted_call.h"

namespace flumo::test {
namespace {

using host::Callback;
using host::FaultMode;
using testing::ElementsAre;
using Suites = std::map<std::pair<std::string, int>, int>;

constexpr FaultMode kModes[] = {FaultMode::kError, FaultMode::kNull, FaultMode::kErrorWithResult};

struct Getter {
    const char* name;
    int version;
    void (*get)(AEGP_SuiteHandler&);
};

constexpr Getter kGetters[] = {
    {"PF Handle Suite", 2, [](AEGP_SuiteHandler& suites) { suites.HandleSuite(); }},
    {"PF ANSI Suite", 1, [](AEGP_SuiteHandler& suites) { suites.AnsiSuite(); }},
    {"AEGP Utility Suite", 7, [](AEGP_SuiteHandler& suites) { suites.UtilitySuite(); }},
    {"PF iterateFloat Suite", 1, [](AEGP_SuiteHandler& suites) { suites.IterateFloatSuite(); }},
};

PF_Err Thrown(const std::function<void()>& call) {
    try {
        call();
    } catch (PF_Err err) {
        return err;
    }
    return PF_Err_NONE;
}

// An acquire that fails but gives a suite is no success here, though it is one for the direct way.
TEST(SuiteHandler, ThrowsALackSilentlyAndHoldsASuiteFromItsFirstSuccessToTheEnd) {
    EXPECT_EQ(Thrown([] { AEGP_SuiteHandler(nullptr); }), 516);
    HostedCall within;
    {
        AEGP_SuiteHandler suites(within.in_data.pica_basicP);
        Suites held;
        for (const Getter& getter : kGetters) {
            for (const FaultMode mode : kModes) {
                within.host.faults().fail_every(Callback::kAcquireSuite, mode);
                EXPECT_EQ(Thrown([&] { getter.get(suites); }), 516) << getter.name;
            }
            within.host.faults().clear();
            EXPECT_EQ(within.host.accounting().acquired_suites(), held);
            getter.get(suites);
            getter.get(suites);
            held[{getter.name, getter.version}] = 1;
        }
        EXPECT_EQ(within.host.accounting().acquired_suites(), held);
    }
    EXPECT_EQ(within.out_data.out_flags, 0);
    EXPECT_TRUE(within.Tidy());
    // What was never had is not released.
    within.host.faults().fail_every(Callback::kAcquireSuite, FaultMode::kErrorWithResult);
    EXPECT_EQ(Thrown([&] { AEGP_SuiteHandler(within.in_data.pica_basicP).HandleSuite(); }), 516);
    EXPECT_TRUE(within.Tidy());
}

struct Answer {
    PF_Err result;
    PF_OutFlags flags;
    std::string shown;
    bool operator==(const Answer&) const = default;
};

void PrintTo(const Answer& answer, std::ostream* out) {
    *out << answer.result << " with " << answer.flags << " and \"" << answer.shown << '"';
}

/// What a call answers, the flag of another matter being set before.
Answer AnswerOf(HostedCall& within, const std::function<PF_Err()>& call) {
    within.out_data = {};
    within.out_data.out_flags = 1;
    within.host.faults().start_recording();
    const PF_Err result = call();
    const std::vector<Callback> calls = within.host.faults().stop_recording();
    EXPECT_EQ(std::ranges::count(calls, Callback::kSprintf) > 0, within.out_data.return_msg[0] != 0)
        << "messages are printed by the host";
    return {result, within.out_data.out_flags, within.out_data.return_msg};
}

TEST(SuiteAccess, ShowsTheUserALackAndNoOtherError) {
    HostedCall within;
    const void* suite = nullptr;
    const auto acquire = [&](const char* message) {
        suite = &within;
        return AnswerOf(within, [&] {
            return AEFX_AcquireSuite(&within.in_data, &within.out_data, "PF World Suite", 2, message, &suite);
        });
    };
    for (const FaultMode mode : kModes) {
        within.host.faults().fail_every(Callback::kAcquireSuite, mode);
        const bool given = mode == FaultMode::kErrorWithResult;
        EXPECT_EQ(acquire("No worlds."), (given ? Answer{0, 1, ""} : Answer{516, 257, "No worlds."}));
        EXPECT_EQ(suite != nullptr, given);
    }
    within.host.faults().clear();
    EXPECT_EQ(acquire(nullptr), (Answer{0, 1, ""}));
    within.in_data.pica_basicP = nullptr;
    EXPECT_EQ(acquire(nullptr), (Answer{516, 257, "Not able to acquire AEFX Suite."}));
    EXPECT_EQ(suite, nullptr);
}

TEST(SuiteAccess, ReleaseAlwaysReachesTheHost) {
    HostedCall within;
    const auto release = [&](const char* message) {
        return AnswerOf(within, [&] {
            return AEFX_ReleaseSuite(&within.in_data, &within.out_data, "Never Acquired", 9, message);
        });
    };
    EXPECT_EQ(release("no"), (Answer{0, 1, ""}));
    EXPECT_THAT(within.host.accounting().misuse_texts(),
                ElementsAre(testing::HasSubstr("\"Never Acquired\" version 9")));
    within.in_data.pica_basicP = nullptr;
    EXPECT_EQ(release(nullptr), (Answer{516, 257, "Not able to release AEFX Suite."}));
    EXPECT_EQ(release("Gone."), (Answer{516, 257, "Gone."}));
}

/// Offers every suite, and nothing in it.
struct NamesAlone : host::SuiteProvider {
    const void* find_suite(std::string_view, int) override { return this; }
    DRAWBOT_DrawRef draw_ref() override { return nullptr; }
};

TEST(DrawbotSuites, GroupStopsAtTheFirstMissingSuiteAndKeepsThoseBefore) {
    const std::pair<std::string, int> group[] = {{"DRAWBOT Draw Suite", 1},
                                                 {"DRAWBOT Supplier Suite", 1},
                                                 {"DRAWBOT Surface Suite", 2},
                                                 {"DRAWBOT Path Suite", 1}};
    for (size_t missing = 0; missing <= std::size(group); ++missing) {
        const bool complete = missing == std::size(group);
        NamesAlone names;
        host::HostOptions options;
        if (!complete) options.missing_suites = {group[missing]};
        HostedCall asked(options, &names);
        DrawbotSuites suites{};
        const auto acquire = [&] {
            return AEFX_AcquireDrawbotSuites(&asked.in_data, &asked.out_data, &suites);
        };
        EXPECT_EQ(AnswerOf(asked, acquire),
                  (complete ? Answer{0, 1, ""} : Answer{516, 257, "Not able to acquire AEFX Suite."}));
        Suites before;
        for (size_t i = 0; i < missing; ++i)
            before[group[i]] = 1;
        EXPECT_EQ(asked.host.accounting().acquired_suites(), before);
        EXPECT_THAT((std::array{suites.draw != nullptr, suites.supplier != nullptr, suites.surface != nullptr,
                                suites.path != nullptr}),
                    ElementsAre(missing > 0, missing > 1, missing > 2, missing > 3));
        const auto release = [&] { return AEFX_ReleaseDrawbotSuites(&asked.in_data, &asked.out_data); };
        EXPECT_EQ(AnswerOf(asked, release), (Answer{0, 1, ""}));
        EXPECT_TRUE(asked.host.accounting().idle()) << "the group is given back";
        std::vector<std::string> not_had;
        for (size_t i = missing; i < std::size(group); ++i)
            not_had.push_back("released suite \"" + group[i].first + "\" version " +
                              std::to_string(group[i].second) + ", which is not acquired");
        EXPECT_EQ(asked.host.accounting().misuse_texts(), not_had) << "and as a whole, in its order";
        asked.in_data.pica_basicP = nullptr;
        EXPECT_EQ(AnswerOf(asked, release), (Answer{0, 257, "Not able to release AEFX Suite."}));
    }
}

TEST(DrawbotSuites, NullGroupIsRefusedWithItsOwnMessage) {
    HostedCall within;
    const auto acquire = [&] {
        return AEFX_AcquireDrawbotSuites(&within.in_data, &within.out_data, nullptr);
    };
    EXPECT_EQ(AnswerOf(within, acquire),
              (Answer{514, 257, "NULL suite pointer passed to AEFX_AcquireDrawbotSuites"}));
    EXPECT_TRUE(within.Tidy());
}

}  // namespace
}  // namespace flumo::test
