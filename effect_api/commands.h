// Command numbers, error numbers, global flags and the packing of the version number.
#pragma once

#include "effect_api/types.h"

using PF_Cmd = A_long;
using PF_OutFlags = A_long;
using PF_OutFlags2 = A_long;
using PF_InFlags = A_long;
using PFVersionInfo = A_u_long;
using PF_Stage = A_long;

inline constexpr PF_Cmd PF_Cmd_ABOUT = 0;
inline constexpr PF_Cmd PF_Cmd_GLOBAL_SETUP = 1;
inline constexpr PF_Cmd PF_Cmd_UNUSED_0 = 2;
inline constexpr PF_Cmd PF_Cmd_GLOBAL_SETDOWN = 3;
inline constexpr PF_Cmd PF_Cmd_PARAMS_SETUP = 4;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_SETUP = 5;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_RESETUP = 6;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_FLATTEN = 7;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_SETDOWN = 8;
inline constexpr PF_Cmd PF_Cmd_DO_DIALOG = 9;
inline constexpr PF_Cmd PF_Cmd_FRAME_SETUP = 10;
inline constexpr PF_Cmd PF_Cmd_RENDER = 11;
inline constexpr PF_Cmd PF_Cmd_FRAME_SETDOWN = 12;
inline constexpr PF_Cmd PF_Cmd_USER_CHANGED_PARAM = 13;
inline constexpr PF_Cmd PF_Cmd_UPDATE_PARAMS_UI = 14;
inline constexpr PF_Cmd PF_Cmd_EVENT = 15;
inline constexpr PF_Cmd PF_Cmd_GET_EXTERNAL_DEPENDENCIES = 16;
inline constexpr PF_Cmd PF_Cmd_COMPLETELY_GENERAL = 17;
inline constexpr PF_Cmd PF_Cmd_QUERY_DYNAMIC_FLAGS = 18;
inline constexpr PF_Cmd PF_Cmd_AUDIO_RENDER = 19;
inline constexpr PF_Cmd PF_Cmd_AUDIO_SETUP = 20;
inline constexpr PF_Cmd PF_Cmd_AUDIO_SETDOWN = 21;
inline constexpr PF_Cmd PF_Cmd_ARBITRARY_CALLBACK = 22;
inline constexpr PF_Cmd PF_Cmd_SMART_PRE_RENDER = 23;
inline constexpr PF_Cmd PF_Cmd_SMART_RENDER = 24;
inline constexpr PF_Cmd PF_Cmd_GET_FLATTENED_SEQUENCE_DATA = 28;
inline constexpr PF_Cmd PF_Cmd_TRANSLATE_PARAMS_TO_PREFS = 29;
inline constexpr PF_Cmd PF_Cmd_SMART_RENDER_GPU = 31;
inline constexpr PF_Cmd PF_Cmd_GPU_DEVICE_SETUP = 32;
inline constexpr PF_Cmd PF_Cmd_GPU_DEVICE_SETDOWN = 33;
inline constexpr PF_Cmd PF_Cmd_NUM_CMDS = 34;

inline constexpr PF_Err PF_FIRST_ERR = 512;
inline constexpr PF_Err PF_Err_NONE = 0;
inline constexpr PF_Err PF_Err_OUT_OF_MEMORY = 4;
inline constexpr PF_Err PF_Err_INTERNAL_STRUCT_DAMAGED = 512;
inline constexpr PF_Err PF_Err_INVALID_INDEX = 513;
inline constexpr PF_Err PF_Err_UNRECOGNIZED_PARAM_TYPE = 514;
inline constexpr PF_Err PF_Err_INVALID_CALLBACK = 515;
inline constexpr PF_Err PF_Err_BAD_CALLBACK_PARAM = 516;
inline constexpr PF_Err PF_Interrupt_CANCEL = 517;
inline constexpr PF_Err PF_Err_CANNOT_PARSE_KEYFRAME_TEXT = 518;

inline constexpr PF_OutFlags PF_OutFlag_NONE = 0;
inline constexpr PF_OutFlags PF_OutFlag_KEEP_RESOURCE_OPEN = 1;
inline constexpr PF_OutFlags PF_OutFlag_WIDE_TIME_INPUT = 2;
inline constexpr PF_OutFlags PF_OutFlag_NON_PARAM_VARY = 4;
inline constexpr PF_OutFlags PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING = 16;
inline constexpr PF_OutFlags PF_OutFlag_I_DO_DIALOG = 32;
inline constexpr PF_OutFlags PF_OutFlag_USE_OUTPUT_EXTENT = 64;
inline constexpr PF_OutFlags PF_OutFlag_SEND_DO_DIALOG = 128;
inline constexpr PF_OutFlags PF_OutFlag_DISPLAY_ERROR_MESSAGE = 256;
inline constexpr PF_OutFlags PF_OutFlag_I_EXPAND_BUFFER = 512;
inline constexpr PF_OutFlags PF_OutFlag_PIX_INDEPENDENT = 1024;
inline constexpr PF_OutFlags PF_OutFlag_I_WRITE_INPUT_BUFFER = 2048;
inline constexpr PF_OutFlags PF_OutFlag_I_SHRINK_BUFFER = 4096;
inline constexpr PF_OutFlags PF_OutFlag_WORKS_IN_PLACE = 8192;
inline constexpr PF_OutFlags PF_OutFlag_CUSTOM_UI = 32768;
inline constexpr PF_OutFlags PF_OutFlag_REFRESH_UI = 131072;
inline constexpr PF_OutFlags PF_OutFlag_NOP_RENDER = 262144;
inline constexpr PF_OutFlags PF_OutFlag_I_USE_SHUTTER_ANGLE = 524288;
inline constexpr PF_OutFlags PF_OutFlag_I_USE_AUDIO = 1048576;
inline constexpr PF_OutFlags PF_OutFlag_I_AM_OBSOLETE = 2097152;
inline constexpr PF_OutFlags PF_OutFlag_FORCE_RERENDER = 4194304;
inline constexpr PF_OutFlags PF_OutFlag_PiPL_OVERRIDES_OUTDATA_OUTFLAGS = 8388608;
inline constexpr PF_OutFlags PF_OutFlag_I_HAVE_EXTERNAL_DEPENDENCIES = 16777216;
inline constexpr PF_OutFlags PF_OutFlag_DEEP_COLOR_AWARE = 33554432;
inline constexpr PF_OutFlags PF_OutFlag_SEND_UPDATE_PARAMS_UI = 67108864;
inline constexpr PF_OutFlags PF_OutFlag_AUDIO_FLOAT_ONLY = 134217728;
inline constexpr PF_OutFlags PF_OutFlag_AUDIO_IIR = 268435456;
inline constexpr PF_OutFlags PF_OutFlag_I_SYNTHESIZE_AUDIO = 536870912;
inline constexpr PF_OutFlags PF_OutFlag_AUDIO_EFFECT_TOO = 1073741824;
inline constexpr PF_OutFlags PF_OutFlag_AUDIO_EFFECT_ONLY = -2147483648;

inline constexpr PF_OutFlags2 PF_OutFlag2_NONE = 0;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS = 1;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_USE_3D_CAMERA = 2;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_USE_3D_LIGHTS = 4;
inline constexpr PF_OutFlags2 PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG = 8;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_AM_THREADSAFE = 16;
inline constexpr PF_OutFlags2 PF_OutFlag2_CAN_COMBINE_WITH_DESTINATION = 32;
inline constexpr PF_OutFlags2 PF_OutFlag2_DOESNT_NEED_EMPTY_PIXELS = 64;
inline constexpr PF_OutFlags2 PF_OutFlag2_REVEALS_ZERO_ALPHA = 128;
inline constexpr PF_OutFlags2 PF_OutFlag2_PRESERVES_FULLY_OPAQUE_PIXELS = 256;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_SMART_RENDER = 1024;
inline constexpr PF_OutFlags2 PF_OutFlag2_FLOAT_COLOR_AWARE = 4096;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_USE_COLORSPACE_ENUMERATION = 8192;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_AM_DEPRECATED = 16384;
inline constexpr PF_OutFlags2 PF_OutFlag2_PPRO_DO_NOT_CLONE_SEQUENCE_DATA_FOR_RENDER = 32768;
inline constexpr PF_OutFlags2 PF_OutFlag2_AUTOMATIC_WIDE_TIME_INPUT = 131072;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_USE_TIMECODE = 262144;
inline constexpr PF_OutFlags2 PF_OutFlag2_DEPENDS_ON_UNREFERENCED_MASKS = 524288;
inline constexpr PF_OutFlags2 PF_OutFlag2_OUTPUT_IS_WATERMARKED = 1048576;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_MIX_GUID_DEPENDENCIES = 2097152;
inline constexpr PF_OutFlags2 PF_OutFlag2_AE13_5_THREADSAFE = 4194304;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA = 8388608;
inline constexpr PF_OutFlags2 PF_OutFlag2_CUSTOM_UI_ASYNC_MANAGER = 16777216;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_GPU_RENDER_F32 = 33554432;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_THREADED_RENDERING = 134217728;
inline constexpr PF_OutFlags2 PF_OutFlag2_MUTABLE_RENDER_SEQUENCE_DATA_SLOWER = 268435456;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_DIRECTX_RENDERING = 536870912;

inline constexpr A_u_long PF_Stage_DEVELOP = 0;
inline constexpr A_u_long PF_Stage_ALPHA = 1;
inline constexpr A_u_long PF_Stage_BETA = 2;
inline constexpr A_u_long PF_Stage_RELEASE = 3;
inline constexpr A_u_long PF_Vers_BUILD_BITS = 511;
inline constexpr A_u_long PF_Vers_BUILD_SHIFT = 0;
inline constexpr A_u_long PF_Vers_STAGE_BITS = 3;
inline constexpr A_u_long PF_Vers_STAGE_SHIFT = 9;
inline constexpr A_u_long PF_Vers_BUGFIX_BITS = 15;
inline constexpr A_u_long PF_Vers_BUGFIX_SHIFT = 11;
inline constexpr A_u_long PF_Vers_SUBVERS_BITS = 15;
inline constexpr A_u_long PF_Vers_SUBVERS_SHIFT = 15;
inline constexpr A_u_long PF_Vers_VERS_BITS = 7;
inline constexpr A_u_long PF_Vers_VERS_SHIFT = 19;
inline constexpr A_u_long PF_Vers_VERS_HIGH_BITS = 15;
inline constexpr A_u_long PF_Vers_VERS_HIGH_SHIFT = 26;
inline constexpr A_u_long PF_Vers_VERS_LOW_SHIFT = 3;

inline constexpr A_long PF_AE220_PLUG_IN_VERSION = 13;
inline constexpr A_long PF_AE220_PLUG_IN_SUBVERS = 27;

/// Packs a version number the way the host stores it.
/// @param version 0 to 127, the lowest three bits lie apart from the others
/// @param subversion, bug_fix 0 to 15
/// @param stage one of PF_Stage_...
/// @param build 0 to 511
constexpr A_u_long PF_VERSION(A_u_long version, A_u_long subversion, A_u_long bug_fix, A_u_long stage,
                              A_u_long build) {
    return (((version >> PF_Vers_VERS_LOW_SHIFT) & PF_Vers_VERS_HIGH_BITS) << PF_Vers_VERS_HIGH_SHIFT) |
           ((version & PF_Vers_VERS_BITS) << PF_Vers_VERS_SHIFT) |
           ((subversion & PF_Vers_SUBVERS_BITS) << PF_Vers_SUBVERS_SHIFT) |
           ((bug_fix & PF_Vers_BUGFIX_BITS) << PF_Vers_BUGFIX_SHIFT) |
           ((stage & PF_Vers_STAGE_BITS) << PF_Vers_STAGE_SHIFT) |
           ((build & PF_Vers_BUILD_BITS) << PF_Vers_BUILD_SHIFT);
}
