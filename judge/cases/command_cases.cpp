// Level 2: commands that hosts send although most effects do nothing with them.
#include <array>

#include "judge/cases/case_table.h"
#include "judge/engine/fixture.h"

namespace flumo::judge {

namespace {

constexpr PF_Cmd kOptionalCommands[] = {PF_Cmd_FRAME_SETUP,         PF_Cmd_FRAME_SETDOWN,
                                        PF_Cmd_QUERY_DYNAMIC_FLAGS, PF_Cmd_USER_CHANGED_PARAM,
                                        PF_Cmd_UPDATE_PARAMS_UI,    PF_Cmd_GET_EXTERNAL_DEPENDENCIES,
                                        PF_Cmd_COMPLETELY_GENERAL};

/// Larger than the record of any of these commands. Its first number is 1, the index of a control.
struct Extra {
    alignas(16) std::array<A_long, 64> words{1};
};

void send(Fixture& fixture, PF_Cmd command, void* extra) {
    const auto instance = fixture.host().new_instance();
    const host::Outcome outcome = instance->send(command, extra);
    fixture.context().expect(outcome.error == PF_Err_NONE, "no error", host::error_name(outcome.error));
    fixture.context().expect(outcome.message.empty(), "no message to the user", outcome.message);
    fixture.context().expect(outcome.out.sequence_data == instance->sequence_data(), "the same sequence data",
                             "others");
}

}  // namespace

void play_optional_commands(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for (const PF_Cmd command : kOptionalCommands) {
            fixture.step(host::command_name(command) + "-extra", [&] {
                Extra extra;
                send(fixture, command, &extra);
            });
            fixture.step(host::command_name(command) + "-null", [&] { send(fixture, command, nullptr); });
        }
    });
}

}  // namespace flumo::judge
