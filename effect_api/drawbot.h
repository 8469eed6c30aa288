// Drawbot: the host's two-dimensional drawing in panels. Colours are red, green, blue, alpha;
// coordinates are panel pixels.
#pragma once

#include "effect_api/types.h"

using int32 = int32_t;
using SPBoolean = int32;
using SPErr = int32;
using DRAWBOT_DrawRef = struct _DRAWBOT_DrawRef*;
using DRAWBOT_SupplierRef = struct _DRAWBOT_SupplierRef*;
using DRAWBOT_SurfaceRef = struct _DRAWBOT_SurfaceRef*;
using DRAWBOT_PenRef = struct _DRAWBOT_PenRef*;
using DRAWBOT_PathRef = struct _DRAWBOT_PathRef*;
using DRAWBOT_BrushRef = struct _DRAWBOT_BrushRef*;
using DRAWBOT_ImageRef = struct _DRAWBOT_ImageRef*;
using DRAWBOT_FontRef = struct _DRAWBOT_FontRef*;
using DRAWBOT_ObjectRef = struct _DRAWBOT_ObjectRef*;
using DRAWBOT_FillType = int;
using DRAWBOT_PixelLayout = int;
using DRAWBOT_TextAlignment = int;
using DRAWBOT_TextTruncation = int;
using DRAWBOT_InterpolationPolicy = int;
using DRAWBOT_AntiAliasPolicy = int;
using ADOBESDK_UTF16Char = uint16_t;
using ADOBESDK_Boolean = uint8_t;
using DRAWBOT_UTF16Char = ADOBESDK_UTF16Char;
using DRAWBOT_Boolean = ADOBESDK_Boolean;

struct DRAWBOT_MatrixF32;

inline constexpr int kDRAWBOT_FillType_EvenOdd = 0;
inline constexpr int kDRAWBOT_FillType_Winding = 1;
inline constexpr int kDRAWBOT_FillType_Default = 1;
inline constexpr int kDRAWBOT_PixelLayout_24RGB = 0;
inline constexpr int kDRAWBOT_PixelLayout_24BGR = 1;
inline constexpr int kDRAWBOT_PixelLayout_32RGB = 2;
inline constexpr int kDRAWBOT_PixelLayout_32BGR = 3;
inline constexpr int kDRAWBOT_PixelLayout_32ARGB_Straight = 4;
inline constexpr int kDRAWBOT_PixelLayout_32ARGB_Premul = 5;
inline constexpr int kDRAWBOT_PixelLayout_32BGRA_Straight = 6;
inline constexpr int kDRAWBOT_PixelLayout_32BGRA_Premul = 7;
inline constexpr int kDRAWBOT_TextAlignment_Left = 0;
inline constexpr int kDRAWBOT_TextAlignment_Center = 1;
inline constexpr int kDRAWBOT_TextAlignment_Right = 2;
inline constexpr int kDRAWBOT_TextAlignment_Default = 0;
inline constexpr int kDRAWBOT_TextTruncation_None = 0;
inline constexpr int kDRAWBOT_TextTruncation_End = 1;
inline constexpr int kDRAWBOT_TextTruncation_EndEllipsis = 2;
inline constexpr int kDRAWBOT_TextTruncation_PathEllipsis = 3;
inline constexpr int kDRAWBOT_InterpolationPolicy_None = 0;
inline constexpr int kDRAWBOT_InterpolationPolicy_Med = 1;
inline constexpr int kDRAWBOT_InterpolationPolicy_High = 2;
inline constexpr int kDRAWBOT_InterpolationPolicy_Default = 0;
inline constexpr int kDRAWBOT_AntiAliasPolicy_None = 0;
inline constexpr int kDRAWBOT_AntiAliasPolicy_Med = 1;
inline constexpr int kDRAWBOT_AntiAliasPolicy_High = 2;
inline constexpr int kDRAWBOT_AntiAliasPolicy_Default = 0;

/// Straight colour, 0 to 1.
struct DRAWBOT_ColorRGBA {
    float red;
    float green;
    float blue;
    float alpha;
};
static_assert(sizeof(DRAWBOT_ColorRGBA) == 16 && alignof(DRAWBOT_ColorRGBA) == 4);
static_assert(offsetof(DRAWBOT_ColorRGBA, red) == 0);
static_assert(offsetof(DRAWBOT_ColorRGBA, green) == 4);
static_assert(offsetof(DRAWBOT_ColorRGBA, blue) == 8);
static_assert(offsetof(DRAWBOT_ColorRGBA, alpha) == 12);

struct DRAWBOT_PointF32 {
    float x;
    float y;
};
static_assert(sizeof(DRAWBOT_PointF32) == 8 && alignof(DRAWBOT_PointF32) == 4);
static_assert(offsetof(DRAWBOT_PointF32, x) == 0);
static_assert(offsetof(DRAWBOT_PointF32, y) == 4);

struct DRAWBOT_RectF32 {
    float left;
    float top;
    float width;
    float height;
};
static_assert(sizeof(DRAWBOT_RectF32) == 16 && alignof(DRAWBOT_RectF32) == 4);
static_assert(offsetof(DRAWBOT_RectF32, left) == 0);
static_assert(offsetof(DRAWBOT_RectF32, top) == 4);
static_assert(offsetof(DRAWBOT_RectF32, width) == 8);
static_assert(offsetof(DRAWBOT_RectF32, height) == 12);

struct DRAWBOT_Rect32 {
    int left;
    int top;
    int width;
    int height;
};
static_assert(sizeof(DRAWBOT_Rect32) == 16 && alignof(DRAWBOT_Rect32) == 4);
static_assert(offsetof(DRAWBOT_Rect32, left) == 0);
static_assert(offsetof(DRAWBOT_Rect32, top) == 4);
static_assert(offsetof(DRAWBOT_Rect32, width) == 8);
static_assert(offsetof(DRAWBOT_Rect32, height) == 12);

/// Gives a drawing reference's supplier and surface, which stay the host's. Here and below a status other
/// than 0 is a failure.
struct DRAWBOT_DrawbotSuite1 {
    SPErr (*GetSupplier)(DRAWBOT_DrawRef in_drawbot_ref, DRAWBOT_SupplierRef* out_supplierP);
    SPErr (*GetSurface)(DRAWBOT_DrawRef in_drawbot_ref, DRAWBOT_SurfaceRef* out_surfaceP);
};
static_assert(sizeof(DRAWBOT_DrawbotSuite1) == 16 && alignof(DRAWBOT_DrawbotSuite1) == 8);
static_assert(offsetof(DRAWBOT_DrawbotSuite1, GetSupplier) == 0);
static_assert(offsetof(DRAWBOT_DrawbotSuite1, GetSurface) == 8);

/// Makes drawing objects, which the caller owns and releases with ReleaseObject. The pixels of an image are
/// read in the call or later: they stay valid and unchanged until the image is released.
struct DRAWBOT_SupplierSuite1 {
    SPErr (*NewPen)(DRAWBOT_SupplierRef in_supplier_ref, const DRAWBOT_ColorRGBA* in_colorP, float in_size,
                    DRAWBOT_PenRef* out_penP);
    SPErr (*NewBrush)(DRAWBOT_SupplierRef in_supplier_ref, const DRAWBOT_ColorRGBA* in_colorP,
                      DRAWBOT_BrushRef* out_brushP);
    SPErr (*SupportsText)(DRAWBOT_SupplierRef in_supplier_ref, DRAWBOT_Boolean* out_supports_textPB);
    SPErr (*GetDefaultFontSize)(DRAWBOT_SupplierRef in_supplier_ref, float* out_font_sizeF);
    SPErr (*NewDefaultFont)(DRAWBOT_SupplierRef in_supplier_ref, float in_font_sizeF,
                            DRAWBOT_FontRef* out_fontP);
    SPErr (*NewImageFromBuffer)(DRAWBOT_SupplierRef in_supplier_ref, int in_width, int in_height,
                                int in_row_bytes, DRAWBOT_PixelLayout in_pl, const void* in_dataP,
                                DRAWBOT_ImageRef* out_imageP);
    SPErr (*NewPath)(DRAWBOT_SupplierRef in_supplier_ref, DRAWBOT_PathRef* out_pathP);
    SPErr (*SupportsPixelLayoutBGRA)(DRAWBOT_SupplierRef in_supplier_ref,
                                     DRAWBOT_Boolean* out_supports_bgraPB);
    SPErr (*PrefersPixelLayoutBGRA)(DRAWBOT_SupplierRef in_supplier_ref, DRAWBOT_Boolean* out_prefers_bgraPB);
    SPErr (*SupportsPixelLayoutARGB)(DRAWBOT_SupplierRef in_supplier_ref,
                                     DRAWBOT_Boolean* out_supports_argbPB);
    SPErr (*PrefersPixelLayoutARGB)(DRAWBOT_SupplierRef in_supplier_ref, DRAWBOT_Boolean* out_prefers_argbPB);
    SPErr (*RetainObject)(DRAWBOT_ObjectRef in_obj_ref);
    SPErr (*ReleaseObject)(DRAWBOT_ObjectRef in_obj_ref);
};
static_assert(sizeof(DRAWBOT_SupplierSuite1) == 104 && alignof(DRAWBOT_SupplierSuite1) == 8);
static_assert(offsetof(DRAWBOT_SupplierSuite1, NewPen) == 0);
static_assert(offsetof(DRAWBOT_SupplierSuite1, NewBrush) == 8);
static_assert(offsetof(DRAWBOT_SupplierSuite1, SupportsText) == 16);
static_assert(offsetof(DRAWBOT_SupplierSuite1, GetDefaultFontSize) == 24);
static_assert(offsetof(DRAWBOT_SupplierSuite1, NewDefaultFont) == 32);
static_assert(offsetof(DRAWBOT_SupplierSuite1, NewImageFromBuffer) == 40);
static_assert(offsetof(DRAWBOT_SupplierSuite1, NewPath) == 48);
static_assert(offsetof(DRAWBOT_SupplierSuite1, SupportsPixelLayoutBGRA) == 56);
static_assert(offsetof(DRAWBOT_SupplierSuite1, PrefersPixelLayoutBGRA) == 64);
static_assert(offsetof(DRAWBOT_SupplierSuite1, SupportsPixelLayoutARGB) == 72);
static_assert(offsetof(DRAWBOT_SupplierSuite1, PrefersPixelLayoutARGB) == 80);
static_assert(offsetof(DRAWBOT_SupplierSuite1, RetainObject) == 88);
static_assert(offsetof(DRAWBOT_SupplierSuite1, ReleaseObject) == 96);

/// Paints on a surface.
struct DRAWBOT_SurfaceSuite2 {
    SPErr (*PushStateStack)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*PopStateStack)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*PaintRect)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_ColorRGBA* in_colorP,
                       const DRAWBOT_RectF32* in_rectPR);
    SPErr (*FillPath)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_BrushRef in_brush_ref,
                      DRAWBOT_PathRef in_path_ref, DRAWBOT_FillType in_fill_type);
    SPErr (*StrokePath)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_PenRef in_pen_ref,
                        DRAWBOT_PathRef in_path_ref);
    SPErr (*Clip)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_SupplierRef in_supplier_ref,
                  const DRAWBOT_Rect32* in_rectPR);
    SPErr (*GetClipBounds)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_Rect32* out_rectPR);
    SPErr (*IsWithinClipBounds)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_Rect32* in_rectPR,
                                DRAWBOT_Boolean* out_withinPB);
    SPErr (*Transform)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_MatrixF32* in_matrixP);
    SPErr (*DrawString)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_BrushRef in_brush_ref,
                        DRAWBOT_FontRef in_font_ref, const DRAWBOT_UTF16Char* in_stringP,
                        const DRAWBOT_PointF32* in_originP, DRAWBOT_TextAlignment in_alignment_style,
                        DRAWBOT_TextTruncation in_truncation_style, float in_truncation_width);
    SPErr (*DrawImage)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_ImageRef in_image_ref,
                       const DRAWBOT_PointF32* in_originP, float in_alpha);
    SPErr (*SetInterpolationPolicy)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_InterpolationPolicy in_interp);
    SPErr (*GetInterpolationPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                    DRAWBOT_InterpolationPolicy* out_interpP);
    SPErr (*SetAntiAliasPolicy)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_AntiAliasPolicy in_policy);
    SPErr (*GetAntiAliasPolicy)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_AntiAliasPolicy* out_policyP);
    SPErr (*Flush)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*GetTransformToScreenScale)(DRAWBOT_SurfaceRef in_surface_ref, float* out_scale);
};
static_assert(sizeof(DRAWBOT_SurfaceSuite2) == 136 && alignof(DRAWBOT_SurfaceSuite2) == 8);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, PushStateStack) == 0);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, PopStateStack) == 8);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, PaintRect) == 16);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, FillPath) == 24);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, StrokePath) == 32);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, Clip) == 40);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, GetClipBounds) == 48);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, IsWithinClipBounds) == 56);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, Transform) == 64);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, DrawString) == 72);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, DrawImage) == 80);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, SetInterpolationPolicy) == 88);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, GetInterpolationPolicy) == 96);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, SetAntiAliasPolicy) == 104);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, GetAntiAliasPolicy) == 112);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, Flush) == 120);
static_assert(offsetof(DRAWBOT_SurfaceSuite2, GetTransformToScreenScale) == 128);

/// Adds to a path. Each point is relative to the surface, not to the point before.
struct DRAWBOT_PathSuite1 {
    SPErr (*MoveTo)(DRAWBOT_PathRef in_path_ref, float in_x, float in_y);
    SPErr (*LineTo)(DRAWBOT_PathRef in_path_ref, float in_x, float in_y);
    SPErr (*BezierTo)(DRAWBOT_PathRef in_path_ref, const DRAWBOT_PointF32* in_pt1P,
                      const DRAWBOT_PointF32* in_pt2P, const DRAWBOT_PointF32* in_pt3P);
    SPErr (*AddRect)(DRAWBOT_PathRef in_path_ref, const DRAWBOT_RectF32* in_rectPR);
    SPErr (*AddArc)(DRAWBOT_PathRef in_path_ref, const DRAWBOT_PointF32* in_centerP, float in_radius,
                    float in_start_angle, float in_sweep);
    SPErr (*Close)(DRAWBOT_PathRef in_path_ref);
};
static_assert(sizeof(DRAWBOT_PathSuite1) == 48 && alignof(DRAWBOT_PathSuite1) == 8);
static_assert(offsetof(DRAWBOT_PathSuite1, MoveTo) == 0);
static_assert(offsetof(DRAWBOT_PathSuite1, LineTo) == 8);
static_assert(offsetof(DRAWBOT_PathSuite1, BezierTo) == 16);
static_assert(offsetof(DRAWBOT_PathSuite1, AddRect) == 24);
static_assert(offsetof(DRAWBOT_PathSuite1, AddArc) == 32);
static_assert(offsetof(DRAWBOT_PathSuite1, Close) == 40);

inline constexpr char kDRAWBOT_DrawSuite[] = "DRAWBOT Draw Suite";
inline constexpr int32 kDRAWBOT_DrawSuite_Version1 = 1;
inline constexpr char kDRAWBOT_SupplierSuite[] = "DRAWBOT Supplier Suite";
inline constexpr int32 kDRAWBOT_SupplierSuite_Version1 = 1;
inline constexpr char kDRAWBOT_SurfaceSuite[] = "DRAWBOT Surface Suite";
inline constexpr int32 kDRAWBOT_SurfaceSuite_Version2 = 2;
inline constexpr char kDRAWBOT_PathSuite[] = "DRAWBOT Path Suite";
inline constexpr int32 kDRAWBOT_PathSuite_Version1 = 1;
