// The small effect's own control: a bar as long as the number is large, set by a click.
#pragma once

#include "tests/judge/broken/frame.h"

namespace flumo::broken {

/// Kept by faulty effects, which expect one panel and one drag at a time.
inline PF_UnionableRect last_drawn_frame{};
inline int drags_ended = 0;

constexpr bool is_own(const PF_EventExtra& event) {
    return event.effect_win.index == kShade && event.effect_win.area == PF_EA_CONTROL;
}

inline PF_Err fill(const PF_InData& in, const DRAWBOT_DrawRef draw, const DRAWBOT_RectF32& bar) {
    const Suite<DRAWBOT_DrawbotSuite1> drawbot(in, kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1);
    const Suite<DRAWBOT_SupplierSuite1> supplier(in, kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1);
    const Suite<DRAWBOT_SurfaceSuite2> surfaces(in, kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2);
    const Suite<DRAWBOT_PathSuite1> paths(in, kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1);
    if (!drawbot || !supplier || !surfaces || !paths) return PF_Err_BAD_CALLBACK_PARAM;
    DRAWBOT_SupplierRef maker = nullptr;
    DRAWBOT_SurfaceRef surface = nullptr;
    if (drawbot->GetSupplier(draw, &maker) || drawbot->GetSurface(draw, &surface) || !maker || !surface)
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    const DRAWBOT_ColorRGBA white{1, 1, 1, 1};
    DRAWBOT_BrushRef brush = nullptr;
    DRAWBOT_PathRef path = nullptr;
    PF_Err error = supplier->NewBrush(maker, &white, &brush);
    if (!error) error = supplier->NewPath(maker, &path);
    if (!error && !(brush && path)) error = PF_Err_OUT_OF_MEMORY;
    if (!error) error = paths->AddRect(path, &bar);
    if (!error) error = surfaces->FillPath(surface, brush, path, kDRAWBOT_FillType_Winding);
    if (brush && !is("KeepsBrush")) supplier->ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(brush));
    if (path) supplier->ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(path));
    return error;
}

inline PF_Err draw(const PF_InData& in, PF_EventExtra& event, double level) {
    DRAWBOT_DrawRef reference = nullptr;
    {
        const Suite<PF_EffectCustomUISuite1> suite(in, kPFEffectCustomUISuite,
                                                   kPFEffectCustomUISuiteVersion1);
        if (!suite) return PF_Err_BAD_CALLBACK_PARAM;
        if (const PF_Err error = suite->PF_GetDrawingReference(event.contextH, &reference)) return error;
    }
    if (!reference) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    const PF_UnionableRect& frame = event.effect_win.current_frame;
    last_drawn_frame = frame;
    const auto width = static_cast<float>((frame.right - frame.left) * (0.1 + 0.9 * level));
    const auto height = static_cast<float>(frame.bottom - frame.top + (is("DrawsOutside") ? 8 : 0));
    const PF_Err error =
        fill(in, reference, {static_cast<float>(frame.left), static_cast<float>(frame.top), width, height});
    if (!error) event.evt_out_flags = PF_EO_HANDLED_EVENT;
    if (error && is("SwallowsDrawingErrors")) event.evt_out_flags = PF_EO_HANDLED_EVENT;
    return is("SwallowsDrawingErrors") ? PF_Err_NONE : error;
}

inline void click(PF_EventExtra& event, PF_ParamDef& param, Shade& shade) {
    const bool is_drag = event.u.do_click.send_drag;
    if (!is_drag) drags_ended = 0;
    if (is("EndsDragOnce") && is_drag && drags_ended > 0) std::abort();
    drags_ended += event.u.do_click.last_time;
    const PF_UnionableRect& frame = is("KnowsOnePanel") ? last_drawn_frame : event.effect_win.current_frame;
    const double width = std::max(frame.right - frame.left, 1);
    const double level = (event.u.do_click.screen_point.h - frame.left) / width;
    shade.level = std::clamp(level, 0.0, 1.0);
    param.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    event.u.do_click.send_drag = true;
    event.evt_out_flags = PF_EO_HANDLED_EVENT;
}

inline PF_Err answer_event(const PF_InData& in, PF_ParamDef** params, PF_EventExtra& event) {
    const bool foreign =
        !is_own(event) || (event.e_type != PF_Event_DRAW && event.e_type != PF_Event_DO_CLICK);
    if (foreign) return is("TakesForeignEvents") ? PF_Err_INVALID_INDEX : PF_Err_NONE;
    PF_ParamDef& param = *params[kShade];
    double level = 0;
    const PF_Err error = with_shade(in, param.u.arb_d.value, [&](Shade& shade) {
        if (event.e_type == PF_Event_DO_CLICK) click(event, param, shade);
        level = shade.level;
    });
    return error || event.e_type == PF_Event_DO_CLICK ? error : draw(in, event, level);
}

}  // namespace flumo::broken
