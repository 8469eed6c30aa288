// Widths and small records that every other header of the host interface builds on. The host's
// "long" has 32 bits on every platform here, so all integers are fixed-width.
#pragma once

#include <cstddef>
#include <cstdint>

using A_long = int32_t;
using A_u_long = uint32_t;
using A_char = char;
using A_FpLong = double;
using A_FpShort = float;
using A_Err = A_long;
using A_short = int16_t;
using A_u_short = uint16_t;
using A_u_char = uint8_t;
using A_Boolean = uint8_t;
using A_intptr_t = intptr_t;
using A_u_longlong = uint64_t;
using A_HandleSize = A_u_longlong;
using A_AppID = A_long;
using A_LegacyEnumType = A_long;

using PF_Err = A_long;
using PF_Boolean = A_char;
using PF_Fixed = A_long;
using PF_UFixed = A_u_long;
using PF_FpShort = A_FpShort;
using PF_FpLong = A_FpLong;
using PF_ParamValue = A_long;
using PF_ParamIndex = A_long;
using PF_Quality = A_long;
using PF_ModeFlags = A_long;
using PF_Field = A_long;
using PF_ChannelMask = A_long;

/// A relocatable block of the host's memory: a pointer to the master pointer, whose target is null
/// when the block is gone.
using PF_Handle = void**;

/// Identifies one running call to the host; opaque to the effect, valid until the call returns.
using PF_ProgPtr = struct PF_ProgressInfo*;

/// Half-open rectangle in pixels.
struct PF_LRect {
    A_long left;
    A_long top;
    A_long right;
    A_long bottom;
};
static_assert(sizeof(PF_LRect) == 16 && alignof(PF_LRect) == 4);
static_assert(offsetof(PF_LRect, left) == 0);
static_assert(offsetof(PF_LRect, top) == 4);
static_assert(offsetof(PF_LRect, right) == 8);
static_assert(offsetof(PF_LRect, bottom) == 12);

using PF_Rect = PF_LRect;
using PF_UnionableRect = PF_Rect;

/// Point in pixels: h runs right, v runs down.
struct PF_Point {
    A_long h;
    A_long v;
};
static_assert(sizeof(PF_Point) == 8 && alignof(PF_Point) == 4);
static_assert(offsetof(PF_Point, h) == 0);
static_assert(offsetof(PF_Point, v) == 4);

/// Point in 16.16 fixed point.
struct PF_FixedPoint {
    PF_Fixed x;
    PF_Fixed y;
};
static_assert(sizeof(PF_FixedPoint) == 8 && alignof(PF_FixedPoint) == 4);
static_assert(offsetof(PF_FixedPoint, x) == 0);
static_assert(offsetof(PF_FixedPoint, y) == 4);

/// The ratio num / den, such as the downsampling 1/2. den is above 0.
struct PF_RationalScale {
    A_long num;
    A_u_long den;
};
static_assert(sizeof(PF_RationalScale) == 8 && alignof(PF_RationalScale) == 4);
static_assert(offsetof(PF_RationalScale, num) == 0);
static_assert(offsetof(PF_RationalScale, den) == 4);

/// Version of the interface that the host offers.
struct PF_SpecVersion {
    A_short major;
    A_short minor;
};
static_assert(sizeof(PF_SpecVersion) == 4 && alignof(PF_SpecVersion) == 2);
static_assert(offsetof(PF_SpecVersion, major) == 0);
static_assert(offsetof(PF_SpecVersion, minor) == 2);

/// Multi-character host application number of Premiere Pro, "PrMr".
inline constexpr A_AppID kPremiereApplId = 1349668210;
/// Multi-character host application number of After Effects, "FXTC".
inline constexpr A_AppID kAfterEffectsApplId = 1180193859;
