#include "tests/host/scripted_effect.h"

#include <cstdio>
#include <cstring>

namespace flumo::host::test {

namespace {

ScriptedEffect* scripted = nullptr;

PF_Err effect_main(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params, PF_LayerDef*,
                   void* extra) {
    EffectCall call{*in, *out, params, extra};
    return scripted->answer(command, call);
}

const A_u_char* bytes(const char* text) {
    return reinterpret_cast<const A_u_char*>(text);
}

PF_Err plugin_data_entry(PF_PluginDataPtr record, PF_PluginDataCB take, SPBasicSuite*, const char*,
                         const char*) {
    return take(record, bytes("Scripted"), bytes("Tests Scripted"), bytes("Tests"), bytes("EffectMain"),
                kEffectPluginKind, 13, 27, 8);
}

double& number_in(PF_Handle handle) {
    return *static_cast<double*>(*handle);
}

PF_Handle new_number(const PF_InData& in, double number) {
    const PF_Handle handle = in.utils->host_new_handle(sizeof number);
    if (handle) number_in(handle) = number;
    return handle;
}

PF_ParamDef control(PF_ParamType type, const char* name, int disk_id) {
    PF_ParamDef definition{};
    definition.param_type = type;
    std::snprintf(definition.name, sizeof definition.name, "%s", name);
    definition.uu.id = disk_id;
    return definition;
}

std::vector<PF_ParamDef> plain_controls() {
    std::vector<PF_ParamDef> list(kControlsEnd);
    list[kOuterGroup] = control(PF_Param_GROUP_START, "Outer", 101);
    list[kAmount] = control(PF_Param_FLOAT_SLIDER, "Amount", 102);
    list[kAmount].u.fs_d.value = list[kAmount].u.fs_d.dephault = 2.5;
    list[kAmount].u.fs_d.valid_min = -10;
    list[kAmount].u.fs_d.valid_max = 10;
    list[kAmount].u.fs_d.precision = 1;
    list[kCount] = control(PF_Param_SLIDER, "Count", 103);
    list[kCount].u.sd.valid_max = 100;
    list[kCount].u.sd.value = list[kCount].u.sd.dephault = 4;
    list[kTurn] = control(PF_Param_ANGLE, "Turn", 104);
    list[kTurn].u.ad.dephault = 90 << 16;
    list[kSwitch] = control(PF_Param_CHECKBOX, "Switch", 105);
    list[kSwitch].u.bd.dephault = 1;
    list[kMode] = control(PF_Param_POPUP, "Mode", 106);
    list[kMode].flags = PF_ParamFlag_CANNOT_TIME_VARY;
    list[kMode].u.pd.num_choices = 3;
    list[kMode].u.pd.dephault = 2;
    list[kMode].u.pd.u.namesptr = "Soft|Hard";
    list[kInnerGroup] = control(PF_Param_GROUP_START, "Inner", 107);
    list[kPicture] = control(PF_Param_LAYER, "Picture", 108);
    list[kPicture].u.ld.dephault = PF_LayerDefault_MYSELF;
    list[kNumber] = control(PF_Param_ARBITRARY_DATA, "Number", 109);
    list[kNumber].ui_flags = PF_PUI_CONTROL;
    list[kNumber].u.arb_d.id = 109;
    list[kInnerGroupEnd] = control(PF_Param_GROUP_END, "", 110);
    list[kOuterGroupEnd] = control(PF_Param_GROUP_END, "", 111);
    list.erase(list.begin());
    return list;
}

PF_Err params_setup(EffectCall& call) {
    call.out.num_params = 1;
    for (PF_ParamDef definition : scripted->controls) {
        if (definition.param_type == PF_Param_ARBITRARY_DATA)
            definition.u.arb_d.dephault = new_number(call.in, 7);
        ++call.out.num_params;
        if (const PF_Err error = call.in.inter.add_param(call.in.effect_ref, -1, &definition)) return error;
    }
    return PF_Err_NONE;
}

PF_Err arbitrary(EffectCall& call) {
    const auto& extra = *static_cast<PF_ArbParamsExtra*>(call.extra);
    const auto& u = extra.u;
    const auto make = [&](PF_Handle* place, double number) {
        *place = new_number(call.in, number);
        return *place ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
    };
    switch (extra.which_function) {
        case PF_Arbitrary_DISPOSE_FUNC:
            call.in.utils->host_dispose_handle(u.dispose_func_params.arbH);
            return PF_Err_NONE;
        case PF_Arbitrary_COPY_FUNC:
            return make(u.copy_func_params.dst_arbPH, number_in(u.copy_func_params.src_arbH));
        case PF_Arbitrary_UNFLATTEN_FUNC: {
            double number;
            std::memcpy(&number, u.unflatten_func_params.flat_dataPV, sizeof number);
            return make(u.unflatten_func_params.arbPH, number);
        }
        case PF_Arbitrary_INTERP_FUNC: {
            const double left = number_in(u.interp_func_params.left_arbH);
            const double right = number_in(u.interp_func_params.right_arbH);
            return make(u.interp_func_params.interpPH, left + (right - left) * u.interp_func_params.tF);
        }
        case PF_Arbitrary_PRINT_SIZE_FUNC:
            *u.print_size_func_params.print_sizePLu = 32;
            return PF_Err_NONE;
        case PF_Arbitrary_PRINT_FUNC:
            std::snprintf(u.print_func_params.print_bufferPC, 32, "number %g",
                          number_in(u.print_func_params.arbH));
            return PF_Err_NONE;
        default:
            return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    }
}

void fill_red(PF_EffectWorld& world) {
    for (A_long y = 0; y < world.height; ++y) {
        auto* row = reinterpret_cast<PF_Pixel*>(reinterpret_cast<std::byte*>(world.data) +
                                                static_cast<std::ptrdiff_t>(y) * world.rowbytes);
        std::fill_n(row, world.width, PF_Pixel{255, 255, 0, 0});
    }
}

}  // namespace

PF_Err plain_pre_render(EffectCall& call) {
    PF_PreRenderExtra& extra = call.pre_render();
    PF_CheckoutResult result{};
    const PF_Err error =
        extra.cb->checkout_layer(call.in.effect_ref, 0, 0, &extra.input->output_request, call.in.current_time,
                                 call.in.time_step, call.in.time_scale, &result);
    extra.output->result_rect = result.result_rect;
    extra.output->max_result_rect = result.max_result_rect;
    return error;
}

PF_Err plain_render(EffectCall& call) {
    PF_SmartRenderCallbacks& cb = *call.render().cb;
    PF_EffectWorld* input = nullptr;
    PF_EffectWorld* output = nullptr;
    PF_Err error = cb.checkout_layer_pixels(call.in.effect_ref, 0, &input);
    if (!error) error = cb.checkout_output(call.in.effect_ref, &output);
    if (!error) fill_red(*output);
    cb.checkin_layer_pixels(call.in.effect_ref, 0);
    return error;
}

ScriptedEffect::ScriptedEffect() : controls(plain_controls()), module(effect_main, plugin_data_entry) {
    on = {{PF_Cmd_PARAMS_SETUP, params_setup},
          {PF_Cmd_ARBITRARY_CALLBACK, arbitrary},
          {PF_Cmd_SMART_PRE_RENDER, plain_pre_render},
          {PF_Cmd_SMART_RENDER, plain_render}};
    scripted = this;
}

ScriptedEffect::~ScriptedEffect() {
    scripted = nullptr;
}

PF_Err ScriptedEffect::answer(PF_Cmd command, EffectCall& call) {
    const auto handler = on.find(command);
    return handler == on.end() ? PF_Err_NONE : handler->second(call);
}

}  // namespace flumo::host::test
