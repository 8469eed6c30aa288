#include "effect/gradient/editor/ramp_drawing.h"

#include <cmath>
#include <optional>
#include <span>

#include "effect/gradient/editor/marker_shape.h"
#include "effect/gradient/editor/ramp_image.h"
#include "effect/suites/drawbot_owners.h"
#include "effect/suites/host_handle.h"

namespace flumo {
namespace {

constexpr float kOutlineWidth = 1.0F;
// A pixel's middle, where a line of width 1 is crisp.
constexpr float kPixelMiddle = 0.5F;

// The status of the first call that fails, or 0; the calls behind it do not run.
template <typename... Calls>
PF_Err FirstFailure(const Calls&... calls) {
    PF_Err status = PF_Err_NONE;
    static_cast<void>(((status = calls(), status == PF_Err_NONE) && ...));
    return status;
}

PF_Err FillFrame(const RampCanvas& canvas, const RampGeometry& ramp, const DRAWBOT_BrushP& brush,
                 const DRAWBOT_PathP& path) {
    const DRAWBOT_RectF32 frame = {
        static_cast<float>(ramp.left) + kPixelMiddle, static_cast<float>(ramp.top) + kPixelMiddle,
        static_cast<float>(ramp.right - ramp.left), static_cast<float>(ramp.bottom - ramp.top)};
    return FirstFailure([&] { return canvas.drawbot.path->AddRect(path.Get(), &frame); },
                        [&] {
                            return canvas.drawbot.surface->FillPath(canvas.surface, brush.Get(), path.Get(),
                                                                    kDRAWBOT_FillType_Winding);
                        });
}

// A layout has to be preferred and supported.
PF_Err ChoosePixelLayout(const RampCanvas& canvas, DRAWBOT_PixelLayout& layout) {
    const DRAWBOT_SupplierSuite1& suite = *canvas.drawbot.supplier;
    DRAWBOT_Boolean prefers_argb = 0, has_argb = 0, prefers_bgra = 0, has_bgra = 0;
    const PF_Err status =
        FirstFailure([&] { return suite.PrefersPixelLayoutARGB(canvas.supplier, &prefers_argb); },
                     [&] { return suite.SupportsPixelLayoutARGB(canvas.supplier, &has_argb); },
                     [&] { return suite.PrefersPixelLayoutBGRA(canvas.supplier, &prefers_bgra); },
                     [&] { return suite.SupportsPixelLayoutBGRA(canvas.supplier, &has_bgra); });
    if (status) return status;
    if (prefers_argb && has_argb) {
        layout = kDRAWBOT_PixelLayout_32RGB;
    } else if (prefers_bgra && has_bgra) {
        layout = kDRAWBOT_PixelLayout_32BGR;
    } else {
        return PF_Err_OUT_OF_MEMORY;
    }
    return PF_Err_NONE;
}

DRAWBOT_ImageP MakeImage(const RampCanvas& canvas, const RampGeometry& ramp, DRAWBOT_PixelLayout layout,
                         const GradientStopMap& stops, PF_Handle pixels) {
    const HandleLock lock(canvas.handles, pixels);
    FillRampPixels(stops, ramp.w, ramp.h, layout, lock.Data());
    return {*canvas.drawbot.supplier, canvas.supplier, ramp.w, ramp.h, layout, lock.Data()};
}

// The ramp's image and the handle of its pixels, which outlives it.
struct RampImage {
    RampImage(const RampCanvas& canvas, const RampGeometry& ramp, DRAWBOT_PixelLayout layout,
              const GradientStopMap& stops)
        : pixels(NewHandle(canvas.handles,
                           A_HandleSize{4} * static_cast<A_u_long>(ramp.w) * static_cast<A_u_long>(ramp.h))),
          image(MakeImage(canvas, ramp, layout, stops, pixels.get())) {}

    OwnedHandle pixels;
    DRAWBOT_ImageP image;
};

PF_Err DrawImage(const RampCanvas& canvas, const RampGeometry& ramp, const RampImage& image) {
    const DRAWBOT_PointF32 origin = {static_cast<float>(ramp.x0), static_cast<float>(ramp.top)};
    return canvas.drawbot.surface->DrawImage(canvas.surface, image.image.Get(), &origin, 1.0F);
}

DRAWBOT_PointF32 Moved(const DRAWBOT_PointF32& from, const DRAWBOT_PointF32& by) {
    return {from.x + by.x, from.y + by.y};
}

PF_Err TraceStep(const DRAWBOT_PathSuite1& suite, DRAWBOT_PathRef path, const DRAWBOT_PointF32& from,
                 const MarkerStep& step) {
    const DRAWBOT_PointF32 end = Moved(from, step.points[2]);
    if (!step.is_curve) return suite.LineTo(path, end.x, end.y);
    const DRAWBOT_PointF32 control1 = Moved(from, step.points[0]);
    const DRAWBOT_PointF32 control2 = Moved(from, step.points[1]);
    return suite.BezierTo(path, &control1, &control2, &end);
}

PF_Err TraceHalf(const DRAWBOT_PathSuite1& suite, DRAWBOT_PathRef path, const DRAWBOT_PointF32& from,
                 std::span<const MarkerStep> half) {
    PF_Err status = PF_Err_NONE;
    for (const MarkerStep& step : half)
        if (status == PF_Err_NONE) status = TraceStep(suite, path, from, step);
    return status;
}

// Fills and outlines the marker whose upper middle is `at`; `kind_before` is the kind of the stop on
// its left.
PF_Err PaintMarker(const RampCanvas& canvas, const DRAWBOT_PenP& pen, const DRAWBOT_PointF32& at,
                   const GradientStop& stop, int32_t kind_before) {
    const DRAWBOT_PathSuite1& suite = *canvas.drawbot.path;
    const DRAWBOT_SurfaceSuite2& surface = *canvas.drawbot.surface;
    DRAWBOT_PathP path(*canvas.drawbot.supplier, canvas.supplier);
    PF_Err status =
        FirstFailure([&] { return suite.MoveTo(path.Get(), at.x, at.y); },
                     [&] { return TraceHalf(suite, path.Get(), at, MarkerRightHalf(stop.kind)); },
                     [&] { return TraceHalf(suite, path.Get(), at, MarkerLeftHalf(kind_before)); },
                     [&] { return suite.Close(path.Get()); });
    if (status) return status;

    DRAWBOT_BrushP brush(*canvas.drawbot.supplier, canvas.supplier, {stop.r, stop.g, stop.b, 1.0F});
    status = FirstFailure(
        [&] { return surface.FillPath(canvas.surface, brush.Get(), path.Get(), kDRAWBOT_FillType_EvenOdd); },
        [&] { return surface.StrokePath(canvas.surface, pen.Get(), path.Get()); });
    if (status) return status;
    brush.Release();
    path.Release();
    return PF_Err_NONE;
}

PF_Err PaintMarkers(const RampCanvas& canvas, const RampGeometry& ramp, const DRAWBOT_PenP& pen,
                    const GradientStopMap& stops) {
    const float y = static_cast<float>(ramp.markerTop) + kPixelMiddle;
    int32_t kind_before = kStopEdge;
    for (const auto& [position, stop] : stops) {
        // Rounds half away from zero, whatever the rounding mode.
        const float x = std::round(static_cast<float>(ramp.w) * position) + static_cast<float>(ramp.x0);
        const PF_Err status = PaintMarker(canvas, pen, {x + kPixelMiddle, y}, stop, kind_before);
        if (status) return status;
        kind_before = stop.kind;
    }
    return PF_Err_NONE;
}

}  // namespace

PF_Err PaintRamp(const RampCanvas& canvas, const RampGeometry& ramp, const GradientStopMap& stops) {
    const DRAWBOT_SupplierSuite1& suite = *canvas.drawbot.supplier;
    DRAWBOT_PathP path(suite, canvas.supplier);
    DRAWBOT_BrushP brush(suite, canvas.supplier, canvas.background);
    DRAWBOT_PixelLayout layout = kDRAWBOT_PixelLayout_32RGB;
    PF_Err status = FirstFailure([&] { return FillFrame(canvas, ramp, brush, path); },
                                 [&] { return ChoosePixelLayout(canvas, layout); });
    if (status) return status;

    std::optional<RampImage> image;
    if (ramp.w >= 1 && ramp.h >= 1) {
        image.emplace(canvas, ramp, layout, stops);
        status = DrawImage(canvas, ramp, *image);
        if (status) return status;
    }
    DRAWBOT_PenP pen(suite, canvas.supplier, canvas.outline, kOutlineWidth);
    status = PaintMarkers(canvas, ramp, pen, stops);
    if (status) return status;

    pen.Release();
    if (image) image->image.Release();
    brush.Release();
    path.Release();
    return PF_Err_NONE;
}

}  // namespace flumo
