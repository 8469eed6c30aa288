// A small effect without a fault, or with one: its entry point, controls and sequence data.
#include <algorithm>
#include <stdexcept>

#include "tests/judge/broken/panel.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace flumo::broken {

namespace {

constexpr PF_OutFlags kFlags = PF_OutFlag_NON_PARAM_VARY | PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING |
                               PF_OutFlag_CUSTOM_UI | PF_OutFlag_DEEP_COLOR_AWARE;
constexpr PF_OutFlags2 kFlags2 = PF_OutFlag2_SUPPORTS_SMART_RENDER | PF_OutFlag2_FLOAT_COLOR_AWARE |
                                 PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA |
                                 PF_OutFlag2_SUPPORTS_THREADED_RENDERING;

PF_Err new_number(const PF_InData& in, int number, PF_Handle* place) {
    return new_handle(in, number, place, "KeepsHalfASequence");
}

PF_Err global_setup(const PF_InData& in, PF_OutData& out) {
    out.my_version = PF_VERSION(1, 0, 0, PF_Stage_RELEASE, 0);
    out.out_flags = kFlags;
    out.out_flags2 = kFlags2;
    if (is("HidesItsInterface")) out.out_flags &= ~PF_OutFlag_CUSTOM_UI;
    if (is("HidesTimeDependence")) out.out_flags &= ~PF_OutFlag_NON_PARAM_VARY;
    if (is("ClaimsFloatsAlone")) out.out_flags2 &= ~PF_OutFlag2_SUPPORTS_SMART_RENDER;
    if (is("TrustsBasicSuite") && !in.pica_basicP->AcquireSuite) return PF_Err_BAD_CALLBACK_PARAM;
    return new_number(in, 1, &out.global_data);
}

PF_ParamDef control(PF_ParamType type, const char* name, int disk_id) {
    PF_ParamDef definition{};
    definition.param_type = type;
    std::strncpy(definition.name, name, sizeof definition.name - 1);
    definition.uu.id = disk_id;
    return definition;
}

PF_ParamDef amount() {
    PF_ParamDef definition = control(PF_Param_FLOAT_SLIDER, "Amount", 2);
    definition.u.fs_d.valid_max = definition.u.fs_d.slider_max = 100;
    definition.u.fs_d.value = definition.u.fs_d.dephault = is("DefaultOutOfRange") ? 150 : 50;
    return definition;
}

PF_ParamDef shade() {
    PF_ParamDef definition = control(PF_Param_ARBITRARY_DATA, "Shade", 4);
    definition.ui_flags = PF_PUI_CONTROL;
    definition.ui_width = 150;
    definition.ui_height = 50;
    definition.u.arb_d.id = 4;
    definition.u.arb_d.refconPV = kRefcon;
    return definition;
}

PF_Err add(const PF_InData& in, PF_OutData& out, PF_ParamDef definition) {
    ++out.num_params;
    if (definition.param_type != PF_Param_ARBITRARY_DATA)
        return in.inter.add_param(in.effect_ref, -1, &definition);
    PF_ArbitraryH& dephault = definition.u.arb_d.dephault;
    if (const PF_Err error = new_shade(in, &dephault, new Shade)) return error;
    const PF_Err error = in.inter.add_param(in.effect_ref, -1, &definition);
    if (error) dispose_shade(in, dephault);
    return error;
}

PF_Err params_setup(const PF_InData& in, PF_OutData& out) {
    const PF_ParamDef controls[] = {
        control(PF_Param_GROUP_START, "Group", 1), amount(),
        control(PF_Param_LAYER, "Picture", is("DuplicateDiskId") ? 2 : 3), shade(),
        control(is("UnbalancedGroups") ? PF_Param_GROUP_START : PF_Param_GROUP_END, "End", 5)};
    out.num_params = 1;
    for (const PF_ParamDef& definition : controls) {
        if (const PF_Err error = add(in, out, definition)) return error;
    }
    PF_CustomUIInfo info{};
    info.events = PF_CustomEFlag_EFFECT;
    return in.inter.register_ui(in.effect_ref, &info);
}

/// Takes the place of the data that there is, if that works.
PF_Err replace_sequence(const PF_InData& in, PF_OutData& out, int number, bool disposes) {
    PF_Handle next = nullptr;
    if (const PF_Err error = new_number(in, number, &next)) return error;
    if (disposes && in.sequence_data) in.utils->host_dispose_handle(in.sequence_data);
    out.sequence_data = next;
    return PF_Err_NONE;
}

PF_Err dispose(const PF_InData& in, PF_Handle handle, bool keeps) {
    if (handle && !keeps) in.utils->host_dispose_handle(handle);
    return PF_Err_NONE;
}

/// Live data in the place of stored or of live data, which is the host's to dispose of.
PF_Err resetup(const PF_InData& in, PF_OutData& out) {
    is_being_saved = false;
    return replace_sequence(in, out, is("RefusesResetData") ? kStored : kLive, is("DisposesOfResetData"));
}

PF_Err flatten(const PF_InData& in, PF_OutData& out) {
    is_being_saved = true;
    return replace_sequence(in, out, kStored, !is("KeepsSequence"));
}

PF_Err answer_other(PF_Cmd command, const void* extra) {
    if (is("TrustsExtra") && command == PF_Cmd_USER_CHANGED_PARAM && *static_cast<const int*>(extra) < 0)
        return PF_Err_INVALID_INDEX;
    if (is("ThrowsOutOfEntry") && command == PF_Cmd_UNUSED_0) throw std::runtime_error("out of the entry");
    const bool is_known = command >= PF_Cmd_ABOUT && command <= PF_Cmd_GET_FLATTENED_SEQUENCE_DATA;
    return is("AnswersUnknownCommands") && !is_known ? PF_Err_INTERNAL_STRUCT_DAMAGED : PF_Err_NONE;
}

PF_Err answer(PF_Cmd command, const PF_InData& in, PF_OutData& out, PF_ParamDef** params, void* extra) {
    switch (command) {
        case PF_Cmd_ABOUT:
            if (!is("SaysNothingAbout")) in.utils->ansi.sprintf(out.return_msg, "a small effect");
            return PF_Err_NONE;
        case PF_Cmd_GLOBAL_SETUP:
            return global_setup(in, out);
        case PF_Cmd_GLOBAL_SETDOWN:
            return dispose(in, in.global_data, is("KeepsGlobalData"));
        case PF_Cmd_PARAMS_SETUP:
            return params_setup(in, out);
        case PF_Cmd_SEQUENCE_SETUP:
            return replace_sequence(in, out, kLive, false);
        case PF_Cmd_SEQUENCE_RESETUP:
            return resetup(in, out);
        case PF_Cmd_SEQUENCE_FLATTEN:
            return flatten(in, out);
        case PF_Cmd_GET_FLATTENED_SEQUENCE_DATA:
            return replace_sequence(in, out, kStored, is("FreesLiveSequence"));
        case PF_Cmd_SEQUENCE_SETDOWN:
            return dispose(in, in.sequence_data, false);
        case PF_Cmd_ARBITRARY_CALLBACK:
            return answer_arbitrary(in, *static_cast<PF_ArbParamsExtra*>(extra));
        case PF_Cmd_SMART_PRE_RENDER:
            return pre_render(in, *static_cast<PF_PreRenderExtra*>(extra));
        case PF_Cmd_SMART_RENDER:
            return render(in, params, *static_cast<PF_SmartRenderExtra*>(extra));
        case PF_Cmd_EVENT:
            return answer_event(in, params, *static_cast<PF_EventExtra*>(extra));
        default:
            return answer_other(command, extra);
    }
}

const A_u_char* bytes(const char* text) {
    return reinterpret_cast<const A_u_char*>(text);
}

}  // namespace

}  // namespace flumo::broken

EXPORTED PF_Err EffectMain(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params, PF_LayerDef*,
                           void* extra) {
    return flumo::broken::answer(command, *in, *out, params, extra);
}

EXPORTED PF_Err PluginDataEntryFunction(PF_PluginDataPtr record, PF_PluginDataCB take, SPBasicSuite*,
                                        const char*, const char*) {
    using namespace flumo::broken;
    return take(record, bytes("Small"), bytes(is("HidesItsName") ? "" : "Tests Small"), bytes("Tests"),
                bytes("EffectMain"), kEffectPluginKind, PF_AE220_PLUG_IN_VERSION, PF_AE220_PLUG_IN_SUBVERS,
                8);
}
