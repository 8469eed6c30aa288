// Pixels and worlds: the host's images. Alpha is the first channel at every depth; a 16-bit channel
// is full at 32768, a float channel at 1.0.
#pragma once

#include "effect_api/types.h"

using PF_WorldFlags = A_long;
using PF_PixelFormat = A_long;

/// 8 bits a channel, 0 to 255.
struct PF_Pixel {
    A_u_char alpha;
    A_u_char red;
    A_u_char green;
    A_u_char blue;
};
static_assert(sizeof(PF_Pixel) == 4 && alignof(PF_Pixel) == 1);
static_assert(offsetof(PF_Pixel, alpha) == 0);
static_assert(offsetof(PF_Pixel, red) == 1);
static_assert(offsetof(PF_Pixel, green) == 2);
static_assert(offsetof(PF_Pixel, blue) == 3);

/// 16 bits a channel, 0 to 32768.
struct PF_Pixel16 {
    A_u_short alpha;
    A_u_short red;
    A_u_short green;
    A_u_short blue;
};
static_assert(sizeof(PF_Pixel16) == 8 && alignof(PF_Pixel16) == 2);
static_assert(offsetof(PF_Pixel16, alpha) == 0);
static_assert(offsetof(PF_Pixel16, red) == 2);
static_assert(offsetof(PF_Pixel16, green) == 4);
static_assert(offsetof(PF_Pixel16, blue) == 6);

/// 32-bit float a channel, nominally 0 to 1.
struct PF_PixelFloat {
    PF_FpShort alpha;
    PF_FpShort red;
    PF_FpShort green;
    PF_FpShort blue;
};
static_assert(sizeof(PF_PixelFloat) == 16 && alignof(PF_PixelFloat) == 4);
static_assert(offsetof(PF_PixelFloat, alpha) == 0);
static_assert(offsetof(PF_PixelFloat, red) == 4);
static_assert(offsetof(PF_PixelFloat, green) == 8);
static_assert(offsetof(PF_PixelFloat, blue) == 12);

using PF_Pixel8 = PF_Pixel;
using PF_PixelPtr = PF_Pixel*;

/// An image of the host's, or a layer control's value. Rows are `rowbytes` apart, which may
/// exceed width x pixel size; origin_x and origin_y are its left and top in layer pixels at the
/// current resolution. The host owns the pixels.
struct PF_LayerDef {
    void* reserved0;
    void* reserved1;
    PF_WorldFlags world_flags;  // PF_WorldFlag_...; a float world has no flag of its own
    PF_PixelPtr data;  // the first pixel, whatever the depth; null for a layer control without a layer
    A_long rowbytes;   // bytes from one row to the next
    A_long width;      // pixels
    A_long height;     // pixels
    PF_UnionableRect extent_hint;  // the part that holds visible pixels
    void* platform_ref;
    A_long reserved_long1;
    void* reserved_long4;
    PF_RationalScale pix_aspect_ratio;  // width of a pixel over its height
    void* reserved_long2;
    A_long origin_x;
    A_long origin_y;
    A_long reserved_long3;
    A_long dephault;  // at registration of a layer control: PF_LayerDefault_...
};
static_assert(sizeof(PF_LayerDef) == 120 && alignof(PF_LayerDef) == 8);
static_assert(offsetof(PF_LayerDef, reserved0) == 0);
static_assert(offsetof(PF_LayerDef, reserved1) == 8);
static_assert(offsetof(PF_LayerDef, world_flags) == 16);
static_assert(offsetof(PF_LayerDef, data) == 24);
static_assert(offsetof(PF_LayerDef, rowbytes) == 32);
static_assert(offsetof(PF_LayerDef, width) == 36);
static_assert(offsetof(PF_LayerDef, height) == 40);
static_assert(offsetof(PF_LayerDef, extent_hint) == 44);
static_assert(offsetof(PF_LayerDef, platform_ref) == 64);
static_assert(offsetof(PF_LayerDef, reserved_long1) == 72);
static_assert(offsetof(PF_LayerDef, reserved_long4) == 80);
static_assert(offsetof(PF_LayerDef, pix_aspect_ratio) == 88);
static_assert(offsetof(PF_LayerDef, reserved_long2) == 96);
static_assert(offsetof(PF_LayerDef, origin_x) == 104);
static_assert(offsetof(PF_LayerDef, origin_y) == 108);
static_assert(offsetof(PF_LayerDef, reserved_long3) == 112);
static_assert(offsetof(PF_LayerDef, dephault) == 116);

using PF_EffectWorld = PF_LayerDef;

inline constexpr PF_PixelFormat PF_PixelFormat_ARGB32 = 1650946657;
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB64 = 909206881;
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB128 = 842229089;
inline constexpr PF_PixelFormat PF_PixelFormat_GPU_BGRA128 = 1094992704;
inline constexpr PF_PixelFormat PF_PixelFormat_BGRA32 = 1634887522;
inline constexpr PF_PixelFormat PF_PixelFormat_VUYA32 = 1635349878;
inline constexpr PF_PixelFormat PF_PixelFormat_NTSCDV25 = 846100068;
inline constexpr PF_PixelFormat PF_PixelFormat_PALDV25 = 846231140;
inline constexpr PF_PixelFormat PF_PixelFormat_INVALID = 1717854562;
inline constexpr PF_PixelFormat PF_PixelFormat_FORCE_LONG_INT = -1;

inline constexpr PF_WorldFlags PF_WorldFlag_DEEP = 1;
inline constexpr PF_WorldFlags PF_WorldFlag_WRITEABLE = 2;

inline constexpr PF_ChannelMask PF_ChannelMask_ALPHA = 1;
inline constexpr PF_ChannelMask PF_ChannelMask_RED = 2;
inline constexpr PF_ChannelMask PF_ChannelMask_GREEN = 4;
inline constexpr PF_ChannelMask PF_ChannelMask_BLUE = 8;
inline constexpr PF_ChannelMask PF_ChannelMask_ARGB = 15;

inline constexpr A_u_short PF_MAX_CHAN16 = 32768;
inline constexpr A_u_char PF_MAX_CHAN8 = 255;
