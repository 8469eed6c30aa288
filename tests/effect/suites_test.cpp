// The three ways to a host's suite, and what each makes of a lack.
#include <gmock/gmock.h>

#include <functional>
#include <string>

#include "effect/suites/drawbot_suites.h"
#include "effect/suites/suite_access.h"
#include "effect/suites/suite_handler.h"
#include "fake_host.h"

namespace flumo {
namespace {

using test::FakeHost;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrEq;

struct Getter {
    const char* suite;
    std::function<void(AEGP_SuiteHandler&)> get;
};

const Getter kGetters[] = {
    {"PF Handle Suite 2", [](AEGP_SuiteHandler& suites) { suites.HandleSuite(); }},
    {"PF ANSI Suite 1", [](AEGP_SuiteHandler& suites) { suites.AnsiSuite(); }},
    {"AEGP Utility Suite 7", [](AEGP_SuiteHandler& suites) { suites.UtilitySuite(); }},
    {"PF iterateFloat Suite 1", [](AEGP_SuiteHandler& suites) { suites.IterateFloatSuite(); }},
};

PF_Err Thrown(const std::function<void()>& call) {
    try {
        call();
    } catch (PF_Err err) {
        return err;
    }
    return PF_Err_NONE;
}

TEST(SuiteHandler, AcquiresOnceAndReleasesOnceHoweverOftenAsked) {
    for (const Getter& getter : kGetters) {
        FakeHost host;
        {
            AEGP_SuiteHandler suites(&host.basic);
            EXPECT_THAT(host.log, IsEmpty()) << "nothing before the first use";
            getter.get(suites);
            getter.get(suites);
        }
        EXPECT_THAT(host.log, ElementsAre(std::string("acquire ") + getter.suite,
                                          std::string("release ") + getter.suite));
    }
}

TEST(SuiteHandler, ReleasesWhatItWasGivenAndNothingElse) {
    FakeHost host;
    host.missing_suites = {"PF ANSI Suite 1"};
    {
        AEGP_SuiteHandler suites(&host.basic);
        suites.UtilitySuite();
        suites.HandleSuite();
        EXPECT_EQ(Thrown([&] { suites.AnsiSuite(); }), 516);
    }
    EXPECT_EQ(host.Count("release PF ANSI Suite 1"), 0);
    EXPECT_TRUE(host.AllGivenBack());
}

TEST(SuiteHandler, LackIsThrownSilently) {
    EXPECT_EQ(Thrown([] { AEGP_SuiteHandler(nullptr); }), 516);
    for (const Getter& getter : kGetters) {
        FakeHost host;
        host.missing_suites = {getter.suite};
        AEGP_SuiteHandler suites(&host.basic);
        EXPECT_EQ(Thrown([&] { getter.get(suites); }), 516) << getter.suite;
        EXPECT_EQ(host.out_data.out_flags, 0);
        EXPECT_STREQ(host.out_data.return_msg, "");
        // A suite that turns up later is taken.
        host.missing_suites.clear();
        EXPECT_EQ(Thrown([&] { getter.get(suites); }), 0) << getter.suite;
    }
}

// One host's answer, read in two ways on purpose.
TEST(SuiteAccess, SuiteGivenWithAnErrorFailsTheHandlerButNotTheDirectWay) {
    FakeHost host;
    host.erring_suites = {"PF Handle Suite 2"};
    {
        AEGP_SuiteHandler suites(&host.basic);
        EXPECT_EQ(Thrown([&] { suites.HandleSuite(); }), 516);
    }
    EXPECT_EQ(host.Count("release PF Handle Suite 2"), 0);

    const void* suite = nullptr;
    EXPECT_EQ(AEFX_AcquireSuite(&host.in_data, &host.out_data, "PF Handle Suite", 2, "no", &suite), 0);
    EXPECT_NE(suite, nullptr);
    EXPECT_EQ(host.out_data.out_flags, 0);
}

TEST(SuiteAccess, LackOfASuiteIsShown) {
    struct Case {
        bool basic;
        const char* message;
        const char* shown;
    };
    for (const Case& c : {Case{true, nullptr, "Not able to acquire AEFX Suite."},
                          Case{false, nullptr, "Not able to acquire AEFX Suite."},
                          Case{true, "Couldn't load suite.", "Couldn't load suite."}}) {
        FakeHost host;
        if (!c.basic) host.in_data.pica_basicP = nullptr;
        host.out_data.out_flags = 1;
        const void* suite = &host;
        EXPECT_EQ(AEFX_AcquireSuite(&host.in_data, &host.out_data, "No Such Suite", 3, c.message, &suite),
                  516);
        EXPECT_EQ(suite, nullptr);
        EXPECT_THAT(host.out_data.return_msg, StrEq(c.shown));
        EXPECT_EQ(host.out_data.out_flags, 1 | 256) << "other flags stay";
    }
}

TEST(SuiteAccess, ReleaseAlwaysReachesTheHost) {
    FakeHost host;
    EXPECT_EQ(AEFX_ReleaseSuite(&host.in_data, &host.out_data, "Never Acquired", 9, "no"), 0);
    EXPECT_THAT(host.log, ElementsAre("release Never Acquired 9"));
    EXPECT_EQ(host.out_data.out_flags, 0);

    host.in_data.pica_basicP = nullptr;
    EXPECT_EQ(AEFX_ReleaseSuite(&host.in_data, &host.out_data, "Never Acquired", 9, nullptr), 516);
    EXPECT_THAT(host.out_data.return_msg, StrEq("Not able to release AEFX Suite."));
    EXPECT_EQ(AEFX_ReleaseSuite(&host.in_data, &host.out_data, "Never Acquired", 9, "Gone."), 516);
    EXPECT_THAT(host.out_data.return_msg, StrEq("Gone."));
    EXPECT_EQ(host.out_data.out_flags, 256);
}

const std::string kDrawing[] = {"DRAWBOT Draw Suite 1", "DRAWBOT Supplier Suite 1", "DRAWBOT Surface Suite 2",
                                "DRAWBOT Path Suite 1"};

TEST(DrawbotSuites, GroupStopsAtTheFirstMissingSuiteAndKeepsThoseBefore) {
    for (std::size_t missing = 0; missing <= std::size(kDrawing); ++missing) {
        FakeHost host;
        const bool complete = missing == std::size(kDrawing);
        if (!complete) host.missing_suites = {kDrawing[missing]};
        DrawbotSuites suites{};
        EXPECT_EQ(AEFX_AcquireDrawbotSuites(&host.in_data, &host.out_data, &suites), complete ? 0 : 516);

        std::vector<std::string> asked;
        for (std::size_t i = 0; i <= missing && i < std::size(kDrawing); ++i) {
            asked.push_back("acquire " + kDrawing[i]);
        }
        EXPECT_EQ(host.log, asked);
        EXPECT_EQ(host.held_suites.size(), missing);
        EXPECT_EQ(suites.draw != nullptr, missing > 0);
        EXPECT_EQ(suites.supplier != nullptr, missing > 1);
        EXPECT_EQ(suites.surface != nullptr, missing > 2);
        EXPECT_EQ(suites.path != nullptr, missing > 3);
        EXPECT_THAT(host.out_data.return_msg, StrEq(complete ? "" : "Not able to acquire AEFX Suite."));
    }
}

TEST(DrawbotSuites, EndsWithTheGroupGivenBackInOrder) {
    FakeHost host;
    EXPECT_EQ(AEFX_ReleaseDrawbotSuites(&host.in_data, &host.out_data), 0);
    std::vector<std::string> released;
    for (const std::string& suite : kDrawing)
        released.push_back("release " + suite);
    EXPECT_EQ(host.log, released);

    host.in_data.pica_basicP = nullptr;
    EXPECT_EQ(AEFX_ReleaseDrawbotSuites(&host.in_data, &host.out_data), 0);
    EXPECT_THAT(host.out_data.return_msg, StrEq("Not able to release AEFX Suite."));
    EXPECT_EQ(host.out_data.out_flags, 256);
}

TEST(DrawbotSuites, NullGroupIsRefusedWithItsOwnMessage) {
    FakeHost host;
    EXPECT_EQ(AEFX_AcquireDrawbotSuites(&host.in_data, &host.out_data, nullptr), 514);
    EXPECT_THAT(host.out_data.return_msg, StrEq("NULL suite pointer passed to AEFX_AcquireDrawbotSuites"));
    EXPECT_EQ(host.out_data.out_flags, 256);
    EXPECT_THAT(host.log, IsEmpty());
}

}  // namespace
}  // namespace flumo
