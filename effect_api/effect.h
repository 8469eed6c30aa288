// The two records that come with every command.
#pragma once

#include "effect_api/callbacks.h"
#include "effect_api/commands.h"

struct SPBasicSuite;

using PF_SoundFormat = A_short;
using PF_SoundSampleSize = A_short;
using PF_SoundChannels = A_short;

/// Format of a sound. The effect neither reads nor writes sounds.
struct PF_SoundFormatInfo {
    PF_FpLong rateF;  // samples a second
    PF_SoundChannels num_channels;
    PF_SoundFormat format;
    PF_SoundSampleSize sample_size;
};
static_assert(sizeof(PF_SoundFormatInfo) == 16 && alignof(PF_SoundFormatInfo) == 8);
static_assert(offsetof(PF_SoundFormatInfo, rateF) == 0);
static_assert(offsetof(PF_SoundFormatInfo, num_channels) == 8);
static_assert(offsetof(PF_SoundFormatInfo, format) == 10);
static_assert(offsetof(PF_SoundFormatInfo, sample_size) == 12);

/// A sound; dataP is the host's.
struct PF_SoundWorld {
    PF_SoundFormatInfo fi;
    A_long num_samples;
    void* dataP;
};
static_assert(sizeof(PF_SoundWorld) == 32 && alignof(PF_SoundWorld) == 8);
static_assert(offsetof(PF_SoundWorld, fi) == 0);
static_assert(offsetof(PF_SoundWorld, num_samples) == 16);
static_assert(offsetof(PF_SoundWorld, dataP) == 24);

/// What comes from the host with every command; all of it is the host's. Times count in units of
/// 1 / time_scale second.
struct PF_InData {
    PF_InteractCallbacks inter;
    PF_UtilCallbacks* utils;
    PF_ProgPtr effect_ref;  // passed back to the host with every callback
    PF_Quality quality;
    PF_SpecVersion version;
    A_long serial_num;
    A_AppID appl_id;    // kPremiereApplId, kAfterEffectsApplId or another host's
    A_long num_params;  // controls, the input layer counted
    A_long reserved;
    A_long what_cpu;
    A_long what_fpu;
    A_long current_time;     // of the frame, in the layer
    A_long time_step;        // duration of a frame of the layer
    A_long total_time;       // duration of the layer
    A_long local_time_step;  // duration of a frame of the composition
    A_u_long time_scale;     // units a second
    PF_Field field;
    PF_Fixed shutter_angle;
    A_long width;   // of the layer in pixels at full resolution, whatever the downsampling
    A_long height;  // likewise
    PF_Rect extent_hint;
    A_long output_origin_x;
    A_long output_origin_y;
    PF_RationalScale downsample_x;        // pixels of the frame per pixel at full resolution: 1/2 for half
    PF_RationalScale downsample_y;        // likewise
    PF_RationalScale pixel_aspect_ratio;  // width of a pixel over its height
    PF_InFlags in_flags;
    PF_Handle global_data;    // what the effect stored in PF_OutData; null before
    PF_Handle sequence_data;  // likewise, of this instance
    PF_Handle frame_data;     // likewise, of this frame
    A_long start_sampL;
    A_long dur_sampL;
    A_long total_sampL;
    PF_SoundWorld src_snd;
    SPBasicSuite* pica_basicP;  // acquires and releases suites; may be null
    A_long pre_effect_source_origin_x;
    A_long pre_effect_source_origin_y;
    PF_Fixed shutter_phase;
};
static_assert(sizeof(PF_InData) == 408 && alignof(PF_InData) == 8);
static_assert(offsetof(PF_InData, inter) == 0);
static_assert(offsetof(PF_InData, utils) == 176);
static_assert(offsetof(PF_InData, effect_ref) == 184);
static_assert(offsetof(PF_InData, quality) == 192);
static_assert(offsetof(PF_InData, version) == 196);
static_assert(offsetof(PF_InData, serial_num) == 200);
static_assert(offsetof(PF_InData, appl_id) == 204);
static_assert(offsetof(PF_InData, num_params) == 208);
static_assert(offsetof(PF_InData, reserved) == 212);
static_assert(offsetof(PF_InData, what_cpu) == 216);
static_assert(offsetof(PF_InData, what_fpu) == 220);
static_assert(offsetof(PF_InData, current_time) == 224);
static_assert(offsetof(PF_InData, time_step) == 228);
static_assert(offsetof(PF_InData, total_time) == 232);
static_assert(offsetof(PF_InData, local_time_step) == 236);
static_assert(offsetof(PF_InData, time_scale) == 240);
static_assert(offsetof(PF_InData, field) == 244);
static_assert(offsetof(PF_InData, shutter_angle) == 248);
static_assert(offsetof(PF_InData, width) == 252);
static_assert(offsetof(PF_InData, height) == 256);
static_assert(offsetof(PF_InData, extent_hint) == 260);
static_assert(offsetof(PF_InData, output_origin_x) == 276);
static_assert(offsetof(PF_InData, output_origin_y) == 280);
static_assert(offsetof(PF_InData, downsample_x) == 284);
static_assert(offsetof(PF_InData, downsample_y) == 292);
static_assert(offsetof(PF_InData, pixel_aspect_ratio) == 300);
static_assert(offsetof(PF_InData, in_flags) == 308);
static_assert(offsetof(PF_InData, global_data) == 312);
static_assert(offsetof(PF_InData, sequence_data) == 320);
static_assert(offsetof(PF_InData, frame_data) == 328);
static_assert(offsetof(PF_InData, start_sampL) == 336);
static_assert(offsetof(PF_InData, dur_sampL) == 340);
static_assert(offsetof(PF_InData, total_sampL) == 344);
static_assert(offsetof(PF_InData, src_snd) == 352);
static_assert(offsetof(PF_InData, pica_basicP) == 384);
static_assert(offsetof(PF_InData, pre_effect_source_origin_x) == 392);
static_assert(offsetof(PF_InData, pre_effect_source_origin_y) == 396);
static_assert(offsetof(PF_InData, shutter_phase) == 400);

/// The effect's answer to a command. The host reads the fields that belong to the command.
struct PF_OutData {
    A_u_long my_version;  // PF_VERSION(...), after global set-up
    A_char name[32];
    PF_Handle global_data;    // kept by the host until global set-down, where the effect disposes of it
    A_long num_params;        // controls, the input layer counted, after PF_Cmd_PARAMS_SETUP
    PF_Handle sequence_data;  // kept by the host for the instance
    A_long flat_sdata_size;
    PF_Handle frame_data;
    A_long width;
    A_long height;
    PF_Point origin;
    PF_OutFlags out_flags;   // PF_OutFlag_..., one bit each
    A_char return_msg[256];  // zero-terminated; shown to the user with PF_OutFlag_DISPLAY_ERROR_MESSAGE
    A_long start_sampL;
    A_long dur_sampL;
    PF_SoundWorld dest_snd;
    PF_OutFlags2 out_flags2;
};
static_assert(sizeof(PF_OutData) == 408 && alignof(PF_OutData) == 8);
static_assert(offsetof(PF_OutData, my_version) == 0);
static_assert(offsetof(PF_OutData, name) == 4);
static_assert(offsetof(PF_OutData, global_data) == 40);
static_assert(offsetof(PF_OutData, num_params) == 48);
static_assert(offsetof(PF_OutData, sequence_data) == 56);
static_assert(offsetof(PF_OutData, flat_sdata_size) == 64);
static_assert(offsetof(PF_OutData, frame_data) == 72);
static_assert(offsetof(PF_OutData, width) == 80);
static_assert(offsetof(PF_OutData, height) == 84);
static_assert(offsetof(PF_OutData, origin) == 88);
static_assert(offsetof(PF_OutData, out_flags) == 96);
static_assert(offsetof(PF_OutData, return_msg) == 100);
static_assert(offsetof(PF_OutData, start_sampL) == 356);
static_assert(offsetof(PF_OutData, dur_sampL) == 360);
static_assert(offsetof(PF_OutData, dest_snd) == 368);
static_assert(offsetof(PF_OutData, out_flags2) == 400);
