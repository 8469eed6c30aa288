#include "effect/entry/commands.h"

#include "effect/entry/global.h"
#include "effect/entry/gradient_param_index_set.h"
#include "effect/entry/sequence.h"
#include "effect/gradient/callbacks/gradient_callbacks.h"
#include "effect/gradient/callbacks/gradient_events.h"
#include "effect/identity/effect_strings.h"
#include "effect/licence/licence.h"
#include "effect/params/params_setup.h"
#include "effect/render/smart_pre_render.h"
#include "effect/render/smart_render.h"
#include "effect/suites/errors.h"
#include "effect/suites/suite_handler.h"

namespace flumo {
namespace {

PF_Err About(const CommandCall& call) {
    if (LicenceAbout(call.in_data, call.out_data)) return PF_Err_NONE;
    AEGP_SuiteHandler suites(call.in_data->pica_basicP);
    // The short form of the version, 1.1, is meant.
    suites.AnsiSuite().sprintf(call.out_data->return_msg, "%s v%d.%d\r%s", GetStringPtr(kNameRow), 1, 1,
                               GetStringPtr(kNoticeRow));
    return PF_Err_NONE;
}

PF_Err Dialog(const CommandCall& call) {
    return LicenceDialog(call.in_data);
}

/// The panel is static: no control's change moves another.
PF_Err UserChangedParam(const CommandCall&) {
    return PF_Err_NONE;
}

PF_Err Event(const CommandCall& call) {
    auto* extra = static_cast<PF_EventExtra*>(call.extra);
    if (!GradientParamIndices().Contains(extra->effect_win.index)) return PF_Err_NONE;
    return HandleGradientEvent(call.in_data, call.out_data, call.params, extra);
}

PF_Err ArbitraryCallback(const CommandCall& call) {
    auto* extra = static_cast<PF_ArbParamsExtra*>(call.extra);
    if (!IsGradientCallback(extra)) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    return DispatchGradientCallback(call.in_data, call.out_data, extra);
}

PF_Err PreRender(const CommandCall& call) {
    return SmartPreRender(call.in_data, static_cast<PF_PreRenderExtra*>(call.extra));
}

PF_Err Render(const CommandCall& call) {
    return SmartRender(call.in_data, call.out_data, static_cast<PF_SmartRenderExtra*>(call.extra));
}

using DataHandler = PF_Err (*)(PF_InData* in_data, PF_OutData* out_data);

template <DataHandler kHandler>
PF_Err Plain(const CommandCall& call) {
    return kHandler(call.in_data, call.out_data);
}

/// A sequence command: whatever its handler throws comes back as a number.
template <DataHandler kHandler>
PF_Err Guarded(const CommandCall& call) {
    return CommandResult([&call] { return kHandler(call.in_data, call.out_data); });
}

struct Command {
    PF_Cmd number;
    PF_Err (*run)(const CommandCall& call);
};

/// The commands that do something. Among those without a row is PF_Cmd_RENDER: frames exist only through
/// the smart commands.
constexpr Command kCommands[] = {
    {PF_Cmd_ABOUT, About},
    {PF_Cmd_GLOBAL_SETUP, Plain<GlobalSetup>},
    {PF_Cmd_GLOBAL_SETDOWN, Plain<GlobalSetdown>},
    {PF_Cmd_PARAMS_SETUP, Plain<ParamsSetup>},
    {PF_Cmd_SEQUENCE_SETUP, Guarded<SequenceSetup>},
    {PF_Cmd_SEQUENCE_RESETUP, Guarded<SequenceResetup>},
    {PF_Cmd_SEQUENCE_FLATTEN, Guarded<SequenceFlatten>},
    {PF_Cmd_SEQUENCE_SETDOWN, Guarded<SequenceSetdown>},
    {PF_Cmd_DO_DIALOG, Dialog},
    {PF_Cmd_USER_CHANGED_PARAM, UserChangedParam},
    {PF_Cmd_EVENT, Event},
    {PF_Cmd_ARBITRARY_CALLBACK, ArbitraryCallback},
    {PF_Cmd_SMART_PRE_RENDER, PreRender},
    {PF_Cmd_SMART_RENDER, Render},
    {PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, Guarded<GetFlattenedSequenceData>},
};

}  // namespace

PF_Err RunCommand(PF_Cmd command, const CommandCall& call) {
    for (const Command& row : kCommands) {
        if (row.number == command) return row.run(call);
    }
    return PF_Err_NONE;
}

}  // namespace flumo
