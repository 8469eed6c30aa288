// The front door: which command reaches whom, and what comes back of what is thrown.
#include <gmock/gmock.h>

#include <climits>
#include <cstring>
#include <stdexcept>
#include <string>

#include "effect/entry/effect_main.h"
#include "effect/gradient/gradient.h"
#include "effect/identity/effect_strings.h"
#include "fake_host.h"

namespace flumo {
namespace {

using test::FakeHost;
using testing::IsEmpty;
using testing::StrEq;

PF_Err Send(FakeHost& host, PF_Cmd command, void* extra = nullptr) {
    return EffectMain(command, &host.in_data, &host.out_data, nullptr, nullptr, extra);
}

std::string BytesOf(const PF_OutData& out_data) {
    return {reinterpret_cast<const char*>(&out_data), sizeof out_data};
}

TEST(Commands, ThoseWithoutAHandlerDoNothing) {
    const PF_Cmd quiet[] = {2,  9,  10, 11, 12, 13, 14, 16, 17, 18,  19, 20,      21,
                            25, 26, 27, 29, 30, 31, 32, 33, 34, 256, -1, INT_MAX, INT_MIN};
    for (const PF_Cmd command : quiet) {
        FakeHost host;
        const std::string before = BytesOf(host.out_data);
        EXPECT_EQ(Send(host, command), 0) << command;
        EXPECT_THAT(host.log, IsEmpty()) << command;
        EXPECT_EQ(BytesOf(host.out_data), before) << command;
    }
}

TEST(Commands, RenderLeavesItsOutputAlone) {
    FakeHost host;
    PF_LayerDef output;
    std::memset(&output, 0x5A, sizeof output);
    const PF_LayerDef before = output;
    EXPECT_EQ(EffectMain(PF_Cmd_RENDER, &host.in_data, &host.out_data, nullptr, &output, nullptr), 0);
    EXPECT_EQ(std::memcmp(&output, &before, sizeof output), 0);
}

TEST(Commands, AboutBoxShowsNameShortVersionAndNotice) {
    FakeHost host;
    EXPECT_EQ(Send(host, PF_Cmd_ABOUT), 0);
    EXPECT_THAT(host.out_data.return_msg, StrEq(std::string("Flumo v1.1\r") + GetStringPtr(kNoticeRow)));
    EXPECT_THAT(host.log, testing::ElementsAre("acquire PF ANSI Suite 1", "release PF ANSI Suite 1"));
    host.missing_suites = {"PF ANSI Suite 1"};
    EXPECT_EQ(Send(host, PF_Cmd_ABOUT), 516);
}

// Without a basic suite a drawing cannot start, so an error tells that the event went through.
TEST(Commands, EventsReachTheTwoGradientControlsAlone) {
    for (PF_ParamIndex index = -300; index <= 300; ++index) {
        FakeHost host;
        host.in_data.pica_basicP = nullptr;
        PF_Context context{};
        PF_Context* held = &context;
        PF_EventExtra extra{};
        extra.contextH = &held;
        extra.e_type = PF_Event_DRAW;
        extra.effect_win.index = index;
        extra.effect_win.area = PF_EA_CONTROL;
        const bool reached = Send(host, PF_Cmd_EVENT, &extra) != 0;
        EXPECT_EQ(reached, index == 26 || index == 60) << index;
        EXPECT_EQ(extra.evt_out_flags, 0) << index;
    }
}

PF_ArbParamsExtra NewGradient(const char* refcon, PF_ArbitraryH* slot) {
    PF_ArbParamsExtra extra{};
    extra.which_function = PF_Arbitrary_NEW_FUNC;
    std::memcpy(&extra.u.new_func_params.refconPV, refcon, sizeof(void*));
    extra.u.new_func_params.arbPH = slot;
    return extra;
}

TEST(Commands, ArbitraryCallbacksOfOthersAreNotOurs) {
    FakeHost host;
    PF_ArbitraryH slot = nullptr;
    PF_ArbParamsExtra foreign = NewGradient("TNEIDARG", &slot);
    EXPECT_EQ(Send(host, PF_Cmd_ARBITRARY_CALLBACK, &foreign), 514);
    EXPECT_EQ(slot, nullptr);

    PF_ArbParamsExtra ours = NewGradient("GRADIENT", &slot);
    EXPECT_EQ(Send(host, PF_Cmd_ARBITRARY_CALLBACK, &ours), 0);
    ASSERT_NE(slot, nullptr);
    delete static_cast<GradientRecord*>(*slot)->stops;
}

TEST(Commands, ParametersAreSetUpThroughTheDoor) {
    FakeHost host;
    EXPECT_EQ(Send(host, PF_Cmd_PARAMS_SETUP), 0);
    EXPECT_EQ(host.out_data.num_params, 87);
    for (const std::size_t at : {25U, 59U}) {
        delete static_cast<GradientRecord*>(*host.params[at].u.arb_d.dephault)->stops;
    }
}

// Smart commands carry neither controls nor output.
TEST(Commands, PreRenderAsksForTheInputLayer) {
    static A_long asked[2] = {-1, -1};
    FakeHost host;
    PF_PreRenderInput input{};
    PF_PreRenderOutput output{};
    PF_PreRenderCallbacks callbacks{};
    callbacks.checkout_layer = [](PF_ProgPtr, PF_ParamIndex index, A_long id, const PF_RenderRequest*, A_long,
                                  A_long, A_u_long, PF_CheckoutResult*) {
        asked[0] = index;
        asked[1] = id;
        return PF_Err{23};
    };
    PF_PreRenderExtra extra{&input, &output, &callbacks};
    EXPECT_EQ(Send(host, PF_Cmd_SMART_PRE_RENDER, &extra), 23);
    EXPECT_THAT(asked, testing::ElementsAre(0, 0));
}

TEST(Commands, RenderingReadsTheControlsAndReportsTheirFailure) {
    static int checkins;
    checkins = 0;
    FakeHost host;
    host.fail_checkout = 1;
    PF_SmartRenderCallbacks callbacks{};
    callbacks.checkin_layer_pixels = [](PF_ProgPtr, A_long) { return PF_Err{++checkins}; };
    PF_SmartRenderInput input{};
    PF_SmartRenderExtra extra{&input, &callbacks};
    EXPECT_EQ(Send(host, PF_Cmd_SMART_RENDER, &extra), host.failure);
    EXPECT_EQ(host.checkins, 72);
    EXPECT_EQ(checkins, 1);
}

const PF_Cmd kSequenceCommands[] = {PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP, PF_Cmd_SEQUENCE_FLATTEN,
                                    PF_Cmd_SEQUENCE_SETDOWN, PF_Cmd_GET_FLATTENED_SEQUENCE_DATA};

TEST(Commands, SequenceCommandsReportAMissingSuite) {
    for (const PF_Cmd command : kSequenceCommands) {
        FakeHost host;
        host.in_data.sequence_data = host.NewHandle(1);
        host.missing_suites = {"PF Handle Suite 2"};
        EXPECT_EQ(Send(host, command), 516) << command;
        host.in_data.pica_basicP = nullptr;
        EXPECT_EQ(Send(host, command), 516) << command;
    }
}

TEST(Commands, SequenceCommandsTurnAnyOtherExceptionIntoLackOfMemory) {
    for (const PF_Cmd command : kSequenceCommands) {
        if (command == PF_Cmd_SEQUENCE_SETDOWN) continue;  // it allocates nothing
        FakeHost host;
        host.in_data.sequence_data = host.NewHandle(1);
        host.on_call = [] { throw std::runtime_error("host trouble"); };
        EXPECT_EQ(Send(host, command), 4) << command;
        host.on_call = [] { throw PF_Err{31}; };
        EXPECT_EQ(Send(host, command), 31) << command;
        EXPECT_TRUE(host.AllGivenBack()) << command;
    }
}

TEST(Commands, OtherCommandsLetForeignExceptionsOut) {
    FakeHost host;
    host.on_call = [] { throw PF_Err{31}; };
    EXPECT_EQ(Send(host, PF_Cmd_PARAMS_SETUP), 31);
    host.on_call = [] { throw std::runtime_error("host trouble"); };
    EXPECT_THROW(Send(host, PF_Cmd_PARAMS_SETUP), std::runtime_error);
    EXPECT_TRUE(host.AllGivenBack());
}

struct Registration {
    PF_PluginDataPtr data;
    std::string texts[4];
    A_long numbers[4];
} registration;

A_Err Register(PF_PluginDataPtr data, const A_u_char* name, const A_u_char* match_name,
               const A_u_char* category, const A_u_char* entry_point, A_long kind, A_long major, A_long minor,
               A_long reserved) {
    const auto text = [](const A_u_char* bytes) { return reinterpret_cast<const char*>(bytes); };
    registration = {data,
                    {text(name), text(match_name), text(category), text(entry_point)},
                    {kind, major, minor, reserved}};
    return 5;
}

TEST(Registration, TellsTheHostWhoTheEffectIs) {
    const auto data = reinterpret_cast<PF_PluginDataPtr>(&registration);
    EXPECT_EQ(PluginDataEntryFunction(data, Register, nullptr, nullptr, nullptr), 5);
    EXPECT_EQ(registration.data, data);
    EXPECT_THAT(registration.texts,
                testing::ElementsAre("Flumo", "Velbrand Flumo", "Velbrand", "EffectMain"));
    EXPECT_THAT(registration.numbers, testing::ElementsAre(0x65464B54, 13, 27, 8));
}

}  // namespace
}  // namespace flumo
