// The callbacks that reach the effect inside PF_InData, not through suites.
#pragma once

#include "effect_api/params.h"

struct PF_InData;
struct PF_CustomUIInfo;
struct PF_SampPB;
struct PF_CompositeMode;
struct PF_MaskWorld;
struct PF_FloatMatrix;

using PF_LayerAudio = struct _PF_LayerAudio*;
using PF_SndSamplePtr = void*;
using PF_TransferMode = A_long;
using PF_XferMode = PF_TransferMode;
using PF_KernelFlags = A_u_long;
using PF_CallbackID = A_long;
using PF_CallbackFunc = struct PF_YouMustCastThisToActualFunctionType*;
using PF_PlatDataID = A_long;
using PF_NewWorldFlags = A_long;
using PF_IteratePixel8Func = PF_Err (*)(void* refconP, A_long xL, A_long yL, PF_Pixel* inP, PF_Pixel* outP);
using PF_IteratePixel16Func = PF_Err (*)(void* refconP, A_long xL, A_long yL, PF_Pixel16* inP,
                                         PF_Pixel16* outP);
using PF_IteratePixelFloatFunc = PF_Err (*)(void* refconP, A_long xL, A_long yL, PF_PixelFloat* inP,
                                            PF_PixelFloat* outP);

/// Controls, progress and interruption. A checked-out control stays valid until it is checked
/// in.
struct PF_InteractCallbacks {
    PF_Err (*checkout_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time, A_long time_step,
                             A_u_long time_scale, PF_ParamDef* param);
    PF_Err (*checkin_param)(PF_ProgPtr effect_ref, PF_ParamDef* param);
    PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDefPtr def);
    PF_Err (*abort)(PF_ProgPtr effect_ref);
    PF_Err (*progress)(PF_ProgPtr effect_ref, A_long current, A_long total);
    PF_Err (*register_ui)(PF_ProgPtr effect_ref, PF_CustomUIInfo* cust_info);
    PF_Err (*checkout_layer_audio)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long start_time,
                                   A_long duration, A_u_long time_scale, PF_UFixed rate,
                                   A_long bytes_per_sample, A_long num_channels, A_long fmt_signed,
                                   PF_LayerAudio* audio);
    PF_Err (*checkin_layer_audio)(PF_ProgPtr effect_ref, PF_LayerAudio audio);
    PF_Err (*get_audio_data)(PF_ProgPtr effect_ref, PF_LayerAudio audio, PF_SndSamplePtr* data0,
                             A_long* num_samples0, PF_UFixed* rate0, A_long* bytes_per_sample0,
                             A_long* num_channels0, A_long* fmt_signed0);
    void* reserved_str[3];
    void* reserved[10];
};
static_assert(sizeof(PF_InteractCallbacks) == 176 && alignof(PF_InteractCallbacks) == 8);
static_assert(offsetof(PF_InteractCallbacks, checkout_param) == 0);
static_assert(offsetof(PF_InteractCallbacks, checkin_param) == 8);
static_assert(offsetof(PF_InteractCallbacks, add_param) == 16);
static_assert(offsetof(PF_InteractCallbacks, abort) == 24);
static_assert(offsetof(PF_InteractCallbacks, progress) == 32);
static_assert(offsetof(PF_InteractCallbacks, register_ui) == 40);
static_assert(offsetof(PF_InteractCallbacks, checkout_layer_audio) == 48);
static_assert(offsetof(PF_InteractCallbacks, checkin_layer_audio) == 56);
static_assert(offsetof(PF_InteractCallbacks, get_audio_data) == 64);
static_assert(offsetof(PF_InteractCallbacks, reserved_str) == 72);
static_assert(offsetof(PF_InteractCallbacks, reserved) == 96);

/// Conversions of colours. The effect uses none.
struct PF_ColorCallbacks {
    PF_Err (*RGBtoHLS)(PF_ProgPtr effect_ref, PF_Pixel* rgb, PF_Fixed* hls);
    PF_Err (*HLStoRGB)(PF_ProgPtr effect_ref, PF_Fixed* hls, PF_Pixel* rgb);
    PF_Err (*RGBtoYIQ)(PF_ProgPtr effect_ref, PF_Pixel* rgb, PF_Fixed* yiq);
    PF_Err (*YIQtoRGB)(PF_ProgPtr effect_ref, PF_Fixed* yiq, PF_Pixel* rgb);
    PF_Err (*Luminance)(PF_ProgPtr effect_ref, PF_Pixel* rgb, A_long* lum100);
    PF_Err (*Hue)(PF_ProgPtr effect_ref, PF_Pixel* rgb, A_long* hue);
    PF_Err (*Lightness)(PF_ProgPtr effect_ref, PF_Pixel* rgb, A_long* lightness);
    PF_Err (*Saturation)(PF_ProgPtr effect_ref, PF_Pixel* rgb, A_long* saturation);
};
static_assert(sizeof(PF_ColorCallbacks) == 64 && alignof(PF_ColorCallbacks) == 8);
static_assert(offsetof(PF_ColorCallbacks, RGBtoHLS) == 0);
static_assert(offsetof(PF_ColorCallbacks, HLStoRGB) == 8);
static_assert(offsetof(PF_ColorCallbacks, RGBtoYIQ) == 16);
static_assert(offsetof(PF_ColorCallbacks, YIQtoRGB) == 24);
static_assert(offsetof(PF_ColorCallbacks, Luminance) == 32);
static_assert(offsetof(PF_ColorCallbacks, Hue) == 40);
static_assert(offsetof(PF_ColorCallbacks, Lightness) == 48);
static_assert(offsetof(PF_ColorCallbacks, Saturation) == 56);

/// The C library as the host offers it. The block inside the utility callbacks is eight bytes
/// longer than the suite of the same content.
struct PF_ANSICallbacksBlock {
    A_FpLong (*atan)(A_FpLong);
    A_FpLong (*atan2)(A_FpLong y, A_FpLong x);
    A_FpLong (*ceil)(A_FpLong);
    A_FpLong (*cos)(A_FpLong);
    A_FpLong (*exp)(A_FpLong);
    A_FpLong (*fabs)(A_FpLong);
    A_FpLong (*floor)(A_FpLong);
    A_FpLong (*fmod)(A_FpLong x, A_FpLong y);
    A_FpLong (*hypot)(A_FpLong x, A_FpLong y);
    A_FpLong (*log)(A_FpLong);
    A_FpLong (*log10)(A_FpLong);
    A_FpLong (*pow)(A_FpLong x, A_FpLong y);
    A_FpLong (*sin)(A_FpLong);
    A_FpLong (*sqrt)(A_FpLong);
    A_FpLong (*tan)(A_FpLong);
    int (*sprintf)(A_char*, const A_char*, ...);
    A_char* (*strcpy)(A_char*, const A_char*);
    A_FpLong (*asin)(A_FpLong);
    A_FpLong (*acos)(A_FpLong);
    A_long unused_longA[1];
};
static_assert(sizeof(PF_ANSICallbacksBlock) == 160 && alignof(PF_ANSICallbacksBlock) == 8);
static_assert(offsetof(PF_ANSICallbacksBlock, atan) == 0);
static_assert(offsetof(PF_ANSICallbacksBlock, atan2) == 8);
static_assert(offsetof(PF_ANSICallbacksBlock, ceil) == 16);
static_assert(offsetof(PF_ANSICallbacksBlock, cos) == 24);
static_assert(offsetof(PF_ANSICallbacksBlock, exp) == 32);
static_assert(offsetof(PF_ANSICallbacksBlock, fabs) == 40);
static_assert(offsetof(PF_ANSICallbacksBlock, floor) == 48);
static_assert(offsetof(PF_ANSICallbacksBlock, fmod) == 56);
static_assert(offsetof(PF_ANSICallbacksBlock, hypot) == 64);
static_assert(offsetof(PF_ANSICallbacksBlock, log) == 72);
static_assert(offsetof(PF_ANSICallbacksBlock, log10) == 80);
static_assert(offsetof(PF_ANSICallbacksBlock, pow) == 88);
static_assert(offsetof(PF_ANSICallbacksBlock, sin) == 96);
static_assert(offsetof(PF_ANSICallbacksBlock, sqrt) == 104);
static_assert(offsetof(PF_ANSICallbacksBlock, tan) == 112);
static_assert(offsetof(PF_ANSICallbacksBlock, sprintf) == 120);
static_assert(offsetof(PF_ANSICallbacksBlock, strcpy) == 128);
static_assert(offsetof(PF_ANSICallbacksBlock, asin) == 136);
static_assert(offsetof(PF_ANSICallbacksBlock, acos) == 144);
static_assert(offsetof(PF_ANSICallbacksBlock, unused_longA) == 152);

/// Utility callbacks: handles and pixel access. A pixel getter of the wrong depth succeeds with
/// a null pointer.
struct PF_UtilCallbacks {
    PF_Err (*begin_sampling)(PF_ProgPtr effect_ref, PF_Quality qual, PF_ModeFlags mf, PF_SampPB* params);
    PF_Err (*subpixel_sample)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB* params,
                              PF_Pixel* dst_pixel);
    PF_Err (*area_sample)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB* params,
                          PF_Pixel* dst_pixel);
    void* get_batch_func_is_deprecated;
    PF_Err (*end_sampling)(PF_ProgPtr effect_ref, PF_Quality qual, PF_ModeFlags mf, PF_SampPB* params);
    PF_Err (*composite_rect)(PF_ProgPtr effect_ref, PF_Rect* src_rect, A_long src_opacity,
                             PF_EffectWorld* source_wld, A_long dest_x, A_long dest_y, PF_Field field_rdr,
                             PF_XferMode xfer_mode, PF_EffectWorld* dest_wld);
    PF_Err (*blend)(PF_ProgPtr effect_ref, const PF_EffectWorld* src1, const PF_EffectWorld* src2,
                    PF_Fixed ratio, PF_EffectWorld* dst);
    PF_Err (*convolve)(PF_ProgPtr effect_ref, PF_EffectWorld* src, const PF_Rect* area, PF_KernelFlags flags,
                       A_long kernel_size, void* a_kernel, void* r_kernel, void* g_kernel, void* b_kernel,
                       PF_EffectWorld* dst);
    PF_Err (*copy)(PF_ProgPtr effect_ref, PF_EffectWorld* src, PF_EffectWorld* dst, PF_Rect* src_r,
                   PF_Rect* dst_r);
    PF_Err (*fill)(PF_ProgPtr effect_ref, const PF_Pixel* color, const PF_Rect* dst_rect,
                   PF_EffectWorld* world);
    PF_Err (*gaussian_kernel)(PF_ProgPtr effect_ref, A_FpLong kRadius, PF_KernelFlags flags,
                              A_FpLong multiplier, A_long* diameter, void* kernel);
    PF_Err (*iterate)(PF_InData* in_data, A_long progress_base, A_long progress_final, PF_EffectWorld* src,
                      const PF_Rect* area, void* refcon, PF_IteratePixel8Func pix_fn, PF_EffectWorld* dst);
    PF_Err (*premultiply)(PF_ProgPtr effect_ref, A_long forward, PF_EffectWorld* dst);
    PF_Err (*premultiply_color)(PF_ProgPtr effect_ref, PF_EffectWorld* src, const PF_Pixel* color,
                                A_long forward, PF_EffectWorld* dst);
    PF_Err (*new_world)(PF_ProgPtr effect_ref, A_long width, A_long height, PF_NewWorldFlags flags,
                        PF_EffectWorld* world);
    PF_Err (*dispose_world)(PF_ProgPtr effect_ref, PF_EffectWorld* world);
    PF_Err (*iterate_origin)(PF_InData* in_data, A_long progress_base, A_long progress_final,
                             PF_EffectWorld* src, const PF_Rect* area, const PF_Point* origin, void* refcon,
                             PF_IteratePixel8Func pix_fn, PF_EffectWorld* dst);
    PF_Err (*iterate_lut)(PF_InData* in_data, A_long progress_base, A_long progress_final,
                          PF_EffectWorld* src, const PF_Rect* area, A_u_char* a_lut0, A_u_char* r_lut0,
                          A_u_char* g_lut0, A_u_char* b_lut0, PF_EffectWorld* dst);
    PF_Err (*transfer_rect)(PF_ProgPtr effect_ref, PF_Quality quality, PF_ModeFlags m_flags, PF_Field field,
                            const PF_Rect* src_rec, const PF_EffectWorld* src_world,
                            const PF_CompositeMode* comp_mode, const PF_MaskWorld* mask_world0, A_long dest_x,
                            A_long dest_y, PF_EffectWorld* dst_world);
    PF_Err (*transform_world)(PF_ProgPtr effect_ref, PF_Quality quality, PF_ModeFlags m_flags, PF_Field field,
                              const PF_EffectWorld* src_world, const PF_CompositeMode* comp_mode,
                              const PF_MaskWorld* mask_world0, const PF_FloatMatrix* matrices,
                              A_long num_matrices, PF_Boolean src2dst_matrix, const PF_Rect* dest_rect,
                              PF_EffectWorld* dst_world);
    PF_Handle (*host_new_handle)(A_u_longlong size);
    void* (*host_lock_handle)(PF_Handle pf_handle);
    void (*host_unlock_handle)(PF_Handle pf_handle);
    void (*host_dispose_handle)(PF_Handle pf_handle);
    PF_Err (*get_callback_addr)(PF_ProgPtr effect_ref, PF_Quality quality, PF_ModeFlags mode_flags,
                                PF_CallbackID which_callback, PF_CallbackFunc* fn_ptr);
    PF_Err (*app)(PF_ProgPtr, A_long, ...);
    PF_ANSICallbacksBlock ansi;
    PF_ColorCallbacks colorCB;
    PF_Err (*get_platform_data)(PF_ProgPtr effect_ref, PF_PlatDataID which, void* data);
    A_u_longlong (*host_get_handle_size)(PF_Handle pf_handle);
    PF_Err (*iterate_origin_non_clip_src)(PF_InData* in_data, A_long progress_base, A_long progress_final,
                                          PF_EffectWorld* src, const PF_Rect* area, const PF_Point* origin,
                                          void* refcon, PF_IteratePixel8Func pix_fn, PF_EffectWorld* dst);
    PF_Err (*iterate_generic)(A_long iterationsL, void* refconPV,
                              PF_Err (*fn_func)(void* refconPV, A_long thread_indexL, A_long i,
                                                A_long iterationsL));
    PF_Err (*host_resize_handle)(A_u_longlong new_sizeL, PF_Handle* handlePH);
    PF_Err (*subpixel_sample16)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB* params,
                                PF_Pixel16* dst_pixel);
    PF_Err (*area_sample16)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB* params,
                            PF_Pixel16* dst_pixel);
    PF_Err (*fill16)(PF_ProgPtr effect_ref, const PF_Pixel16* color, const PF_Rect* dst_rect,
                     PF_EffectWorld* world);
    PF_Err (*premultiply_color16)(PF_ProgPtr effect_ref, PF_EffectWorld* src, const PF_Pixel16* color,
                                  A_long forward, PF_EffectWorld* dst);
    PF_Err (*iterate16)(PF_InData* in_data, A_long progress_base, A_long progress_final, PF_EffectWorld* src,
                        const PF_Rect* area, void* refcon, PF_IteratePixel16Func pix_fn, PF_EffectWorld* dst);
    PF_Err (*iterate_origin16)(PF_InData* in_data, A_long progress_base, A_long progress_final,
                               PF_EffectWorld* src, const PF_Rect* area, const PF_Point* origin, void* refcon,
                               PF_IteratePixel16Func pix_fn, PF_EffectWorld* dst);
    PF_Err (*iterate_origin_non_clip_src16)(PF_InData* in_data, A_long progress_base, A_long progress_final,
                                            PF_EffectWorld* src, const PF_Rect* area, const PF_Point* origin,
                                            void* refcon, PF_IteratePixel16Func pix_fn, PF_EffectWorld* dst);
    PF_Err (*get_pixel_data8)(PF_EffectWorld* worldP, PF_PixelPtr pixelsP0, PF_Pixel8** pixPP);
    PF_Err (*get_pixel_data16)(PF_EffectWorld* worldP, PF_PixelPtr pixelsP0, PF_Pixel16** pixPP);
    A_long reserved[1];
};
static_assert(sizeof(PF_UtilCallbacks) == 552 && alignof(PF_UtilCallbacks) == 8);
static_assert(offsetof(PF_UtilCallbacks, begin_sampling) == 0);
static_assert(offsetof(PF_UtilCallbacks, subpixel_sample) == 8);
static_assert(offsetof(PF_UtilCallbacks, area_sample) == 16);
static_assert(offsetof(PF_UtilCallbacks, get_batch_func_is_deprecated) == 24);
static_assert(offsetof(PF_UtilCallbacks, end_sampling) == 32);
static_assert(offsetof(PF_UtilCallbacks, composite_rect) == 40);
static_assert(offsetof(PF_UtilCallbacks, blend) == 48);
static_assert(offsetof(PF_UtilCallbacks, convolve) == 56);
static_assert(offsetof(PF_UtilCallbacks, copy) == 64);
static_assert(offsetof(PF_UtilCallbacks, fill) == 72);
static_assert(offsetof(PF_UtilCallbacks, gaussian_kernel) == 80);
static_assert(offsetof(PF_UtilCallbacks, iterate) == 88);
static_assert(offsetof(PF_UtilCallbacks, premultiply) == 96);
static_assert(offsetof(PF_UtilCallbacks, premultiply_color) == 104);
static_assert(offsetof(PF_UtilCallbacks, new_world) == 112);
static_assert(offsetof(PF_UtilCallbacks, dispose_world) == 120);
static_assert(offsetof(PF_UtilCallbacks, iterate_origin) == 128);
static_assert(offsetof(PF_UtilCallbacks, iterate_lut) == 136);
static_assert(offsetof(PF_UtilCallbacks, transfer_rect) == 144);
static_assert(offsetof(PF_UtilCallbacks, transform_world) == 152);
static_assert(offsetof(PF_UtilCallbacks, host_new_handle) == 160);
static_assert(offsetof(PF_UtilCallbacks, host_lock_handle) == 168);
static_assert(offsetof(PF_UtilCallbacks, host_unlock_handle) == 176);
static_assert(offsetof(PF_UtilCallbacks, host_dispose_handle) == 184);
static_assert(offsetof(PF_UtilCallbacks, get_callback_addr) == 192);
static_assert(offsetof(PF_UtilCallbacks, app) == 200);
static_assert(offsetof(PF_UtilCallbacks, ansi) == 208);
static_assert(offsetof(PF_UtilCallbacks, colorCB) == 368);
static_assert(offsetof(PF_UtilCallbacks, get_platform_data) == 432);
static_assert(offsetof(PF_UtilCallbacks, host_get_handle_size) == 440);
static_assert(offsetof(PF_UtilCallbacks, iterate_origin_non_clip_src) == 448);
static_assert(offsetof(PF_UtilCallbacks, iterate_generic) == 456);
static_assert(offsetof(PF_UtilCallbacks, host_resize_handle) == 464);
static_assert(offsetof(PF_UtilCallbacks, subpixel_sample16) == 472);
static_assert(offsetof(PF_UtilCallbacks, area_sample16) == 480);
static_assert(offsetof(PF_UtilCallbacks, fill16) == 488);
static_assert(offsetof(PF_UtilCallbacks, premultiply_color16) == 496);
static_assert(offsetof(PF_UtilCallbacks, iterate16) == 504);
static_assert(offsetof(PF_UtilCallbacks, iterate_origin16) == 512);
static_assert(offsetof(PF_UtilCallbacks, iterate_origin_non_clip_src16) == 520);
static_assert(offsetof(PF_UtilCallbacks, get_pixel_data8) == 528);
static_assert(offsetof(PF_UtilCallbacks, get_pixel_data16) == 536);
static_assert(offsetof(PF_UtilCallbacks, reserved) == 544);
