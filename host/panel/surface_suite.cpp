// Painting: paths and images onto the panel's image.
#include "host/callbacks/answer.h"
#include "host/callbacks/refuse.h"
#include "host/panel/panel_state.h"

namespace flumo::host {

namespace {

void set_colour(cairo_t* cairo, const DRAWBOT_ColorRGBA& colour) {
    cairo_set_source_rgba(cairo, colour.red, colour.green, colour.blue, colour.alpha);
}

void set_path(cairo_t* cairo, Path& path) {
    const cairo_path_t elements{CAIRO_STATUS_SUCCESS, path.data.data(), static_cast<int>(path.data.size())};
    cairo_new_path(cairo);
    cairo_append_path(cairo, &elements);
}

/// Cairo's status as the effect's error number. A failed context stays failed.
PF_Err painted(cairo_t* cairo) {
    return cairo_status(cairo) == CAIRO_STATUS_SUCCESS ? PF_Err_NONE : PF_Err_INTERNAL_STRUCT_DAMAGED;
}

SPErr fill_path(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush_ref, DRAWBOT_PathRef path_ref,
                DRAWBOT_FillType type) {
    return answer(Callback::kDrawbotFillPath, [&](Call& call) -> PF_Err {
        if (!is_state(call, surface)) return PF_Err_BAD_CALLBACK_PARAM;
        const Brush* brush = find_content<Brush>(call, brush_ref);
        Path* path = find_content<Path>(call, path_ref);
        if (!brush || !path) return PF_Err_BAD_CALLBACK_PARAM;
        cairo_t* cairo = state_of(call).cairo.get();
        set_colour(cairo, brush->colour);
        set_path(cairo, *path);
        cairo_set_fill_rule(
            cairo, type == kDRAWBOT_FillType_EvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
        cairo_fill(cairo);
        return painted(cairo);
    });
}

SPErr stroke_path(DRAWBOT_SurfaceRef surface, DRAWBOT_PenRef pen_ref, DRAWBOT_PathRef path_ref) {
    return answer(Callback::kDrawbotStrokePath, [&](Call& call) -> PF_Err {
        if (!is_state(call, surface)) return PF_Err_BAD_CALLBACK_PARAM;
        const Pen* pen = find_content<Pen>(call, pen_ref);
        Path* path = find_content<Path>(call, path_ref);
        if (!pen || !path) return PF_Err_BAD_CALLBACK_PARAM;
        cairo_t* cairo = state_of(call).cairo.get();
        set_colour(cairo, pen->colour);
        set_path(cairo, *path);
        cairo_set_line_width(cairo, pen->size);
        cairo_stroke(cairo);
        return painted(cairo);
    });
}

SPErr draw_image(DRAWBOT_SurfaceRef surface, DRAWBOT_ImageRef image_ref, const DRAWBOT_PointF32* origin,
                 float alpha) {
    return answer(Callback::kDrawbotDrawImage, [&](Call& call) -> PF_Err {
        if (!is_state(call, surface)) return PF_Err_BAD_CALLBACK_PARAM;
        const Image* image = find_content<Image>(call, image_ref);
        if (!image) return PF_Err_BAD_CALLBACK_PARAM;
        cairo_t* cairo = state_of(call).cairo.get();
        cairo_surface_t* source = image->surface.get();
        cairo_save(cairo);
        cairo_rectangle(cairo, origin->x, origin->y, cairo_image_surface_get_width(source),
                        cairo_image_surface_get_height(source));
        cairo_clip(cairo);
        cairo_set_source_surface(cairo, source, origin->x, origin->y);
        // Enlarged images keep their edge pixels instead of fading out towards them.
        cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
        cairo_paint_with_alpha(cairo, alpha);
        cairo_restore(cairo);
        return painted(cairo);
    });
}

DRAWBOT_SurfaceSuite2 filled_suite() {
    DRAWBOT_SurfaceSuite2 s{};
    refuse(s.PushStateStack, s.PopStateStack, s.PaintRect, s.Clip, s.GetClipBounds, s.IsWithinClipBounds,
           s.Transform, s.DrawString, s.SetInterpolationPolicy, s.GetInterpolationPolicy,
           s.SetAntiAliasPolicy, s.GetAntiAliasPolicy, s.Flush, s.GetTransformToScreenScale);
    s.FillPath = fill_path;
    s.StrokePath = stroke_path;
    s.DrawImage = draw_image;
    return s;
}

}  // namespace

const DRAWBOT_SurfaceSuite2& surface_suite() {
    static const DRAWBOT_SurfaceSuite2 suite = filled_suite();
    return suite;
}

}  // namespace flumo::host
