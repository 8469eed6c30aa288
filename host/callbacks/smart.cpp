// Layers and worlds of a frame, in pre-render and in render.
#include <algorithm>

#include "host/callbacks/answer.h"
#include "host/callbacks/tables.h"
#include "host/frame.h"
#include "host/instance.h"

namespace flumo::host {

namespace {

/// The picture of a layer control at the running frame; null when none is chosen.
Layer layer_of_control(Call& call, PF_ParamIndex index, A_long time, A_u_long time_scale) {
    const double frame = frame_of_time(call.frame->request.rate, time, time_scale);
    Value value = call.instance->value_at(index, frame);
    if (const auto* source = std::get_if<LayerSource>(&value)) return (*source)(frame);
    const Layer* layer = std::get_if<Layer>(&value);
    return layer ? *layer : nullptr;
}

void order_layer(Call& call, A_long id, const PF_EffectWorld* whole, const PF_LRect& asked, Layer layer,
                 PF_CheckoutResult* result) {
    *result = {};
    result->par = {1, 1};
    LayerOrder order{.checkout_id = id, .layer = std::move(layer)};
    if (whole) {
        result->max_result_rect = {whole->origin_x, whole->origin_y, whole->origin_x + whole->width,
                                   whole->origin_y + whole->height};
        result->result_rect = intersection(result->max_result_rect, asked);
        result->ref_width = call.frame->request.width;
        result->ref_height = call.frame->request.height;
        order.record = part_of(*whole, result->result_rect);
    }
    call.frame->orders.push_back(std::move(order));
}

LayerOrder* find_order(Call& call, A_long id) {
    const auto found = std::ranges::find(call.frame->orders, id, &LayerOrder::checkout_id);
    return found == call.frame->orders.end() ? nullptr : &*found;
}

PF_Err checkout_layer(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long id, const PF_RenderRequest* request,
                      A_long time, A_long, A_u_long time_scale, PF_CheckoutResult* result) {
    return answer_ref(Callback::kCheckoutLayer, effect_ref, [&](Call& call) -> PF_Err {
        if (!call.frame)
            return misused(call, MisuseKind::kWrongCall, "checked out a layer outside of a frame");
        if (find_order(call, id))
            return misused(call, MisuseKind::kWrongArgument, "checked out two layers under one number");
        if (index == 0) {
            order_layer(call, id, &call.frame->input_record, request->rect, call.frame->input, result);
            return PF_Err_NONE;
        }
        const auto& controls = call.host.controls();
        if (index < 0 || static_cast<size_t>(index) > controls.size()) return PF_Err_INVALID_INDEX;
        if (controls[static_cast<size_t>(index) - 1].kind != ControlKind::kLayer || time_scale == 0) {
            return misused(call, MisuseKind::kWrongArgument,
                           "checked out a layer from a control that holds none");
        }
        Layer layer = layer_of_control(call, index, time, time_scale);
        const PF_EffectWorld* record = layer ? &layer->record() : nullptr;
        order_layer(call, id, record, request->rect, layer, result);
        return PF_Err_NONE;
    });
}

PF_Err checkout_layer_pixels(PF_ProgPtr effect_ref, A_long id, PF_EffectWorld** pixels) {
    return answer_ref(Callback::kCheckoutLayerPixels, effect_ref, [&](Call& call) -> PF_Err {
        if (!call.frame)
            return misused(call, MisuseKind::kWrongCall, "checked out pixels outside of a frame");
        LayerOrder* order = find_order(call, id);
        if (!order)
            return misused(call, MisuseKind::kWrongArgument,
                           "checked out pixels that pre-render did not ask for");
        *pixels = order->record.data ? &order->record : nullptr;
        ++order->times_out;
        call.host.accounting().lend(Lent::kLayer);
        return PF_Err_NONE;
    });
}

PF_Err checkin_layer_pixels(PF_ProgPtr effect_ref, A_long id) {
    return answer_ref(Callback::kCheckinLayerPixels, effect_ref, [&](Call& call) -> PF_Err {
        LayerOrder* order = call.frame ? find_order(call, id) : nullptr;
        if (!order || order->times_out == 0) {
            // An effect that failed before its check-out still checks in: noted, not refused.
            misused(call, MisuseKind::kNotCheckedOut, "checked in a layer that is not checked out");
            return PF_Err_NONE;
        }
        --order->times_out;
        call.host.accounting().take_back(Lent::kLayer);
        return PF_Err_NONE;
    });
}

PF_Err checkout_output(PF_ProgPtr effect_ref, PF_EffectWorld** output) {
    return answer_ref(Callback::kCheckoutOutput, effect_ref, [&](Call& call) -> PF_Err {
        if (!call.frame || !call.frame->output)
            return misused(call, MisuseKind::kWrongCall, "checked out the output outside of a render");
        *output = &call.frame->output->record();
        return PF_Err_NONE;
    });
}

PF_Err mix_in_guid(PF_ProgPtr effect_ref, A_u_long, const void*) {
    return answer_ref(Callback::kNotOffered, effect_ref, [](Call&) { return PF_Err_NONE; });
}

}  // namespace

PF_PreRenderCallbacks pre_render_callbacks() {
    return {checkout_layer, mix_in_guid};
}

PF_SmartRenderCallbacks smart_render_callbacks() {
    return {checkout_layer_pixels, checkin_layer_pixels, checkout_output};
}

}  // namespace flumo::host
