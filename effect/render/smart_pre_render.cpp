#include "effect/render/smart_pre_render.h"

#include <algorithm>

namespace flumo {

namespace {

constexpr PF_ParamIndex kInputLayer = 0;

bool IsEmpty(const PF_LRect& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

}  // namespace

void UnionLRect(const PF_LRect& source, PF_LRect& destination) {
    if (IsEmpty(destination)) {
        destination = source;
        return;
    }
    if (IsEmpty(source)) return;
    destination.left = std::min(destination.left, source.left);
    destination.top = std::min(destination.top, source.top);
    destination.right = std::max(destination.right, source.right);
    destination.bottom = std::max(destination.bottom, source.bottom);
}

PF_Err SmartPreRender(PF_InData* in_data, PF_PreRenderExtra* extra) {
    const PF_RenderRequest request = extra->input->output_request;
    PF_CheckoutResult result{};
    const PF_Err err =
        extra->cb->checkout_layer(in_data->effect_ref, kInputLayer, kInputCheckoutId, &request,
                                  in_data->current_time, in_data->time_step, in_data->time_scale, &result);
    if (err != PF_Err_NONE) return err;
    UnionLRect(result.result_rect, extra->output->result_rect);
    UnionLRect(result.max_result_rect, extra->output->max_result_rect);
    return PF_Err_NONE;
}

}  // namespace flumo
