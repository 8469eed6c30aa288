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

void FillFrame(const RampCanvas& canvas, const RampGeometry& ramp, const DRAWBOT_BrushP& brush,
               const DRAWBOT_PathP& path) {
    const DRAWBOT_RectF32 frame = {
        static_cast<float>(ramp.left) + kPixelMiddle, static_cast<float>(ramp.top) + kPixelMiddle,
        static_cast<float>(ramp.right - ramp.left), static_cast<float>(ramp.bottom - ramp.top)};
    ThrowOnDrawingError(canvas.drawbot.path->AddRect(path.Get(), &frame));
    ThrowOnDrawingError(
        canvas.drawbot.surface->FillPath(canvas.surface, brush.Get(), path.Get(), kDRAWBOT_FillType_Winding));
}

// A layout has to be preferred and supported.
DRAWBOT_PixelLayout ChoosePixelLayout(const RampCanvas& canvas) {
    const DRAWBOT_SupplierSuite1& suite = *canvas.drawbot.supplier;
    DRAWBOT_Boolean prefersArgb = 0, hasArgb = 0, prefersBgra = 0, hasBgra = 0;
    ThrowOnDrawingError(suite.PrefersPixelLayoutARGB(canvas.supplier, &prefersArgb));
    ThrowOnDrawingError(suite.SupportsPixelLayoutARGB(canvas.supplier, &hasArgb));
    ThrowOnDrawingError(suite.PrefersPixelLayoutBGRA(canvas.supplier, &prefersBgra));
    ThrowOnDrawingError(suite.SupportsPixelLayoutBGRA(canvas.supplier, &hasBgra));
    if (prefersArgb && hasArgb) return kDRAWBOT_PixelLayout_32RGB;
    if (prefersBgra && hasBgra) return kDRAWBOT_PixelLayout_32BGR;
    throw PF_Err{PF_Err_OUT_OF_MEMORY};
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

void DrawImage(const RampCanvas& canvas, const RampGeometry& ramp, const RampImage& image) {
    const DRAWBOT_PointF32 origin = {static_cast<float>(ramp.x0), static_cast<float>(ramp.top)};
    ThrowOnDrawingError(canvas.drawbot.surface->DrawImage(canvas.surface, image.image.Get(), &origin, 1.0F));
}

DRAWBOT_PointF32 Moved(const DRAWBOT_PointF32& from, const DRAWBOT_PointF32& by) {
    return {from.x + by.x, from.y + by.y};
}

SPErr TraceStep(const DRAWBOT_PathSuite1& suite, DRAWBOT_PathRef path, const DRAWBOT_PointF32& from,
                const MarkerStep& step) {
    const DRAWBOT_PointF32 end = Moved(from, step.points[2]);
    if (!step.isCurve) return suite.LineTo(path, end.x, end.y);
    const DRAWBOT_PointF32 control1 = Moved(from, step.points[0]);
    const DRAWBOT_PointF32 control2 = Moved(from, step.points[1]);
    return suite.BezierTo(path, &control1, &control2, &end);
}

void TraceHalf(const DRAWBOT_PathSuite1& suite, DRAWBOT_PathRef path, const DRAWBOT_PointF32& from,
               std::span<const MarkerStep> half) {
    for (const MarkerStep& step : half)
        ThrowOnDrawingError(TraceStep(suite, path, from, step));
}

// Fills and outlines the marker whose upper middle is `at`; `kindBefore` is the kind of the stop on its left.
void PaintMarker(const RampCanvas& canvas, const DRAWBOT_PenP& pen, const DRAWBOT_PointF32& at,
                 const GradientStop& stop, int32_t kindBefore) {
    const DRAWBOT_PathSuite1& suite = *canvas.drawbot.path;
    const DRAWBOT_SurfaceSuite2& surface = *canvas.drawbot.surface;
    DRAWBOT_PathP path(*canvas.drawbot.supplier, canvas.supplier);
    ThrowOnDrawingError(suite.MoveTo(path.Get(), at.x, at.y));
    TraceHalf(suite, path.Get(), at, MarkerRightHalf(stop.kind));
    TraceHalf(suite, path.Get(), at, MarkerLeftHalf(kindBefore));
    ThrowOnDrawingError(suite.Close(path.Get()));

    DRAWBOT_BrushP brush(*canvas.drawbot.supplier, canvas.supplier, {stop.r, stop.g, stop.b, 1.0F});
    ThrowOnDrawingError(surface.FillPath(canvas.surface, brush.Get(), path.Get(), kDRAWBOT_FillType_EvenOdd));
    ThrowOnDrawingError(surface.StrokePath(canvas.surface, pen.Get(), path.Get()));
    brush.Release();
    path.Release();
}

void PaintMarkers(const RampCanvas& canvas, const RampGeometry& ramp, const DRAWBOT_PenP& pen,
                  const GradientStopMap& stops) {
    const float y = static_cast<float>(ramp.markerTop) + kPixelMiddle;
    int32_t kindBefore = kStopEdge;
    for (const auto& [position, stop] : stops) {
        // Rounds half away from zero, whatever the rounding mode.
        const float x = std::round(static_cast<float>(ramp.w) * position) + static_cast<float>(ramp.x0);
        PaintMarker(canvas, pen, {x + kPixelMiddle, y}, stop, kindBefore);
        kindBefore = stop.kind;
    }
}

}  // namespace

void PaintRamp(const RampCanvas& canvas, const RampGeometry& ramp, const GradientStopMap& stops) {
    const DRAWBOT_SupplierSuite1& suite = *canvas.drawbot.supplier;
    DRAWBOT_PathP path(suite, canvas.supplier);
    DRAWBOT_BrushP brush(suite, canvas.supplier, canvas.background);
    FillFrame(canvas, ramp, brush, path);

    const DRAWBOT_PixelLayout layout = ChoosePixelLayout(canvas);
    std::optional<RampImage> image;
    if (ramp.w >= 1 && ramp.h >= 1) {
        image.emplace(canvas, ramp, layout, stops);
        DrawImage(canvas, ramp, *image);
    }
    DRAWBOT_PenP pen(suite, canvas.supplier, canvas.outline, kOutlineWidth);
    PaintMarkers(canvas, ramp, pen, stops);

    pen.Release();
    if (image) image->image.Release();
    brush.Release();
    path.Release();
}

}  // namespace flumo
