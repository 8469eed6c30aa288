// The record that describes and carries one control.
#pragma once

#include "effect_api/world.h"

using PF_ParamType = A_long;
using PF_Precision = A_short;
using PF_ParamFlags = A_long;
using PF_ParamUIFlags = A_long;
using PF_ChangeFlags = A_long;
using PF_ValueDisplayFlags = A_short;
using PF_FSliderFlags = A_u_long;
using PF_ArbitraryH = PF_Handle;

inline constexpr PF_ParamType PF_Param_LAYER = 0;
inline constexpr PF_ParamType PF_Param_SLIDER = 1;
inline constexpr PF_ParamType PF_Param_FIX_SLIDER = 2;
inline constexpr PF_ParamType PF_Param_ANGLE = 3;
inline constexpr PF_ParamType PF_Param_CHECKBOX = 4;
inline constexpr PF_ParamType PF_Param_COLOR = 5;
inline constexpr PF_ParamType PF_Param_POINT = 6;
inline constexpr PF_ParamType PF_Param_POPUP = 7;
inline constexpr PF_ParamType PF_Param_CUSTOM = 8;
inline constexpr PF_ParamType PF_Param_NO_DATA = 9;
inline constexpr PF_ParamType PF_Param_FLOAT_SLIDER = 10;
inline constexpr PF_ParamType PF_Param_ARBITRARY_DATA = 11;
inline constexpr PF_ParamType PF_Param_PATH = 12;
inline constexpr PF_ParamType PF_Param_GROUP_START = 13;
inline constexpr PF_ParamType PF_Param_GROUP_END = 14;
inline constexpr PF_ParamType PF_Param_BUTTON = 15;
inline constexpr PF_ParamType PF_Param_POINT_3D = 18;

inline constexpr PF_ParamFlags PF_ParamFlag_NONE = 0;
inline constexpr PF_ParamFlags PF_ParamFlag_CANNOT_TIME_VARY = 2;
inline constexpr PF_ParamFlags PF_ParamFlag_CANNOT_INTERP = 4;
inline constexpr PF_ParamFlags PF_ParamFlag_COLLAPSE_TWIRLY = 32;
inline constexpr PF_ParamFlags PF_ParamFlag_SUPERVISE = 64;
inline constexpr PF_ParamFlags PF_ParamFlag_START_COLLAPSED = 32;
inline constexpr PF_ParamFlags PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS = 128;
inline constexpr PF_ParamFlags PF_ParamFlag_LAYER_PARAM_IS_TRACKMATTE = 128;
inline constexpr PF_ParamFlags PF_ParamFlag_EXCLUDE_FROM_HAVE_INPUTS_CHANGED = 256;
inline constexpr PF_ParamFlags PF_ParamFlag_SKIP_REVEAL_WHEN_UNHIDDEN = 512;
inline constexpr PF_ParamFlags PF_ParamFlags_ALL = -1;

inline constexpr PF_ParamUIFlags PF_PUI_NONE = 0;
inline constexpr PF_ParamUIFlags PF_PUI_TOPIC = 1;
inline constexpr PF_ParamUIFlags PF_PUI_CONTROL = 2;
inline constexpr PF_ParamUIFlags PF_PUI_STD_CONTROL_ONLY = 4;
inline constexpr PF_ParamUIFlags PF_PUI_NO_ECW_UI = 8;
inline constexpr PF_ParamUIFlags PF_PUI_ECW_SEPARATOR = 16;
inline constexpr PF_ParamUIFlags PF_PUI_DISABLED = 32;
inline constexpr PF_ParamUIFlags PF_PUI_DONT_ERASE_TOPIC = 64;
inline constexpr PF_ParamUIFlags PF_PUI_DONT_ERASE_CONTROL = 128;
inline constexpr PF_ParamUIFlags PF_PUI_RADIO_BUTTON = 256;
inline constexpr PF_ParamUIFlags PF_PUI_INVISIBLE = 512;

inline constexpr PF_ChangeFlags PF_ChangeFlag_NONE = 0;
inline constexpr PF_ChangeFlags PF_ChangeFlag_CHANGED_VALUE = 1;
inline constexpr PF_ChangeFlags PF_ChangeFlag_SET_TO_VARY = 4;
inline constexpr PF_ChangeFlags PF_ChangeFlag_SET_TO_CONSTANT = 8;

inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_NONE = 0;
inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_PERCENT = 1;
inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_PIXEL = 2;
inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_REVERSE = 8;

inline constexpr PF_Precision PF_Precision_INTEGER = 0;
inline constexpr PF_Precision PF_Precision_TENTHS = 1;
inline constexpr PF_Precision PF_Precision_HUNDREDTHS = 2;
inline constexpr PF_Precision PF_Precision_THOUSANDTHS = 3;
inline constexpr PF_Precision PF_Precision_TEN_THOUSANDTHS = 4;

inline constexpr A_long PF_LayerDefault_MYSELF = -1;
inline constexpr A_long PF_LayerDefault_NONE = 0;

/// A slider of whole numbers.
struct PF_SliderDef {
    PF_ParamValue value;
    A_char value_str[32];
    A_char value_desc[32];
    PF_ParamValue valid_min;  // what may be stored
    PF_ParamValue valid_max;
    PF_ParamValue slider_min;  // what the panel's slider spans
    PF_ParamValue slider_max;
    PF_ParamValue dephault;  // the default
};
static_assert(sizeof(PF_SliderDef) == 88 && alignof(PF_SliderDef) == 4);
static_assert(offsetof(PF_SliderDef, value) == 0);
static_assert(offsetof(PF_SliderDef, value_str) == 4);
static_assert(offsetof(PF_SliderDef, value_desc) == 36);
static_assert(offsetof(PF_SliderDef, valid_min) == 68);
static_assert(offsetof(PF_SliderDef, valid_max) == 72);
static_assert(offsetof(PF_SliderDef, slider_min) == 76);
static_assert(offsetof(PF_SliderDef, slider_max) == 80);
static_assert(offsetof(PF_SliderDef, dephault) == 84);

/// A slider of real numbers. A percentage is stored as its number: 50 for 50 percent.
struct PF_FloatSliderDef {
    PF_FpLong value;
    PF_FpLong phase;
    A_char value_desc[32];
    PF_FpShort valid_min;  // what may be stored
    PF_FpShort valid_max;
    PF_FpShort slider_min;  // what the panel's slider spans
    PF_FpShort slider_max;
    PF_FpShort dephault;                 // the default
    PF_Precision precision;              // decimals shown
    PF_ValueDisplayFlags display_flags;  // PF_ValueDisplayFlag_...
    PF_FSliderFlags fs_flags;
    PF_FpShort curve_tolerance;
    PF_Boolean useExponent;
    PF_FpShort exponent;
};
static_assert(sizeof(PF_FloatSliderDef) == 88 && alignof(PF_FloatSliderDef) == 8);
static_assert(offsetof(PF_FloatSliderDef, value) == 0);
static_assert(offsetof(PF_FloatSliderDef, phase) == 8);
static_assert(offsetof(PF_FloatSliderDef, value_desc) == 16);
static_assert(offsetof(PF_FloatSliderDef, valid_min) == 48);
static_assert(offsetof(PF_FloatSliderDef, valid_max) == 52);
static_assert(offsetof(PF_FloatSliderDef, slider_min) == 56);
static_assert(offsetof(PF_FloatSliderDef, slider_max) == 60);
static_assert(offsetof(PF_FloatSliderDef, dephault) == 64);
static_assert(offsetof(PF_FloatSliderDef, precision) == 68);
static_assert(offsetof(PF_FloatSliderDef, display_flags) == 70);
static_assert(offsetof(PF_FloatSliderDef, fs_flags) == 72);
static_assert(offsetof(PF_FloatSliderDef, curve_tolerance) == 76);
static_assert(offsetof(PF_FloatSliderDef, useExponent) == 80);
static_assert(offsetof(PF_FloatSliderDef, exponent) == 84);

/// An angle in degrees, 16.16 fixed point; whole turns are kept.
struct PF_AngleDef {
    PF_Fixed value;
    PF_Fixed dephault;
    PF_Fixed valid_min;
    PF_Fixed valid_max;
};
static_assert(sizeof(PF_AngleDef) == 16 && alignof(PF_AngleDef) == 4);
static_assert(offsetof(PF_AngleDef, value) == 0);
static_assert(offsetof(PF_AngleDef, dephault) == 4);
static_assert(offsetof(PF_AngleDef, valid_min) == 8);
static_assert(offsetof(PF_AngleDef, valid_max) == 12);

/// A checkbox. nameptr is its side label, which the effect owns.
struct PF_CheckBoxDef {
    PF_ParamValue value;  // 0 off, 1 on
    PF_Boolean dephault;
    A_char reserved;
    A_short reserved1;
    union {
        const A_char* nameptr;
    } u;
};
static_assert(sizeof(PF_CheckBoxDef) == 16 && alignof(PF_CheckBoxDef) == 8);
static_assert(offsetof(PF_CheckBoxDef, value) == 0);
static_assert(offsetof(PF_CheckBoxDef, dephault) == 4);
static_assert(offsetof(PF_CheckBoxDef, reserved) == 5);
static_assert(offsetof(PF_CheckBoxDef, reserved1) == 6);
static_assert(offsetof(PF_CheckBoxDef, u.nameptr) == 8);

/// A choice of several. namesptr is the text of the choices, separated by bars, which the effect owns.
struct PF_PopupDef {
    PF_ParamValue value;  // from 1
    A_short num_choices;
    A_short dephault;
    union {
        const A_char* namesptr;
    } u;
};
static_assert(sizeof(PF_PopupDef) == 16 && alignof(PF_PopupDef) == 8);
static_assert(offsetof(PF_PopupDef, value) == 0);
static_assert(offsetof(PF_PopupDef, num_choices) == 4);
static_assert(offsetof(PF_PopupDef, dephault) == 6);
static_assert(offsetof(PF_PopupDef, u.namesptr) == 8);

/// A value that only the effect understands, in a handle that PF_Cmd_ARBITRARY_CALLBACK makes and copies.
struct PF_ArbitraryDef {
    A_short id;
    A_short pad;
    PF_ArbitraryH dephault;  // at registration; becomes the host's
    PF_ArbitraryH value;     // at check-out; the host's
    void* refconPV;          // passed back with every callback
};
static_assert(sizeof(PF_ArbitraryDef) == 32 && alignof(PF_ArbitraryDef) == 8);
static_assert(offsetof(PF_ArbitraryDef, id) == 0);
static_assert(offsetof(PF_ArbitraryDef, pad) == 2);
static_assert(offsetof(PF_ArbitraryDef, dephault) == 8);
static_assert(offsetof(PF_ArbitraryDef, value) == 16);
static_assert(offsetof(PF_ArbitraryDef, refconPV) == 24);

/// The part of a control that depends on its type; param_type selects the member. Types that this effect does
/// not use are left out.
union PF_ParamDefUnion {
    PF_LayerDef ld;
    PF_SliderDef sd;
    PF_AngleDef ad;
    PF_CheckBoxDef bd;
    PF_PopupDef pd;
    PF_FloatSliderDef fs_d;
    PF_ArbitraryDef arb_d;
};
static_assert(sizeof(PF_ParamDefUnion) == 120 && alignof(PF_ParamDefUnion) == 8);

/// One control: its description at registration, its value at check-out. Marking a change overwrites the disk
/// id, which has the same place.
struct PF_ParamDef {
    union {
        A_long id;                    // disk id: the control's identity in saved projects
        PF_ChangeFlags change_flags;  // in events: PF_ChangeFlag_...
    } uu;
    PF_ParamUIFlags ui_flags;
    A_short ui_width;  // of a control that the effect draws, pixels
    A_short ui_height;
    PF_ParamType param_type;
    A_char name[32];  // zero-terminated
    PF_ParamFlags flags;
    A_long unused;
    PF_ParamDefUnion u;
};
static_assert(sizeof(PF_ParamDef) == 176 && alignof(PF_ParamDef) == 8);
static_assert(offsetof(PF_ParamDef, uu.id) == 0);
static_assert(offsetof(PF_ParamDef, uu.change_flags) == 0);
static_assert(offsetof(PF_ParamDef, ui_flags) == 4);
static_assert(offsetof(PF_ParamDef, ui_width) == 8);
static_assert(offsetof(PF_ParamDef, ui_height) == 10);
static_assert(offsetof(PF_ParamDef, param_type) == 12);
static_assert(offsetof(PF_ParamDef, name) == 16);
static_assert(offsetof(PF_ParamDef, flags) == 48);
static_assert(offsetof(PF_ParamDef, unused) == 52);
static_assert(offsetof(PF_ParamDef, u) == 56);

using PF_ParamDefPtr = PF_ParamDef*;
using PF_ParamList = PF_ParamDef**;
