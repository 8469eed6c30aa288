// Global set-up and set-down over a GL layer that fails on demand: this program brings its own two functions
// of that layer, so the real ones are not linked.
#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

#include "effect/entry/global.h"
#include "effect/gpu/fault.h"
#include "effect/gpu/global_context.h"
#include "tests/effect/hosted_call.h"

namespace flumo {
namespace {

std::function<void()> gl = [] {};

}  // namespace

void AESDK_OpenGL_SetUpCommonContext() {
    gl();
}
void AESDK_OpenGL_TearDownContexts() {
    gl();
}

namespace test {
namespace {

struct Fault {
    std::function<void()> happens;
    PF_Err result;
};

// A number of the host's, a fault of the GL layer, and anything else.
const Fault kFaults[] = {
    {[] { throw PF_Err{33}; }, 33},
    {[] { throw AESDK_OpenGL_Fault{1}; }, 4},
    {[] { throw std::runtime_error("driver trouble"); }, 4},
};

TEST(GlobalFaults, FailedGlSetUpEndsTheSetUp) {
    for (const Fault& fault : kFaults) {
        HostedCall within;
        gl = fault.happens;
        EXPECT_EQ(GlobalSetup(&within.in_data, &within.out_data), fault.result);
        EXPECT_EQ(within.out_data.my_version, 566784U);
        EXPECT_EQ(within.out_data.out_flags, 33588336);
        EXPECT_EQ(within.out_data.out_flags2, 142611456);
        EXPECT_EQ(within.out_data.global_data, nullptr);
        EXPECT_EQ(within.host.faults().count(), 0U) << "no global data is made";
    }
}

// Whatever is missing, the sequence handle goes back, and not through the suite.
TEST(GlobalFaults, SetdownReturnsTheSequenceHandleAndKeepsTheGlobalOneAfterAFailure) {
    for (std::size_t i = 0; i <= std::size(kFaults); ++i) {
        HostedCall within({.missing_suites = {{"PF Handle Suite", 2}}});
        host::HandleTable& handles = within.host.handles();
        gl = i < std::size(kFaults) ? kFaults[i].happens : [] {};
        within.in_data.global_data = handles.create(4);
        within.in_data.sequence_data = within.out_data.sequence_data = handles.create(1);
        EXPECT_EQ(GlobalSetdown(&within.in_data, &within.out_data),
                  i < std::size(kFaults) ? kFaults[i].result : 516);
        EXPECT_TRUE(handles.lives(within.in_data.global_data));
        EXPECT_FALSE(handles.lives(within.in_data.sequence_data));
        EXPECT_EQ(within.out_data.sequence_data, nullptr);
    }
}

TEST(GlobalData, HoldsTheNumberThatTheHostGaveAndNothingUnderPremiere) {
    gl = [] {};
    for (const A_AppID application : {kAfterEffectsApplId, kPremiereApplId}) {
        HostedCall within({.appl_id = application});
        ASSERT_EQ(GlobalSetup(&within.in_data, &within.out_data), 0);
        const PF_Handle made = within.out_data.global_data;
        EXPECT_EQ(within.host.handles().size(made), 4U);
        // The host's number is 1; junk stays under Premiere, which does not know the registration.
        EXPECT_EQ(*static_cast<A_u_long*>(*made), application == kPremiereApplId ? 0xCDCDCDCD : 1);
        within.in_data.global_data = made;
        within.out_data.sequence_data = made;
        EXPECT_EQ(GlobalSetdown(&within.in_data, &within.out_data), 0);
        EXPECT_EQ(within.out_data.sequence_data, made)
            << "the answer of a set-down without a sequence handle";
        EXPECT_TRUE(within.host.accounting().clean()) << within.host.accounting().describe();
        EXPECT_TRUE(within.Tidy());
    }
}

}  // namespace
}  // namespace test
}  // namespace flumo
