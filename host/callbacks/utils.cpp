// The utility callbacks of PF_InData and the one suite of the application that is no drawing.
#include "host/callbacks/refuse.h"
#include "host/callbacks/tables.h"

namespace flumo::host {

namespace {

/// Number that this host gives to an effect which registers itself.
constexpr AEGP_PluginID kPluginId = 1;

PF_Err refuse_app(PF_ProgPtr, A_long, ...) {
    return Refusal<PF_Err (*)()>::call();
}

A_Err register_with_aegp(AEGP_GlobalRefcon, const A_char*, AEGP_PluginID* plugin_id) {
    return answer(Callback::kRegisterWithAegp, [&](Call&) -> PF_Err {
        *plugin_id = kPluginId;
        return PF_Err_NONE;
    });
}

AEGP_UtilitySuite3 filled_utility_suite() {
    AEGP_UtilitySuite3 s{};
    refuse(s.AEGP_ReportInfo, s.AEGP_GetDriverPluginInitFuncVersion, s.AEGP_GetDriverImplementationVersion,
           s.AEGP_StartQuietErrors, s.AEGP_EndQuietErrors, s.AEGP_StartUndoGroup, s.AEGP_EndUndoGroup,
           s.AEGP_GetMainHWND, s.AEGP_ShowHideAllFloaters, s.AEGP_PaintPalGetForeColor,
           s.AEGP_PaintPalGetBackColor, s.AEGP_PaintPalSetForeColor, s.AEGP_PaintPalSetBackColor,
           s.AEGP_CharPalGetFillColor, s.AEGP_CharPalGetStrokeColor, s.AEGP_CharPalSetFillColor,
           s.AEGP_CharPalSetStrokeColor, s.AEGP_CharPalIsFillColorUIFrontmost, s.AEGP_ConvertFpLongToHSFRatio,
           s.AEGP_ConvertHSFRatioToFpLong, s.AEGP_CauseIdleRoutinesToBeCalled,
           s.AEGP_GetSuppressInteractiveUI, s.AEGP_WriteToOSConsole, s.AEGP_WriteToDebugLog);
    s.AEGP_RegisterWithAEGP = register_with_aegp;
    return s;
}

}  // namespace

PF_UtilCallbacks util_callbacks() {
    PF_UtilCallbacks t{};
    refuse(t.begin_sampling, t.subpixel_sample, t.area_sample, t.end_sampling, t.composite_rect, t.blend,
           t.convolve, t.copy, t.fill, t.gaussian_kernel, t.iterate, t.premultiply, t.premultiply_color,
           t.new_world, t.dispose_world, t.iterate_origin, t.iterate_lut, t.transfer_rect, t.transform_world,
           t.get_callback_addr, t.get_platform_data, t.iterate_origin_non_clip_src, t.iterate_generic,
           t.subpixel_sample16, t.area_sample16, t.fill16, t.premultiply_color16, t.iterate16,
           t.iterate_origin16, t.iterate_origin_non_clip_src16);
    refuse(t.colorCB.RGBtoHLS, t.colorCB.HLStoRGB, t.colorCB.RGBtoYIQ, t.colorCB.YIQtoRGB,
           t.colorCB.Luminance, t.colorCB.Hue, t.colorCB.Lightness, t.colorCB.Saturation);
    t.app = refuse_app;
    const PF_HandleSuite1& handles = handle_suite();
    t.host_new_handle = handles.host_new_handle;
    t.host_lock_handle = handles.host_lock_handle;
    t.host_unlock_handle = handles.host_unlock_handle;
    t.host_dispose_handle = handles.host_dispose_handle;
    t.host_get_handle_size = handles.host_get_handle_size;
    t.host_resize_handle = handles.host_resize_handle;
    t.ansi = ansi_block();
    t.get_pixel_data8 = pixel_data_suite().get_pixel_data8;
    t.get_pixel_data16 = pixel_data_suite().get_pixel_data16;
    return t;
}

const AEGP_UtilitySuite3& utility_suite() {
    static const AEGP_UtilitySuite3 suite = filled_utility_suite();
    return suite;
}

}  // namespace flumo::host
