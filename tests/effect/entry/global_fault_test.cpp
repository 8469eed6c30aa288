// Global set-up and set-down over a GL layer that fails on demand, and all commands behind a licence gate
// that refuses on demand: this program brings its own functions of both, so the real ones are not linked.
#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

#include "effect/entry/effect_main.h"
#include "effect/entry/global.h"
#include "effect/gpu/gl/fault.h"
#include "effect/gpu/global_context.h"
#include "effect/licence/licence.h"
#include "host/callbacks/tables.h"
#include "tests/support/hosted_call.h"

namespace flumo {
namespace {

std::function<void()> gl = [] {};

struct Gate {
    std::function<bool()> allows = [] { return true; };
    bool takes_about = false;
    PF_Err dialog = PF_Err_NONE, setup = PF_Err_NONE;
} gate;

}  // namespace

void AESDK_OpenGL_SetUpCommonContext() {
    gl();
}
void AESDK_OpenGL_TearDownContexts() {
    gl();
}

bool LicenceAllowsCommand(PF_Cmd, PF_InData*, PF_OutData*) {
    return gate.allows();
}
bool LicenceAbout(PF_InData*, PF_OutData*) {
    return gate.takes_about;
}
PF_Err LicenceDialog(PF_InData*) {
    return gate.dialog;
}
PF_Err LicenceSetup(PF_InData*, PF_OutData*) {
    return gate.setup;
}
bool LicenceAllowsFrame() {
    return true;
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
    {[] { throw std::runtime_error("driver failure"); }, 4},
};

void expect_set_up_to_end(const std::function<void()>& happens, PF_Err result, bool basic_suite = true) {
    HostedCall within({.basic_suite = basic_suite});
    gl = happens;
    EXPECT_EQ(GlobalSetup(&within.in_data, &within.out_data), result);
    EXPECT_EQ(within.out_data.my_version, 566784U);
    EXPECT_EQ(within.out_data.out_flags, 33588336);
    EXPECT_EQ(within.out_data.out_flags2, 142611456);
    EXPECT_EQ(within.out_data.global_data, nullptr);
    EXPECT_EQ(within.host.faults().count(), 0U) << "no global data is made";
}

TEST(GlobalFaults, FirstFailureEndsTheSetUp) {
    for (const Fault& fault : kFaults)
        expect_set_up_to_end(fault.happens, fault.result);
    const auto unreached = [] { ADD_FAILURE() << "a context is made"; };
    expect_set_up_to_end(unreached, 516, false);
    gate.setup = 31;
    expect_set_up_to_end(unreached, 31);
    gate = {};
}

// Whatever is missing, the sequence handle goes back, and not through the suite.
TEST(GlobalFaults, SetdownReturnsTheSequenceHandleAndKeepsTheGlobalOneAfterAFailure) {
    for (size_t i = 0; i <= std::size(kFaults); ++i) {
        host::HostOptions options;
        const bool fails = i < std::size(kFaults);
        if (!fails) options.missing_suites = {{"PF Handle Suite", 2}};
        HostedCall within(options);
        host::HandleTable& handles = within.host.handles();
        gl = fails ? kFaults[i].happens : [] {};
        within.in_data.global_data = handles.create(4);
        within.in_data.sequence_data = within.out_data.sequence_data = handles.create(1);
        EXPECT_EQ(GlobalSetdown(&within.in_data, &within.out_data), fails ? kFaults[i].result : 516);
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
        // The host's number is 1; what a handle was filled with stays under Premiere, which does not know the
        // registration.
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

std::string registered;

/// Takes note of a registration, and refuses it.
SPErr AcquireRefusingRegistry(const char* name, int32 version, const void** suite) {
    static const AEGP_UtilitySuite3 registry = [] {
        AEGP_UtilitySuite3 table{};
        table.AEGP_RegisterWithAEGP = [](AEGP_GlobalRefcon refcon, const A_char* as, AEGP_PluginID*) {
            registered = refcon ? "with a refcon" : as;
            return A_Err{31};
        };
        return table;
    }();
    *suite = host::find_standing_suite(name, version);
    if (*suite == &host::utility_suite()) *suite = &registry;
    return PF_Err_NONE;
}

TEST(GlobalData, IsNotStoredWhenTheHostRefusesTheRegistration) {
    gl = [] {};
    HostedCall within;
    SPBasicSuite basic = *within.in_data.pica_basicP;
    basic.AcquireSuite = AcquireRefusingRegistry;
    basic.ReleaseSuite = [](const char*, int32) -> SPErr { return PF_Err_NONE; };
    within.in_data.pica_basicP = &basic;
    EXPECT_EQ(GlobalSetup(&within.in_data, &within.out_data), 31);
    EXPECT_EQ(registered, "Flumo");
    EXPECT_EQ(within.out_data.global_data, nullptr);
}

TEST(LicenceGate, IsAskedBeforeACommandRunsAndItsExceptionsGoOut) {
    HostedCall within;
    const auto send = [&within](PF_Cmd command) {
        return EffectMain(command, &within.in_data, &within.out_data, nullptr, nullptr, nullptr);
    };
    gate.dialog = 31;
    EXPECT_EQ(send(PF_Cmd_DO_DIALOG), 31);
    gate.takes_about = true;
    EXPECT_EQ(send(PF_Cmd_ABOUT), 0);
    EXPECT_STREQ(within.out_data.return_msg, "") << "the gate has shown its own";
    int asked = 0;
    gate.allows = [&asked] { return ++asked == 0; };
    for (const PF_Cmd command : {PF_Cmd_GLOBAL_SETUP, PF_Cmd_SEQUENCE_FLATTEN, PF_Cmd_DO_DIALOG,
                                 PF_Cmd_RENDER, PF_Cmd{29}, PF_Cmd{-1}})
        EXPECT_EQ(send(command), 0) << command;
    EXPECT_EQ(asked, 6) << "commands that do nothing are asked for, too";
    EXPECT_EQ(within.out_data.my_version, 0U);
    gate.allows = []() -> bool { throw PF_Err{32}; };
    EXPECT_THROW(send(PF_Cmd_ABOUT), PF_Err);
    gate = {};
}

}  // namespace
}  // namespace test
}  // namespace flumo
