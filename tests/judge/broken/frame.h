// The small effect's frames: the input layer, the picture on a control and two numbers, mixed byte by byte,
// which works at every depth.
#pragma once

#include <EGL/egl.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/judge/broken/value.h"

namespace flumo::broken {

constexpr PF_ParamIndex kAmount = 2;
constexpr PF_ParamIndex kPicture = 3;
constexpr PF_ParamIndex kShade = 4;
constexpr PF_ParamIndex kControls = 5;

/// What a live and a stored sequence handle hold.
constexpr int kLive = 7;
constexpr int kStored = 0x464c4154;

/// Between flattening and resetup of any instance.
inline std::atomic<bool> is_being_saved = false;

inline unsigned char* row_of(const PF_LayerDef& world, A_long y) {
    return reinterpret_cast<unsigned char*>(world.data) + static_cast<std::ptrdiff_t>(y) * world.rowbytes;
}

/// What a frame is made of.
struct Recipe {
    const PF_LayerDef* input = nullptr;
    PF_LayerDef picture{};
    size_t pixel = 0;
    unsigned char tint = 0;
};

inline void mix_row(const Recipe& recipe, A_long y, A_long width, unsigned char* out) {
    static unsigned char shared[1 << 16];
    const unsigned char* in = row_of(*recipe.input, y);
    if (is("WrongStride"))
        in = row_of(*recipe.input, 0) + recipe.pixel * static_cast<size_t>(y * recipe.input->width);
    const PF_LayerDef& picture = recipe.picture;
    const unsigned char* over = picture.data ? row_of(picture, y % picture.height) : nullptr;
    // The picture may have another depth than the frame: no more is read than a row has.
    const size_t over_size = std::min(static_cast<size_t>(picture.width) * recipe.pixel,
                                      static_cast<size_t>(std::abs(picture.rowbytes)));
    const size_t size = static_cast<size_t>(width) * recipe.pixel;
    unsigned char* const row = is("SharedScratch") ? shared : out;
    for (size_t i = 0; i < size; ++i)
        row[i] = static_cast<unsigned char>(in[i] + (over ? over[i % over_size] : 0) + recipe.tint);
    if (row == out) return;
    usleep(1);
    std::memcpy(out, row, size);
}

inline void do_harm(PF_EffectWorld& input, const Recipe& recipe) {
    static std::thread::id first = std::this_thread::get_id();
    if (is("Crashes")) std::abort();
    if (is("Exits")) std::exit(0);
    if (is("Hangs") && input.width == 64) pause();
    if (is("WritesInput")) row_of(input, 0)[0] ^= 1;
    if (is("OneThreadEver") && std::this_thread::get_id() != first) std::abort();
    if (is("CrashesOnParts") && (input.origin_x || input.origin_y)) std::abort();
    if (is("CrashesOnGrownLayers") && input.origin_x < 0) std::abort();
    if (is("CrashesOnExtremes") && recipe.tint < 60) std::abort();
    if (is("ChangesInterface")) eglBindAPI(EGL_OPENGL_API);
    if (is("DropsContext"))
        eglMakeCurrent(eglGetCurrentDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

inline void paint(PF_EffectWorld& input, PF_EffectWorld& output, Recipe recipe) {
    static unsigned char frames = 0;
    do_harm(input, recipe);
    if (is("UntouchedWorld")) return;
    if (is("RemembersFrames")) recipe.tint = static_cast<unsigned char>(recipe.tint + frames++);
    if (is("StopsAtSaves") && is_being_saved) recipe.tint = 0;
    const A_long height = std::min(input.height, output.height) - is("SkipsLastRow");
    for (A_long y = 0; y < height; ++y) {
        // As far as the padding of the rows reaches.
        const A_long room = output.width + (is("WritesInputWidth") ? 2 : 0);
        const A_long width = std::min(input.width, room) + is("WritesPastRow");
        mix_row(recipe, y, width, row_of(output, y));
    }
}

inline PF_Err read_recipe(const PF_InData& in, const PF_EffectWorld& input, Recipe& recipe) {
    const Suite<PF_WorldSuite2> worlds(in, kPFWorldSuite, kPFWorldSuiteVersion2);
    if (!worlds) return PF_Err_BAD_CALLBACK_PARAM;
    PF_PixelFormat format = PF_PixelFormat_INVALID;
    const PF_Err error = worlds->PF_GetPixelFormat(&input, &format);
    if (error) return error;
    if (format == PF_PixelFormat_INVALID) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    recipe.input = &input;
    recipe.pixel = format == PF_PixelFormat_ARGB32 ? 4 : format == PF_PixelFormat_ARGB64 ? 8 : 16;
    return PF_Err_NONE;
}

/// Calls `use` with the values of the controls, which stay out as long as it lasts.
template <class Use>
PF_Err with_controls(const PF_InData& in, Use use) {
    PF_ParamDef values[kShade + 1]{};
    PF_Err error = PF_Err_NONE;
    PF_ParamIndex end = kAmount;
    for (; !error && end <= kShade; ++end)
        error = in.inter.checkout_param(in.effect_ref, end, in.current_time, in.time_step, in.time_scale,
                                        &values[end]);
    if (error) --end;
    if (!error) error = use(values);
    const bool keeps = is("KeepsParam") || (error && is("KeepsParamOnError"));
    for (PF_ParamIndex i = keeps ? kPicture : kAmount; i < end; ++i)
        in.inter.checkin_param(in.effect_ref, &values[i]);
    return error;
}

inline PF_Err paint_with_controls(const PF_InData& in, PF_EffectWorld& input, PF_EffectWorld& output) {
    Recipe recipe;
    const PF_Err error = read_recipe(in, input, recipe);
    if (error) return is("SwallowsErrors") ? PF_Err_NONE : error;
    return with_controls(in, [&](const PF_ParamDef* values) {
        recipe.picture = values[kPicture].u.ld;
        const A_long step = is("CountsTimeScale") ? 1 : in.time_step;
        double tint = values[kAmount].u.fs_d.value + in.current_time / step;
        const PF_Err unlocked = with_shade(in, values[kShade].u.arb_d.value,
                                           [&](const Shade& shade) { tint += shade.level * 100; });
        recipe.tint = static_cast<unsigned char>(static_cast<int>(tint) % 256);
        if (!unlocked) paint(input, output, recipe);
        return unlocked;
    });
}

inline void keep_handles(const PF_InData& in) {
    if (is("LeaksHandle")) in.utils->host_new_handle(16);
    if (is("KeepsLock")) in.utils->host_lock_handle(in.global_data);
}

/// What the effect relies on without a rule of the host that promises it.
inline PF_Err rely_on_habits(const PF_InData& in, PF_ParamDef** params, const PF_EffectWorld& output) {
    if (is("RefusesParams") && params) return PF_Err_BAD_CALLBACK_PARAM;
    if (is("RefusesNegativeRows") && output.rowbytes < 0) return PF_Err_BAD_CALLBACK_PARAM;
    if (is("RefusesUnknownFlags") && output.world_flags > 3) return PF_Err_BAD_CALLBACK_PARAM;
    const bool reads_sequence = is("NeedsSequenceData") || (is("RefusesResetData") && in.sequence_data);
    if (reads_sequence && *static_cast<const int*>(*in.sequence_data) != kLive)
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    PF_ParamIndex beyond = kControls + 1;
    for (PF_ParamDef def{}; is("CountsControls"); ++beyond) {
        if (in.inter.checkout_param(in.effect_ref, beyond, 0, 1, 1, &def)) break;
        in.inter.checkin_param(in.effect_ref, &def);
        if (beyond > 1000) std::abort();
    }
    return PF_Err_NONE;
}

inline PF_Err render(const PF_InData& in, PF_ParamDef** params, PF_SmartRenderExtra& extra) {
    static thread_local bool failed_before = false;
    if (is("FailsAfterErrors") && failed_before) return PF_Err_OUT_OF_MEMORY;
    PF_EffectWorld* input = nullptr;
    PF_EffectWorld* output = nullptr;
    PF_Err error = extra.cb->checkout_layer_pixels(in.effect_ref, 0, &input);
    if (error) return error;
    error = extra.cb->checkout_output(in.effect_ref, &output);
    if (!error) error = rely_on_habits(in, params, *output);
    if (!error) error = paint_with_controls(in, *input, *output);
    keep_handles(in);
    if (!is("KeepsLayer")) extra.cb->checkin_layer_pixels(in.effect_ref, 0);
    if (!error) error = in.inter.abort(in.effect_ref);
    failed_before = error != PF_Err_NONE;
    return error && is("SwallowsAbort") ? PF_Err_OUT_OF_MEMORY : error;
}

inline PF_Err pre_render(const PF_InData& in, PF_PreRenderExtra& extra) {
    PF_CheckoutResult result{};
    const PF_Err error = extra.cb->checkout_layer(in.effect_ref, 0, 0, &extra.input->output_request,
                                                  in.current_time, in.time_step, in.time_scale, &result);
    extra.output->result_rect = result.result_rect;
    const PF_LRect& asked = extra.input->output_request.rect;
    if (is("SkipsSmallRequests") && asked.right - asked.left < 5) extra.output->result_rect = {};
    if (!is("KeepsJunkRects") || extra.output->max_result_rect.left == 0)
        extra.output->max_result_rect = result.max_result_rect;
    return error;
}

}  // namespace flumo::broken
