// Global set-up and set-down over a GL layer that fails on demand: this program brings its own two functions
// of that layer, so the real ones are not linked.
#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

#include "effect/entry/global.h"
#include "effect/gpu/fault.h"
#include "effect/gpu/global_context.h"
#include "fake_host.h"

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

namespace {

using test::FakeHost;

struct Fault {
    const char* name;
    std::function<void()> happens;
    PF_Err result;
};

const Fault kFaults[] = {
    {"a number of the host's", [] { throw PF_Err{33}; }, 33},
    {"a GL fault", [] { throw AESDK_OpenGL_Fault{1}; }, 4},
    {"anything else", [] { throw std::runtime_error("driver trouble"); }, 4},
};

TEST(GlobalFaults, FailedGlSetUpEndsTheSetUp) {
    for (const Fault& fault : kFaults) {
        SCOPED_TRACE(fault.name);
        FakeHost host;
        gl = fault.happens;
        EXPECT_EQ(GlobalSetup(&host.in_data, &host.out_data), fault.result);
        EXPECT_EQ(host.out_data.my_version, 566784U);
        EXPECT_EQ(host.out_data.global_data, nullptr);
        EXPECT_THAT(host.log, testing::IsEmpty()) << "no global data is made";
    }
}

TEST(GlobalFaults, FailedTeardownKeepsTheGlobalHandleAndReturnsTheSequenceHandle) {
    for (const Fault& fault : kFaults) {
        SCOPED_TRACE(fault.name);
        FakeHost host;
        gl = fault.happens;
        host.in_data.global_data = host.NewHandle(4);
        host.in_data.sequence_data = host.out_data.sequence_data = host.NewHandle(1);
        EXPECT_EQ(GlobalSetdown(&host.in_data, &host.out_data), fault.result);
        EXPECT_TRUE(host.blocks.contains(host.in_data.global_data));
        EXPECT_THAT(host.log, testing::ElementsAre("util dispose"));
        EXPECT_EQ(host.out_data.sequence_data, nullptr);
    }
}

TEST(GlobalFaults, SetdownLeavesTheAnswerAloneWithoutASequenceHandle) {
    FakeHost host;
    gl = [] {};
    const PF_Handle other = host.NewHandle(1);
    host.out_data.sequence_data = other;
    EXPECT_EQ(GlobalSetdown(&host.in_data, &host.out_data), 0);
    EXPECT_EQ(host.out_data.sequence_data, other);
    EXPECT_THAT(host.log, testing::IsEmpty());
}

}  // namespace
}  // namespace flumo
