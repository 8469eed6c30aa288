// Events of a control's custom interface: clicks, drags and drawing.
#pragma once

#include "effect_api/callbacks.h"
#include "effect_api/drawbot.h"

using PF_CustomEventFlags = A_long;
using PF_WindowType = A_long;
using PF_EventType = A_long;
using PF_CursorType = A_long;
using PF_Modifiers = A_long;
using PF_KeyCode = A_u_long;
using PF_ContextRefcon = struct _PF_ContextRefcon*;
using PF_EffectArea = A_long;
using PF_EventOutFlags = A_long;
using PF_EventInFlags = A_long;
using PF_UIAlignment = A_long;

inline constexpr PF_EventType PF_Event_NONE = -1;
inline constexpr PF_EventType PF_Event_NEW_CONTEXT = 0;
inline constexpr PF_EventType PF_Event_ACTIVATE = 1;
inline constexpr PF_EventType PF_Event_DO_CLICK = 2;
inline constexpr PF_EventType PF_Event_DRAG = 3;
inline constexpr PF_EventType PF_Event_DRAW = 4;
inline constexpr PF_EventType PF_Event_DEACTIVATE = 5;
inline constexpr PF_EventType PF_Event_CLOSE_CONTEXT = 6;
inline constexpr PF_EventType PF_Event_IDLE = 7;
inline constexpr PF_EventType PF_Event_ADJUST_CURSOR = 9;
inline constexpr PF_EventType PF_Event_KEYDOWN = 10;
inline constexpr PF_EventType PF_Event_MOUSE_EXITED = 11;

inline constexpr PF_EffectArea PF_EA_NONE = 0;
inline constexpr PF_EffectArea PF_EA_PARAM_TITLE = 1;
inline constexpr PF_EffectArea PF_EA_CONTROL = 2;

inline constexpr PF_EventOutFlags PF_EO_NONE = 0;
inline constexpr PF_EventOutFlags PF_EO_HANDLED_EVENT = 1;
inline constexpr PF_EventOutFlags PF_EO_ALWAYS_UPDATE = 2;
inline constexpr PF_EventOutFlags PF_EO_NEVER_UPDATE = 4;
inline constexpr PF_EventOutFlags PF_EO_UPDATE_NOW = 8;

inline constexpr PF_Modifiers PF_Mod_NONE = 0;
inline constexpr PF_Modifiers PF_Mod_CMD_CTRL_KEY = 256;
inline constexpr PF_Modifiers PF_Mod_SHIFT_KEY = 512;
inline constexpr PF_Modifiers PF_Mod_CAPS_LOCK_KEY = 1024;
inline constexpr PF_Modifiers PF_Mod_OPT_ALT_KEY = 2048;
inline constexpr PF_Modifiers PF_Mod_MAC_CONTROL_KEY = 4096;

inline constexpr PF_CustomEventFlags PF_CustomEFlag_NONE = 0;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_COMP = 1;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_LAYER = 2;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_EFFECT = 4;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_PREVIEW = 8;

inline constexpr A_u_long PF_CONTEXT_MAGIC = 99251998;

inline constexpr PF_WindowType PF_Window_NONE = -1;
inline constexpr PF_WindowType PF_Window_COMP = 0;
inline constexpr PF_WindowType PF_Window_LAYER = 1;
inline constexpr PF_WindowType PF_Window_EFFECT = 2;
inline constexpr PF_WindowType PF_Window_PREVIEW = 3;

/// What register_ui asks for: the places whose events the effect gets, and sizes of its own windows in
/// pixels.
struct PF_CustomUIInfo {
    A_long reserved;
    PF_CustomEventFlags events;  // PF_CustomEFlag_..., one bit each
    A_long comp_ui_width;
    A_long comp_ui_height;
    PF_UIAlignment comp_ui_alignment;
    A_long layer_ui_width;
    A_long layer_ui_height;
    PF_UIAlignment layer_ui_alignment;
    A_long preview_ui_width;
    A_long preview_ui_height;
    PF_UIAlignment preview_ui_alignment;
};
static_assert(sizeof(PF_CustomUIInfo) == 44 && alignof(PF_CustomUIInfo) == 4);
static_assert(offsetof(PF_CustomUIInfo, reserved) == 0);
static_assert(offsetof(PF_CustomUIInfo, events) == 4);
static_assert(offsetof(PF_CustomUIInfo, comp_ui_width) == 8);
static_assert(offsetof(PF_CustomUIInfo, comp_ui_height) == 12);
static_assert(offsetof(PF_CustomUIInfo, comp_ui_alignment) == 16);
static_assert(offsetof(PF_CustomUIInfo, layer_ui_width) == 20);
static_assert(offsetof(PF_CustomUIInfo, layer_ui_height) == 24);
static_assert(offsetof(PF_CustomUIInfo, layer_ui_alignment) == 28);
static_assert(offsetof(PF_CustomUIInfo, preview_ui_width) == 32);
static_assert(offsetof(PF_CustomUIInfo, preview_ui_height) == 36);
static_assert(offsetof(PF_CustomUIInfo, preview_ui_alignment) == 40);

/// The window of an event. The host's.
struct PF_Context {
    A_u_long magic;  // PF_CONTEXT_MAGIC
    PF_WindowType w_type;
    PF_ContextRefcon reserved_flt;
    A_intptr_t plugin_state[4];  // the effect's, kept by the host with the window
    DRAWBOT_DrawRef reserved_drawref;
    void* reserved_paneP;
    void* reserved_job_manageP;
};
static_assert(sizeof(PF_Context) == 72 && alignof(PF_Context) == 8);
static_assert(offsetof(PF_Context, magic) == 0);
static_assert(offsetof(PF_Context, w_type) == 4);
static_assert(offsetof(PF_Context, reserved_flt) == 8);
static_assert(offsetof(PF_Context, plugin_state) == 16);
static_assert(offsetof(PF_Context, reserved_drawref) == 48);
static_assert(offsetof(PF_Context, reserved_paneP) == 56);
static_assert(offsetof(PF_Context, reserved_job_manageP) == 64);

using PF_ContextPtr = PF_Context*;
using PF_ContextH = PF_Context**;

/// A click, or one step of a drag.
struct PF_DoClickEventInfo {
    A_u_long when;
    PF_Point screen_point;  // panel pixels
    A_long num_clicks;
    PF_Modifiers modifiers;         // PF_Mod_..., one bit each
    A_intptr_t continue_refcon[4];  // the effect's, kept by the host from one step of a drag to the next
    PF_Boolean send_drag;           // set by the effect after a click: send drags until the button is up
    PF_Boolean last_time;           // the button is up: the last step
};
static_assert(sizeof(PF_DoClickEventInfo) == 64 && alignof(PF_DoClickEventInfo) == 8);
static_assert(offsetof(PF_DoClickEventInfo, when) == 0);
static_assert(offsetof(PF_DoClickEventInfo, screen_point) == 4);
static_assert(offsetof(PF_DoClickEventInfo, num_clicks) == 12);
static_assert(offsetof(PF_DoClickEventInfo, modifiers) == 16);
static_assert(offsetof(PF_DoClickEventInfo, continue_refcon) == 24);
static_assert(offsetof(PF_DoClickEventInfo, send_drag) == 56);
static_assert(offsetof(PF_DoClickEventInfo, last_time) == 57);

struct PF_DrawEventInfo {
    PF_UnionableRect update_rect;  // what has to be painted, panel pixels
    A_long depth;
};
static_assert(sizeof(PF_DrawEventInfo) == 20 && alignof(PF_DrawEventInfo) == 4);
static_assert(offsetof(PF_DrawEventInfo, update_rect) == 0);
static_assert(offsetof(PF_DrawEventInfo, depth) == 16);

struct PF_KeyDownEvent {
    A_u_long when;
    PF_Point screen_point;
    PF_KeyCode keycode;
    PF_Modifiers modifiers;
};
static_assert(sizeof(PF_KeyDownEvent) == 20 && alignof(PF_KeyDownEvent) == 4);
static_assert(offsetof(PF_KeyDownEvent, when) == 0);
static_assert(offsetof(PF_KeyDownEvent, screen_point) == 4);
static_assert(offsetof(PF_KeyDownEvent, keycode) == 12);
static_assert(offsetof(PF_KeyDownEvent, modifiers) == 16);

struct PF_AdjustCursorEventInfo {
    PF_Point screen_point;
    PF_Modifiers modifiers;
    PF_CursorType set_cursor;
};
static_assert(sizeof(PF_AdjustCursorEventInfo) == 16 && alignof(PF_AdjustCursorEventInfo) == 4);
static_assert(offsetof(PF_AdjustCursorEventInfo, screen_point) == 0);
static_assert(offsetof(PF_AdjustCursorEventInfo, modifiers) == 8);
static_assert(offsetof(PF_AdjustCursorEventInfo, set_cursor) == 12);

/// e_type selects the member; drags use do_click.
union PF_EventUnion {
    PF_DoClickEventInfo do_click;
    PF_DrawEventInfo draw;
    PF_KeyDownEvent key_down;
    PF_AdjustCursorEventInfo adjust_cursor;
};
static_assert(sizeof(PF_EventUnion) == 64 && alignof(PF_EventUnion) == 8);

/// Which control of the panel an event belongs to; frames in panel pixels.
struct PF_EffectWindowInfo {
    PF_ParamIndex index;             // 0 is the input layer
    PF_EffectArea area;              // PF_EA_...: the title or the control itself
    PF_UnionableRect current_frame;  // of that area
    PF_UnionableRect param_title_frame;
    A_long horiz_offset;
};
static_assert(sizeof(PF_EffectWindowInfo) == 44 && alignof(PF_EffectWindowInfo) == 4);
static_assert(offsetof(PF_EffectWindowInfo, index) == 0);
static_assert(offsetof(PF_EffectWindowInfo, area) == 4);
static_assert(offsetof(PF_EffectWindowInfo, current_frame) == 8);
static_assert(offsetof(PF_EffectWindowInfo, param_title_frame) == 24);
static_assert(offsetof(PF_EffectWindowInfo, horiz_offset) == 40);

/// Conversions between layer, composition and source coordinates; refcon is the first argument of each.
struct PF_EventCallbacks {
    void* refcon;
    PF_Err (*layer_to_comp)(void* refcon, PF_ContextH context, A_long curr_time, A_long time_scale,
                            PF_FixedPoint* pt);
    PF_Err (*comp_to_layer)(void* refcon, PF_ContextH context, A_long curr_time, A_long time_scale,
                            PF_FixedPoint* pt);
    PF_Err (*get_comp2layer_xform)(void* refcon, PF_ContextH context, A_long curr_time, A_long time_scale,
                                   A_long* exists, PF_FloatMatrix* c2l);
    PF_Err (*get_layer2comp_xform)(void* refcon, PF_ContextH context, A_long curr_time, A_long time_scale,
                                   PF_FloatMatrix* l2c);
    PF_Err (*source_to_frame)(void* refcon, PF_ContextH context, PF_FixedPoint* pt);
    PF_Err (*frame_to_source)(void* refcon, PF_ContextH context, PF_FixedPoint* pt);
    PF_Err (*info_draw_color)(void* refcon, PF_Pixel color);
    PF_Err (*info_draw_text)(void* refcon, const A_char* text1Z0, const A_char* text2Z0);
};
static_assert(sizeof(PF_EventCallbacks) == 72 && alignof(PF_EventCallbacks) == 8);
static_assert(offsetof(PF_EventCallbacks, refcon) == 0);
static_assert(offsetof(PF_EventCallbacks, layer_to_comp) == 8);
static_assert(offsetof(PF_EventCallbacks, comp_to_layer) == 16);
static_assert(offsetof(PF_EventCallbacks, get_comp2layer_xform) == 24);
static_assert(offsetof(PF_EventCallbacks, get_layer2comp_xform) == 32);
static_assert(offsetof(PF_EventCallbacks, source_to_frame) == 40);
static_assert(offsetof(PF_EventCallbacks, frame_to_source) == 48);
static_assert(offsetof(PF_EventCallbacks, info_draw_color) == 56);
static_assert(offsetof(PF_EventCallbacks, info_draw_text) == 64);

/// `extra` of PF_Cmd_EVENT. A drag repeats the click event with the continue_refcon words of the step before.
struct PF_EventExtra {
    PF_ContextH contextH;
    PF_EventType e_type;
    PF_EventUnion u;
    PF_EffectWindowInfo effect_win;
    PF_EventCallbacks cbs;
    PF_EventInFlags evt_in_flags;
    PF_EventOutFlags evt_out_flags;  // set by the effect: PF_EO_...
};
static_assert(sizeof(PF_EventExtra) == 208 && alignof(PF_EventExtra) == 8);
static_assert(offsetof(PF_EventExtra, contextH) == 0);
static_assert(offsetof(PF_EventExtra, e_type) == 8);
static_assert(offsetof(PF_EventExtra, u) == 16);
static_assert(offsetof(PF_EventExtra, effect_win) == 80);
static_assert(offsetof(PF_EventExtra, cbs) == 128);
static_assert(offsetof(PF_EventExtra, evt_in_flags) == 200);
static_assert(offsetof(PF_EventExtra, evt_out_flags) == 204);
