// Suites by name and version. The version asked for is not the digit of the record's name.
#pragma once

#include "effect_api/effect.h"
#include "effect_api/event.h"

struct AEGP_ErrReportState;
struct AEGP_ColorVal;
struct PF_AppPersonalTextInfo;
struct PF_FontName;

using PF_App_ColorType = A_short;
using PF_EyeDropperSampleMode = A_short;
using PF_FontStyleSheet = A_LegacyEnumType;
using AEGP_PluginID = A_long;
using AEGP_GlobalRefcon = struct _AEGP_GlobalRefcon*;

inline constexpr PF_App_ColorType PF_App_Color_TEXT = 2;

/// The ratio num / den.
struct A_Ratio {
    A_long num;
    A_u_long den;
};
static_assert(sizeof(A_Ratio) == 8 && alignof(A_Ratio) == 4);
static_assert(offsetof(A_Ratio, num) == 0);
static_assert(offsetof(A_Ratio, den) == 4);

/// Interface colour of the host, 16 bits a channel up to 65535.
struct PF_App_Color {
    A_u_short red;
    A_u_short green;
    A_u_short blue;
};
static_assert(sizeof(PF_App_Color) == 6 && alignof(PF_App_Color) == 2);
static_assert(offsetof(PF_App_Color, red) == 0);
static_assert(offsetof(PF_App_Color, green) == 2);
static_assert(offsetof(PF_App_Color, blue) == 4);

/// Acquires and releases all other suites, in pairs.
struct SPBasicSuite {
    SPErr (*AcquireSuite)(const char* name, int32 version, const void** suite);
    SPErr (*ReleaseSuite)(const char* name, int32 version);
    SPBoolean (*IsEqual)(const char* token1, const char* token2);
    SPErr (*AllocateBlock)(size_t size, void** block);
    SPErr (*FreeBlock)(void* block);
    SPErr (*ReallocateBlock)(void* block, size_t newSize, void** newblock);
    SPErr (*Undefined)(void);
};
static_assert(sizeof(SPBasicSuite) == 56 && alignof(SPBasicSuite) == 8);
static_assert(offsetof(SPBasicSuite, AcquireSuite) == 0);
static_assert(offsetof(SPBasicSuite, ReleaseSuite) == 8);
static_assert(offsetof(SPBasicSuite, IsEqual) == 16);
static_assert(offsetof(SPBasicSuite, AllocateBlock) == 24);
static_assert(offsetof(SPBasicSuite, FreeBlock) == 32);
static_assert(offsetof(SPBasicSuite, ReallocateBlock) == 40);
static_assert(offsetof(SPBasicSuite, Undefined) == 48);

/// The host's handles. A new handle is null without memory; a locked one gives the address of its bytes,
/// which is valid until the unlock. Sizes in bytes.
struct PF_HandleSuite1 {
    PF_Handle (*host_new_handle)(A_HandleSize size);
    void* (*host_lock_handle)(PF_Handle pf_handle);
    void (*host_unlock_handle)(PF_Handle pf_handle);
    void (*host_dispose_handle)(PF_Handle pf_handle);
    A_HandleSize (*host_get_handle_size)(PF_Handle pf_handle);
    PF_Err (*host_resize_handle)(A_HandleSize new_sizeL, PF_Handle* handlePH);
};
static_assert(sizeof(PF_HandleSuite1) == 48 && alignof(PF_HandleSuite1) == 8);
static_assert(offsetof(PF_HandleSuite1, host_new_handle) == 0);
static_assert(offsetof(PF_HandleSuite1, host_lock_handle) == 8);
static_assert(offsetof(PF_HandleSuite1, host_unlock_handle) == 16);
static_assert(offsetof(PF_HandleSuite1, host_dispose_handle) == 24);
static_assert(offsetof(PF_HandleSuite1, host_get_handle_size) == 32);
static_assert(offsetof(PF_HandleSuite1, host_resize_handle) == 40);

/// Functions of the C library, with their meanings there.
struct PF_ANSICallbacksSuite1 {
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
};
static_assert(sizeof(PF_ANSICallbacksSuite1) == 152 && alignof(PF_ANSICallbacksSuite1) == 8);
static_assert(offsetof(PF_ANSICallbacksSuite1, atan) == 0);
static_assert(offsetof(PF_ANSICallbacksSuite1, atan2) == 8);
static_assert(offsetof(PF_ANSICallbacksSuite1, ceil) == 16);
static_assert(offsetof(PF_ANSICallbacksSuite1, cos) == 24);
static_assert(offsetof(PF_ANSICallbacksSuite1, exp) == 32);
static_assert(offsetof(PF_ANSICallbacksSuite1, fabs) == 40);
static_assert(offsetof(PF_ANSICallbacksSuite1, floor) == 48);
static_assert(offsetof(PF_ANSICallbacksSuite1, fmod) == 56);
static_assert(offsetof(PF_ANSICallbacksSuite1, hypot) == 64);
static_assert(offsetof(PF_ANSICallbacksSuite1, log) == 72);
static_assert(offsetof(PF_ANSICallbacksSuite1, log10) == 80);
static_assert(offsetof(PF_ANSICallbacksSuite1, pow) == 88);
static_assert(offsetof(PF_ANSICallbacksSuite1, sin) == 96);
static_assert(offsetof(PF_ANSICallbacksSuite1, sqrt) == 104);
static_assert(offsetof(PF_ANSICallbacksSuite1, tan) == 112);
static_assert(offsetof(PF_ANSICallbacksSuite1, sprintf) == 120);
static_assert(offsetof(PF_ANSICallbacksSuite1, strcpy) == 128);
static_assert(offsetof(PF_ANSICallbacksSuite1, asin) == 136);
static_assert(offsetof(PF_ANSICallbacksSuite1, acos) == 144);

/// Services of the application. AEGP_RegisterWithAEGP gives the number under which it knows the effect.
struct AEGP_UtilitySuite3 {
    A_Err (*AEGP_ReportInfo)(AEGP_PluginID aegp_plugin_id, const A_char* info_stringZ);
    A_Err (*AEGP_GetDriverPluginInitFuncVersion)(A_short* major_versionPS, A_short* minor_versionPS);
    A_Err (*AEGP_GetDriverImplementationVersion)(A_short* major_versionPS, A_short* minor_versionPS);
    A_Err (*AEGP_StartQuietErrors)(AEGP_ErrReportState* err_stateP);
    A_Err (*AEGP_EndQuietErrors)(A_Boolean report_quieted_errorsB, AEGP_ErrReportState* err_stateP);
    A_Err (*AEGP_StartUndoGroup)(const A_char* undo_nameZ);
    A_Err (*AEGP_EndUndoGroup)(void);
    A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon global_refcon, const A_char* plugin_nameZ,
                                   AEGP_PluginID* plugin_id);
    A_Err (*AEGP_GetMainHWND)(void* main_hwnd);
    A_Err (*AEGP_ShowHideAllFloaters)(A_Boolean include_tool_palB);
    A_Err (*AEGP_PaintPalGetForeColor)(AEGP_ColorVal* fore_colorP);
    A_Err (*AEGP_PaintPalGetBackColor)(AEGP_ColorVal* back_colorP);
    A_Err (*AEGP_PaintPalSetForeColor)(const AEGP_ColorVal* fore_colorP);
    A_Err (*AEGP_PaintPalSetBackColor)(const AEGP_ColorVal* back_colorP);
    A_Err (*AEGP_CharPalGetFillColor)(A_Boolean* is_fill_color_definedPB, AEGP_ColorVal* fill_colorP);
    A_Err (*AEGP_CharPalGetStrokeColor)(A_Boolean* is_stroke_color_definedPB, AEGP_ColorVal* stroke_colorP);
    A_Err (*AEGP_CharPalSetFillColor)(const AEGP_ColorVal* fill_colorP);
    A_Err (*AEGP_CharPalSetStrokeColor)(const AEGP_ColorVal* stroke_colorP);
    A_Err (*AEGP_CharPalIsFillColorUIFrontmost)(A_Boolean* is_fill_color_selectedPB);
    A_Err (*AEGP_ConvertFpLongToHSFRatio)(A_FpLong numberF, A_Ratio* ratioPR);
    A_Err (*AEGP_ConvertHSFRatioToFpLong)(A_Ratio ratioR, A_FpLong* numberPF);
    A_Err (*AEGP_CauseIdleRoutinesToBeCalled)(void);
    A_Err (*AEGP_GetSuppressInteractiveUI)(A_Boolean* ui_is_suppressedPB);
    A_Err (*AEGP_WriteToOSConsole)(const A_char* textZ);
    A_Err (*AEGP_WriteToDebugLog)(const A_char* subsystemZ, const A_char* event_typeZ, const A_char* infoZ);
};
static_assert(sizeof(AEGP_UtilitySuite3) == 200 && alignof(AEGP_UtilitySuite3) == 8);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_ReportInfo) == 0);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_GetDriverPluginInitFuncVersion) == 8);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_GetDriverImplementationVersion) == 16);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_StartQuietErrors) == 24);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_EndQuietErrors) == 32);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_StartUndoGroup) == 40);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_EndUndoGroup) == 48);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_RegisterWithAEGP) == 56);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_GetMainHWND) == 64);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_ShowHideAllFloaters) == 72);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_PaintPalGetForeColor) == 80);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_PaintPalGetBackColor) == 88);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_PaintPalSetForeColor) == 96);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_PaintPalSetBackColor) == 104);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_CharPalGetFillColor) == 112);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_CharPalGetStrokeColor) == 120);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_CharPalSetFillColor) == 128);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_CharPalSetStrokeColor) == 136);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_CharPalIsFillColorUIFrontmost) == 144);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_ConvertFpLongToHSFRatio) == 152);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_ConvertHSFRatioToFpLong) == 160);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_CauseIdleRoutinesToBeCalled) == 168);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_GetSuppressInteractiveUI) == 176);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_WriteToOSConsole) == 184);
static_assert(offsetof(AEGP_UtilitySuite3, AEGP_WriteToDebugLog) == 192);

/// Calls pix_fn for each pixel of `area`, of the whole source when null, on any threads and in any order. The
/// pixels of src and dst at the same place are passed; refcon is passed through.
struct PF_iterateFloatSuite1 {
    PF_Err (*iterate)(PF_InData* in_data, A_long progress_base, A_long progress_final, PF_EffectWorld* src,
                      const PF_Rect* area, void* refcon, PF_IteratePixelFloatFunc pix_fn,
                      PF_EffectWorld* dst);
    PF_Err (*iterate_origin)(PF_InData* in_data, A_long progress_base, A_long progress_final,
                             PF_EffectWorld* src, const PF_Rect* area, const PF_Point* origin, void* refcon,
                             PF_IteratePixelFloatFunc pix_fn, PF_EffectWorld* dst);
    PF_Err (*iterate_origin_non_clip_src)(PF_InData* in_data, A_long progress_base, A_long progress_final,
                                          PF_EffectWorld* src, const PF_Rect* area, const PF_Point* origin,
                                          void* refcon, PF_IteratePixelFloatFunc pix_fn, PF_EffectWorld* dst);
};
static_assert(sizeof(PF_iterateFloatSuite1) == 24 && alignof(PF_iterateFloatSuite1) == 8);
static_assert(offsetof(PF_iterateFloatSuite1, iterate) == 0);
static_assert(offsetof(PF_iterateFloatSuite1, iterate_origin) == 8);
static_assert(offsetof(PF_iterateFloatSuite1, iterate_origin_non_clip_src) == 16);

/// Worlds of the effect's own, and the format of any world.
struct PF_WorldSuite2 {
    PF_Err (*PF_NewWorld)(PF_ProgPtr effect_ref, A_long widthL, A_long heightL, PF_Boolean clear_pixB,
                          PF_PixelFormat pixel_format, PF_EffectWorld* worldP);
    PF_Err (*PF_DisposeWorld)(PF_ProgPtr effect_ref, PF_EffectWorld* worldP);
    PF_Err (*PF_GetPixelFormat)(const PF_EffectWorld* worldP, PF_PixelFormat* pixel_formatP);
};
static_assert(sizeof(PF_WorldSuite2) == 24 && alignof(PF_WorldSuite2) == 8);
static_assert(offsetof(PF_WorldSuite2, PF_NewWorld) == 0);
static_assert(offsetof(PF_WorldSuite2, PF_DisposeWorld) == 8);
static_assert(offsetof(PF_WorldSuite2, PF_GetPixelFormat) == 16);

/// The application's colours, cursor and dialogs. PF_AppColorPickerDialog returns PF_Interrupt_CANCEL when
/// the user cancels.
struct PFAppSuite4 {
    PF_Err (*PF_AppGetBgColor)(PF_App_Color* bg_colorP);
    PF_Err (*PF_AppGetColor)(PF_App_ColorType color_type, PF_App_Color* app_colorP);
    PF_Err (*PF_GetPersonalInfo)(PF_AppPersonalTextInfo* ptiP);
    PF_Err (*PF_GetFontStyleSheet)(PF_FontStyleSheet sheet, PF_FontName* font_nameP0, A_short* font_numPS0,
                                   A_short* sizePS0, A_short* stylePS0);
    PF_Err (*PF_SetCursor)(PF_CursorType cursor);
    PF_Err (*PF_IsRenderEngine)(PF_Boolean* render_enginePB);
    PF_Err (*PF_AppColorPickerDialog)(const A_char* dialog_titleZ0, const PF_PixelFloat* sample_colorP,
                                      PF_Boolean use_ws_to_monitor_xformB, PF_PixelFloat* new_colorP);
    PF_Err (*PF_GetMouse)(PF_Point* pointP);
    PF_Err (*PF_InvalidateRect)(PF_ContextH contextH, const PF_Rect* rectP0);
    PF_Err (*PF_ConvertLocalToGlobal)(const PF_Point* localP, PF_Point* globalP);
    PF_Err (*PF_GetColorAtGlobalPoint)(const PF_Point* globalP, A_short eyeSize, PF_EyeDropperSampleMode mode,
                                       PF_PixelFloat* outColorP);
};
static_assert(sizeof(PFAppSuite4) == 88 && alignof(PFAppSuite4) == 8);
static_assert(offsetof(PFAppSuite4, PF_AppGetBgColor) == 0);
static_assert(offsetof(PFAppSuite4, PF_AppGetColor) == 8);
static_assert(offsetof(PFAppSuite4, PF_GetPersonalInfo) == 16);
static_assert(offsetof(PFAppSuite4, PF_GetFontStyleSheet) == 24);
static_assert(offsetof(PFAppSuite4, PF_SetCursor) == 32);
static_assert(offsetof(PFAppSuite4, PF_IsRenderEngine) == 40);
static_assert(offsetof(PFAppSuite4, PF_AppColorPickerDialog) == 48);
static_assert(offsetof(PFAppSuite4, PF_GetMouse) == 56);
static_assert(offsetof(PFAppSuite4, PF_InvalidateRect) == 64);
static_assert(offsetof(PFAppSuite4, PF_ConvertLocalToGlobal) == 72);
static_assert(offsetof(PFAppSuite4, PF_GetColorAtGlobalPoint) == 80);

/// Gives the drawing reference of an event's window, which stays the host's.
struct PF_EffectCustomUISuite1 {
    PF_Err (*PF_GetDrawingReference)(PF_ContextH effect_contextH, DRAWBOT_DrawRef* referenceP0);
};
static_assert(sizeof(PF_EffectCustomUISuite1) == 8 && alignof(PF_EffectCustomUISuite1) == 8);
static_assert(offsetof(PF_EffectCustomUISuite1, PF_GetDrawingReference) == 0);

/// The pixels of a world at one depth; null when the world has another.
struct PF_PixelDataSuite1 {
    PF_Err (*get_pixel_data8)(PF_EffectWorld* worldP, PF_PixelPtr pixelsP0, PF_Pixel8** pixPP);
    PF_Err (*get_pixel_data16)(PF_EffectWorld* worldP, PF_PixelPtr pixelsP0, PF_Pixel16** pixPP);
    PF_Err (*get_pixel_data_float)(PF_EffectWorld* worldP, PF_PixelPtr pixelsP0, PF_PixelFloat** pixPP);
};
static_assert(sizeof(PF_PixelDataSuite1) == 24 && alignof(PF_PixelDataSuite1) == 8);
static_assert(offsetof(PF_PixelDataSuite1, get_pixel_data8) == 0);
static_assert(offsetof(PF_PixelDataSuite1, get_pixel_data16) == 8);
static_assert(offsetof(PF_PixelDataSuite1, get_pixel_data_float) == 16);

inline constexpr char kPFHandleSuite[] = "PF Handle Suite";
inline constexpr int32 kPFHandleSuiteVersion1 = 2;
inline constexpr char kPFANSISuite[] = "PF ANSI Suite";
inline constexpr int32 kPFANSISuiteVersion1 = 1;
inline constexpr char kAEGPUtilitySuite[] = "AEGP Utility Suite";
inline constexpr int32 kAEGPUtilitySuiteVersion3 = 7;
inline constexpr char kPFIterateFloatSuite[] = "PF iterateFloat Suite";
inline constexpr int32 kPFIterateFloatSuiteVersion1 = 1;
inline constexpr char kPFWorldSuite[] = "PF World Suite";
inline constexpr int32 kPFWorldSuiteVersion2 = 2;
inline constexpr char kPFAppSuite[] = "PF AE App Suite";
inline constexpr int32 kPFAppSuiteVersion4 = 6;
inline constexpr char kPFEffectCustomUISuite[] = "PF Effect Custom UI Suite";
inline constexpr int32 kPFEffectCustomUISuiteVersion1 = 1;
inline constexpr char kPFPixelDataSuite[] = "PF Pixel Data Suite";
inline constexpr int32 kPFPixelDataSuiteVersion1 = 1;
inline constexpr char kSPBasicSuite[] = "SP Basic Suite";
inline constexpr int32 kSPBasicSuiteVersion = 4;
