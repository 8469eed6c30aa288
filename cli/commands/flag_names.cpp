#include "cli/commands/flag_names.h"

#include <span>

namespace flumo::cli {
namespace {

struct FlagRow {
    A_long bit;
    const char* name;
};

constexpr FlagRow kOutFlagRows[] = {
    {PF_OutFlag_KEEP_RESOURCE_OPEN, "KEEP_RESOURCE_OPEN"},
    {PF_OutFlag_WIDE_TIME_INPUT, "WIDE_TIME_INPUT"},
    {PF_OutFlag_NON_PARAM_VARY, "NON_PARAM_VARY"},
    {PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING, "SEQUENCE_DATA_NEEDS_FLATTENING"},
    {PF_OutFlag_I_DO_DIALOG, "I_DO_DIALOG"},
    {PF_OutFlag_USE_OUTPUT_EXTENT, "USE_OUTPUT_EXTENT"},
    {PF_OutFlag_SEND_DO_DIALOG, "SEND_DO_DIALOG"},
    {PF_OutFlag_DISPLAY_ERROR_MESSAGE, "DISPLAY_ERROR_MESSAGE"},
    {PF_OutFlag_I_EXPAND_BUFFER, "I_EXPAND_BUFFER"},
    {PF_OutFlag_PIX_INDEPENDENT, "PIX_INDEPENDENT"},
    {PF_OutFlag_I_WRITE_INPUT_BUFFER, "I_WRITE_INPUT_BUFFER"},
    {PF_OutFlag_I_SHRINK_BUFFER, "I_SHRINK_BUFFER"},
    {PF_OutFlag_WORKS_IN_PLACE, "WORKS_IN_PLACE"},
    {PF_OutFlag_CUSTOM_UI, "CUSTOM_UI"},
    {PF_OutFlag_REFRESH_UI, "REFRESH_UI"},
    {PF_OutFlag_NOP_RENDER, "NOP_RENDER"},
    {PF_OutFlag_I_USE_SHUTTER_ANGLE, "I_USE_SHUTTER_ANGLE"},
    {PF_OutFlag_I_USE_AUDIO, "I_USE_AUDIO"},
    {PF_OutFlag_I_AM_OBSOLETE, "I_AM_OBSOLETE"},
    {PF_OutFlag_FORCE_RERENDER, "FORCE_RERENDER"},
    {PF_OutFlag_PiPL_OVERRIDES_OUTDATA_OUTFLAGS, "PiPL_OVERRIDES_OUTDATA_OUTFLAGS"},
    {PF_OutFlag_I_HAVE_EXTERNAL_DEPENDENCIES, "I_HAVE_EXTERNAL_DEPENDENCIES"},
    {PF_OutFlag_DEEP_COLOR_AWARE, "DEEP_COLOR_AWARE"},
    {PF_OutFlag_SEND_UPDATE_PARAMS_UI, "SEND_UPDATE_PARAMS_UI"},
    {PF_OutFlag_AUDIO_FLOAT_ONLY, "AUDIO_FLOAT_ONLY"},
    {PF_OutFlag_AUDIO_IIR, "AUDIO_IIR"},
    {PF_OutFlag_I_SYNTHESIZE_AUDIO, "I_SYNTHESIZE_AUDIO"},
    {PF_OutFlag_AUDIO_EFFECT_TOO, "AUDIO_EFFECT_TOO"},
    {PF_OutFlag_AUDIO_EFFECT_ONLY, "AUDIO_EFFECT_ONLY"},
};

constexpr FlagRow kOutFlag2Rows[] = {
    {PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS, "SUPPORTS_QUERY_DYNAMIC_FLAGS"},
    {PF_OutFlag2_I_USE_3D_CAMERA, "I_USE_3D_CAMERA"},
    {PF_OutFlag2_I_USE_3D_LIGHTS, "I_USE_3D_LIGHTS"},
    {PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG, "PARAM_GROUP_START_COLLAPSED_FLAG"},
    {PF_OutFlag2_I_AM_THREADSAFE, "I_AM_THREADSAFE"},
    {PF_OutFlag2_CAN_COMBINE_WITH_DESTINATION, "CAN_COMBINE_WITH_DESTINATION"},
    {PF_OutFlag2_DOESNT_NEED_EMPTY_PIXELS, "DOESNT_NEED_EMPTY_PIXELS"},
    {PF_OutFlag2_REVEALS_ZERO_ALPHA, "REVEALS_ZERO_ALPHA"},
    {PF_OutFlag2_PRESERVES_FULLY_OPAQUE_PIXELS, "PRESERVES_FULLY_OPAQUE_PIXELS"},
    {PF_OutFlag2_SUPPORTS_SMART_RENDER, "SUPPORTS_SMART_RENDER"},
    {PF_OutFlag2_FLOAT_COLOR_AWARE, "FLOAT_COLOR_AWARE"},
    {PF_OutFlag2_I_USE_COLORSPACE_ENUMERATION, "I_USE_COLORSPACE_ENUMERATION"},
    {PF_OutFlag2_I_AM_DEPRECATED, "I_AM_DEPRECATED"},
    {PF_OutFlag2_PPRO_DO_NOT_CLONE_SEQUENCE_DATA_FOR_RENDER, "PPRO_DO_NOT_CLONE_SEQUENCE_DATA_FOR_RENDER"},
    {PF_OutFlag2_AUTOMATIC_WIDE_TIME_INPUT, "AUTOMATIC_WIDE_TIME_INPUT"},
    {PF_OutFlag2_I_USE_TIMECODE, "I_USE_TIMECODE"},
    {PF_OutFlag2_DEPENDS_ON_UNREFERENCED_MASKS, "DEPENDS_ON_UNREFERENCED_MASKS"},
    {PF_OutFlag2_OUTPUT_IS_WATERMARKED, "OUTPUT_IS_WATERMARKED"},
    {PF_OutFlag2_I_MIX_GUID_DEPENDENCIES, "I_MIX_GUID_DEPENDENCIES"},
    {PF_OutFlag2_AE13_5_THREADSAFE, "AE13_5_THREADSAFE"},
    {PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA, "SUPPORTS_GET_FLATTENED_SEQUENCE_DATA"},
    {PF_OutFlag2_CUSTOM_UI_ASYNC_MANAGER, "CUSTOM_UI_ASYNC_MANAGER"},
    {PF_OutFlag2_SUPPORTS_GPU_RENDER_F32, "SUPPORTS_GPU_RENDER_F32"},
    {PF_OutFlag2_SUPPORTS_THREADED_RENDERING, "SUPPORTS_THREADED_RENDERING"},
    {PF_OutFlag2_MUTABLE_RENDER_SEQUENCE_DATA_SLOWER, "MUTABLE_RENDER_SEQUENCE_DATA_SLOWER"},
    {PF_OutFlag2_SUPPORTS_DIRECTX_RENDERING, "SUPPORTS_DIRECTX_RENDERING"},
};

std::string name_of(uint32_t bit, std::span<const FlagRow> rows) {
    for (const FlagRow& row : rows) {
        if (static_cast<uint32_t>(row.bit) == bit) return row.name;
    }
    return std::to_string(bit);
}

std::vector<std::string> names_of(uint32_t flags, std::span<const FlagRow> rows) {
    std::vector<std::string> names;
    for (uint32_t bit = 1; bit != 0; bit <<= 1) {
        if ((flags & bit) != 0) names.push_back(name_of(bit, rows));
    }
    return names;
}

}  // namespace

std::vector<std::string> out_flag_names(PF_OutFlags flags) {
    return names_of(static_cast<uint32_t>(flags), kOutFlagRows);
}

std::vector<std::string> out_flag2_names(PF_OutFlags2 flags) {
    return names_of(static_cast<uint32_t>(flags), kOutFlag2Rows);
}

}  // namespace flumo::cli
