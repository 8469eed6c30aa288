// Which command calls which function, and what it returns for each exception.
#include <gmock/gmock.h>

#include <climits>
#include <cstring>
#include <stdexcept>

#include "effect/entry/effect_main.h"
#include "effect/identity/effect_strings.h"
#include "effect_api/effect_api.h"
#include "tests/support/hosted_call.h"

namespace flumo::test {
namespace {

PF_Err Send(HostedCall& within, PF_Cmd command, void* extra = nullptr, PF_LayerDef* output = nullptr) {
    return EffectMain(command, &within.in_data, &within.out_data, nullptr, output, extra);
}

// PF_Cmd_RENDER, 11, is one of them: it leaves its output as it is.
TEST(Commands, ThoseWithoutAHandlerDoNothing) {
    const PF_Cmd quiet[] = {2,  9,  10, 11, 12, 13, 14, 16, 17, 18,  19, 20,      21,
                            25, 26, 27, 29, 30, 31, 32, 33, 34, 256, -1, INT_MAX, INT_MIN};
    for (const PF_Cmd command : quiet) {
        HostedCall within;
        PF_LayerDef output;
        std::memset(&within.out_data, 0x5A, sizeof within.out_data);
        std::memset(&output, 0x5A, sizeof output);
        EXPECT_EQ(Send(within, command, nullptr, &output), 0) << command;
        EXPECT_EQ(within.host.faults().count(), 0U) << command << " asks the host";
        for (const auto& [record, size] :
             {std::pair<const void*, size_t>{&within.out_data, sizeof within.out_data},
              {&output, sizeof output}}) {
            const std::string bytes(static_cast<const char*>(record), size);
            EXPECT_EQ(bytes.find_first_not_of('\x5A'), std::string::npos) << command << " writes";
        }
    }
}

TEST(Commands, AboutBoxShowsNameShortVersionAndNotice) {
    HostedCall within;
    EXPECT_EQ(Send(within, PF_Cmd_ABOUT), 0);
    const std::string notice = GetStringPtr(kNoticeRow);
    EXPECT_EQ(within.out_data.return_msg, "Flumo v1.1\r" + notice);
    EXPECT_FALSE(notice.empty());
    EXPECT_LT(notice.size(), 200U) << "the host's message has 256 bytes";
    EXPECT_EQ(notice.find_first_of("\r\n"), std::string::npos);
    EXPECT_TRUE(within.Tidy());
    within.host.faults().fail_every(host::Callback::kAcquireSuite, host::FaultMode::kError);
    EXPECT_EQ(Send(within, PF_Cmd_ABOUT), 516);
}

// Without a basic suite a drawing cannot start, so an error tells that the event went through.
TEST(Commands, EventsReachTheTwoGradientControlsAlone) {
    HostedCall within({.basic_suite = false});
    for (PF_ParamIndex index = -300; index <= 300; ++index) {
        PF_Context context{};
        PF_Context* held = &context;
        PF_EventExtra extra{};
        extra.contextH = &held;
        extra.e_type = PF_Event_DRAW;
        extra.effect_win.index = index;
        extra.effect_win.area = PF_EA_CONTROL;
        EXPECT_EQ(Send(within, PF_Cmd_EVENT, &extra) != 0, index == 26 || index == 60) << index;
        EXPECT_EQ(extra.evt_out_flags, 0) << index;
    }
}

SPErr ThrowNumber(const char*, int32, const void**) {
    throw PF_Err{31};
}

SPErr ThrowText(const char*, int32, const void**) {
    throw std::runtime_error("host failure");
}

TEST(Commands, SequenceCommandsTurnAnyExceptionIntoANumberOthersLetItOut) {
    HostedCall within;
    SPBasicSuite basic = *within.in_data.pica_basicP;
    within.in_data.pica_basicP = &basic;
    within.in_data.sequence_data = within.host.handles().create(1);
    for (const PF_Cmd command :
         {PF_Cmd_ABOUT, PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP, PF_Cmd_SEQUENCE_FLATTEN,
          PF_Cmd_SEQUENCE_SETDOWN, PF_Cmd_GET_FLATTENED_SEQUENCE_DATA}) {
        basic.AcquireSuite = ThrowNumber;
        EXPECT_EQ(Send(within, command), 31) << command;
        basic.AcquireSuite = ThrowText;
        if (command == PF_Cmd_ABOUT) {
            EXPECT_THROW(Send(within, command), std::runtime_error);
        } else {
            EXPECT_EQ(Send(within, command), 4) << command;
        }
    }
    EXPECT_TRUE(within.Tidy());
}

TEST(Registration, TellsTheHostWhoTheEffectIsAndReturnsItsAnswer) {
    const host::Registration told = host::Module(EffectMain, PluginDataEntryFunction).register_plugin();
    EXPECT_EQ(told.name + "|" + told.match_name + "|" + told.category + "|" + told.entry_point,
              "Flumo|Velbrand Flumo|Velbrand|EffectMain");
    EXPECT_THAT((std::array{told.kind, told.api_major, told.api_minor, told.reserved}),
                testing::ElementsAre(0x65464B54, 13, 27, 8));
    const PF_PluginDataCB refuse = [](PF_PluginDataPtr, const A_u_char*, const A_u_char*, const A_u_char*,
                                      const A_u_char*, A_long, A_long, A_long, A_long) { return A_Err{5}; };
    EXPECT_EQ(PluginDataEntryFunction(nullptr, refuse, nullptr, nullptr, nullptr), 5);
}

}  // namespace
}  // namespace flumo::test
