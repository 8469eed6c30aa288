// Smart rendering: pre-render asks which layers a frame needs, render draws it.
#pragma once

#include "effect_api/world.h"

using PF_GPU_Framework = A_long;
using PF_DeletePreRenderDataFunc = void (*)(void* pre_render_data);
using PF_RenderOutputFlags = short;

/// What the host requests of a frame or a layer.
struct PF_RenderRequest {
    PF_LRect rect;  // layer pixels at the current resolution
    PF_Field field;
    PF_ChannelMask channel_mask;  // PF_ChannelMask_..., one bit each
    PF_Boolean preserve_rgb_of_zero_alpha;
    char unused[3];
    A_long reserved[4];
};
static_assert(sizeof(PF_RenderRequest) == 44 && alignof(PF_RenderRequest) == 4);
static_assert(offsetof(PF_RenderRequest, rect) == 0);
static_assert(offsetof(PF_RenderRequest, field) == 16);
static_assert(offsetof(PF_RenderRequest, channel_mask) == 20);
static_assert(offsetof(PF_RenderRequest, preserve_rgb_of_zero_alpha) == 24);
static_assert(offsetof(PF_RenderRequest, unused) == 25);
static_assert(offsetof(PF_RenderRequest, reserved) == 28);

/// What a checked-out layer will deliver; rectangles as in the request.
struct PF_CheckoutResult {
    PF_LRect result_rect;      // of the pixels that the checkout gives
    PF_LRect max_result_rect;  // of all pixels of the layer
    PF_RationalScale par;      // width of a pixel over its height
    PF_Boolean solid;          // every pixel is opaque
    PF_Boolean reservedB[3];
    A_long ref_width;  // of the whole layer, pixels
    A_long ref_height;
    A_long reserved[6];
};
static_assert(sizeof(PF_CheckoutResult) == 76 && alignof(PF_CheckoutResult) == 4);
static_assert(offsetof(PF_CheckoutResult, result_rect) == 0);
static_assert(offsetof(PF_CheckoutResult, max_result_rect) == 16);
static_assert(offsetof(PF_CheckoutResult, par) == 32);
static_assert(offsetof(PF_CheckoutResult, solid) == 40);
static_assert(offsetof(PF_CheckoutResult, reservedB) == 41);
static_assert(offsetof(PF_CheckoutResult, ref_width) == 44);
static_assert(offsetof(PF_CheckoutResult, ref_height) == 48);
static_assert(offsetof(PF_CheckoutResult, reserved) == 52);

/// The host's request to pre-render.
struct PF_PreRenderInput {
    PF_RenderRequest output_request;
    short bitdepth;  // of a channel: 8, 16 or 32
    const void* gpu_data;
    PF_GPU_Framework what_gpu;
    A_u_long device_index;
};
static_assert(sizeof(PF_PreRenderInput) == 64 && alignof(PF_PreRenderInput) == 8);
static_assert(offsetof(PF_PreRenderInput, output_request) == 0);
static_assert(offsetof(PF_PreRenderInput, bitdepth) == 44);
static_assert(offsetof(PF_PreRenderInput, gpu_data) == 48);
static_assert(offsetof(PF_PreRenderInput, what_gpu) == 56);
static_assert(offsetof(PF_PreRenderInput, device_index) == 60);

/// The effect's answer to a pre-render.
struct PF_PreRenderOutput {
    PF_LRect result_rect;      // of the pixels that the frame will have
    PF_LRect max_result_rect;  // of those that any request could give
    PF_Boolean solid;          // every pixel will be opaque
    PF_Boolean reserved;
    PF_RenderOutputFlags flags;
    void* pre_render_data;  // the effect's; passed to the render
    PF_DeletePreRenderDataFunc delete_pre_render_data_func;
};
static_assert(sizeof(PF_PreRenderOutput) == 56 && alignof(PF_PreRenderOutput) == 8);
static_assert(offsetof(PF_PreRenderOutput, result_rect) == 0);
static_assert(offsetof(PF_PreRenderOutput, max_result_rect) == 16);
static_assert(offsetof(PF_PreRenderOutput, solid) == 32);
static_assert(offsetof(PF_PreRenderOutput, reserved) == 33);
static_assert(offsetof(PF_PreRenderOutput, flags) == 34);
static_assert(offsetof(PF_PreRenderOutput, pre_render_data) == 40);
static_assert(offsetof(PF_PreRenderOutput, delete_pre_render_data_func) == 48);

/// checkout_layer asks for a layer control at a time; the render fetches the pixels by checkout_idL, a number
/// of the effect's choice.
struct PF_PreRenderCallbacks {
    PF_Err (*checkout_layer)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long checkout_idL,
                             const PF_RenderRequest* req, A_long what_time, A_long time_step,
                             A_u_long time_scale, PF_CheckoutResult* checkout_result);
    PF_Err (*GuidMixInPtr)(PF_ProgPtr effect_ref, A_u_long buf_sizeLu, const void* buf);
};
static_assert(sizeof(PF_PreRenderCallbacks) == 16 && alignof(PF_PreRenderCallbacks) == 8);
static_assert(offsetof(PF_PreRenderCallbacks, checkout_layer) == 0);
static_assert(offsetof(PF_PreRenderCallbacks, GuidMixInPtr) == 8);

/// `extra` of PF_Cmd_SMART_PRE_RENDER.
struct PF_PreRenderExtra {
    PF_PreRenderInput* input;
    PF_PreRenderOutput* output;
    PF_PreRenderCallbacks* cb;
};
static_assert(sizeof(PF_PreRenderExtra) == 24 && alignof(PF_PreRenderExtra) == 8);
static_assert(offsetof(PF_PreRenderExtra, input) == 0);
static_assert(offsetof(PF_PreRenderExtra, output) == 8);
static_assert(offsetof(PF_PreRenderExtra, cb) == 16);

/// The host's request to render.
struct PF_SmartRenderInput {
    PF_RenderRequest output_request;
    short bitdepth;         // of a channel: 8, 16 or 32
    void* pre_render_data;  // what the pre-render stored
    const void* gpu_data;
    PF_GPU_Framework what_gpu;
    A_u_long device_index;
};
static_assert(sizeof(PF_SmartRenderInput) == 72 && alignof(PF_SmartRenderInput) == 8);
static_assert(offsetof(PF_SmartRenderInput, output_request) == 0);
static_assert(offsetof(PF_SmartRenderInput, bitdepth) == 44);
static_assert(offsetof(PF_SmartRenderInput, pre_render_data) == 48);
static_assert(offsetof(PF_SmartRenderInput, gpu_data) == 56);
static_assert(offsetof(PF_SmartRenderInput, what_gpu) == 64);
static_assert(offsetof(PF_SmartRenderInput, device_index) == 68);

/// Worlds stay the host's: the pixels of a layer until they are checked in, those of the output until the
/// command returns.
struct PF_SmartRenderCallbacks {
    PF_Err (*checkout_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_idL, PF_EffectWorld** pixels);
    PF_Err (*checkin_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_idL);
    PF_Err (*checkout_output)(PF_ProgPtr effect_ref, PF_EffectWorld** output);
};
static_assert(sizeof(PF_SmartRenderCallbacks) == 24 && alignof(PF_SmartRenderCallbacks) == 8);
static_assert(offsetof(PF_SmartRenderCallbacks, checkout_layer_pixels) == 0);
static_assert(offsetof(PF_SmartRenderCallbacks, checkin_layer_pixels) == 8);
static_assert(offsetof(PF_SmartRenderCallbacks, checkout_output) == 16);

/// `extra` of PF_Cmd_SMART_RENDER.
struct PF_SmartRenderExtra {
    PF_SmartRenderInput* input;
    PF_SmartRenderCallbacks* cb;
};
static_assert(sizeof(PF_SmartRenderExtra) == 16 && alignof(PF_SmartRenderExtra) == 8);
static_assert(offsetof(PF_SmartRenderExtra, input) == 0);
static_assert(offsetof(PF_SmartRenderExtra, cb) == 8);
