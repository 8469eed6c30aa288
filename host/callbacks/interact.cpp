// The callbacks in PF_InData: controls, interruption, registration.
#include "host/callbacks/answer.h"
#include "host/callbacks/refuse.h"
#include "host/callbacks/tables.h"
#include "host/frame.h"
#include "host/instance.h"

namespace flumo::host {

namespace {

/// The one place at which this host takes a new control.
constexpr PF_ParamIndex kAfterTheOthers = -1;

/// The frame that a time means, by the rate of the running frame; without one a step is a frame.
double frame_asked(const Call& call, A_long time, A_long time_step, A_u_long time_scale) {
    if (call.frame) return frame_of_time(call.frame->request.rate, time, time_scale);
    return time_step > 0 ? static_cast<double>(time) / time_step : 0;
}

/// A record whose `unused` field says which loan it is, counted from 1: the effect may move the record.
PF_Err lend_param(Call& call, Value value, PF_ParamDef* param) {
    call.params.push_back({std::move(value)});
    param->unused = static_cast<A_long>(call.params.size());
    call.host.accounting().lend(Lent::kParam);
    return PF_Err_NONE;
}

PF_Err lend_input_layer(Call& call, PF_ParamDef* param) {
    *param = {};
    param->param_type = PF_Param_LAYER;
    if (call.frame) param->u.ld = call.frame->input_record;
    return lend_param(call, Layer{}, param);
}

Value picture_of(Value value, double frame) {
    const auto* source = std::get_if<LayerSource>(&value);
    return source ? Value((*source)(frame)) : value;
}

PF_Err checkout_param(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long time, A_long time_step,
                      A_u_long time_scale, PF_ParamDef* param) {
    return answer_ref(Callback::kCheckoutParam, effect_ref, [&](Call& call) -> PF_Err {
        if (!call.instance)
            return misused(call, MisuseKind::kWrongCall, "checked out a control outside of an instance");
        if (time_scale == 0)
            return misused(call, MisuseKind::kWrongArgument, "checked out a control with a time scale of 0");
        if (index == 0) return lend_input_layer(call, param);
        const auto& controls = call.host.controls();
        if (index < 0 || static_cast<size_t>(index) > controls.size()) {
            if (!call.host.options().lends_unknown_controls) return PF_Err_INVALID_INDEX;
            *param = {};
            return lend_param(call, 0.0, param);
        }
        const Control& control = controls[static_cast<size_t>(index) - 1];
        if (!control.has_value()) {
            *param = control.definition;
            return lend_param(call, 0.0, param);
        }
        const double frame = frame_asked(call, time, time_step, time_scale);
        Value value = picture_of(call.instance->value_at(index, frame), frame);
        write_value(control, value, *param);
        return lend_param(call, std::move(value), param);
    });
}

PF_Err checkin_param(PF_ProgPtr effect_ref, PF_ParamDef* param) {
    return answer_ref(Callback::kCheckinParam, effect_ref, [&](Call& call) -> PF_Err {
        const auto loan = static_cast<size_t>(param->unused);
        if (param->unused <= 0 || loan > call.params.size() || call.params[loan - 1].returned) {
            // An effect that failed half-way checks in all the records it has: noted, not refused.
            misused(call, MisuseKind::kNotCheckedOut, "checked in a control that is not checked out");
            return PF_Err_NONE;
        }
        call.params[loan - 1] = {0.0, true};
        call.host.accounting().take_back(Lent::kParam);
        return PF_Err_NONE;
    });
}

PF_Err add_param(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDefPtr definition) {
    return answer_ref(Callback::kAddParam, effect_ref, [&](Call& call) {
        if (index != kAfterTheOthers)
            return misused(call, MisuseKind::kWrongArgument,
                           "declared a control at a place of its own choice");
        return call.host.add_control(*definition);
    });
}

PF_Err abort_asked(PF_ProgPtr effect_ref) {
    return answer_ref(Callback::kAbort, effect_ref, [&](Call& call) -> PF_Err {
        return call.frame && call.frame->request.abort ? call.frame->request.abort() : PF_Err_NONE;
    });
}

PF_Err progress(PF_ProgPtr effect_ref, A_long, A_long) {
    return answer_ref(Callback::kProgress, effect_ref, [&](Call& call) -> PF_Err {
        return call.frame && call.frame->request.abort ? call.frame->request.abort() : PF_Err_NONE;
    });
}

PF_Err register_ui(PF_ProgPtr effect_ref, PF_CustomUIInfo* info) {
    return answer_ref(Callback::kRegisterUi, effect_ref, [&](Call& call) -> PF_Err {
        call.host.set_custom_ui(*info);
        return PF_Err_NONE;
    });
}

}  // namespace

PF_InteractCallbacks interact_callbacks() {
    PF_InteractCallbacks table{};
    refuse(table.checkout_layer_audio, table.checkin_layer_audio, table.get_audio_data);
    table.checkout_param = checkout_param;
    table.checkin_param = checkin_param;
    table.add_param = add_param;
    table.abort = abort_asked;
    table.progress = progress;
    table.register_ui = register_ui;
    return table;
}

}  // namespace flumo::host
