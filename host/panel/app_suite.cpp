// The application's colours, its colour picker, and the drawing reference of an event.
#include "host/callbacks/answer.h"
#include "host/callbacks/refuse.h"
#include "host/panel/panel.h"
#include "host/panel/panel_state.h"

namespace flumo::host {

namespace {

PF_Err get_bg_colour(PF_App_Color* colour) {
    return answer(Callback::kGetBgColor, [&](Call& call) -> PF_Err {
        *colour = state_of(call).panel.options().background;
        return PF_Err_NONE;
    });
}

PF_Err get_colour(PF_App_ColorType type, PF_App_Color* colour) {
    return answer(Callback::kGetColor, [&](Call& call) -> PF_Err {
        if (type != PF_App_Color_TEXT)
            return misused(call, MisuseKind::kWrongArgument,
                           "asked for a colour that this host does not have");
        *colour = state_of(call).panel.options().text;
        return PF_Err_NONE;
    });
}

PF_Err pick_colour(const A_char* title, const PF_PixelFloat* sample, PF_Boolean converts,
                   PF_PixelFloat* colour) {
    return answer(Callback::kColorPicker, [&](Call& call) -> PF_Err {
        Panel& panel = state_of(call).panel;
        panel.picker_title = title;
        panel.picker_converts = converts != 0;
        const PickedColour picked = panel.colour_picker ? panel.colour_picker(*sample) : PickedColour{};
        if (picked.status == PF_Err_NONE) *colour = picked.colour;
        return picked.status;
    });
}

PF_Err get_drawing_reference(PF_ContextH context, DRAWBOT_DrawRef* reference) {
    return answer(
        Callback::kGetDrawingReference,
        [&](Call& call) -> PF_Err {
            if (!context || (*context)->magic != PF_CONTEXT_MAGIC) {
                return misused(call, MisuseKind::kWrongArgument, "asked to draw in a context that is none");
            }
            *reference = (*context)->reserved_drawref;
            return *reference ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM;
        },
        [&] { *reference = nullptr; });
}

template <class Reference>
PF_Err state_as(Callback which, DRAWBOT_DrawRef draw, Reference* out) {
    return answer(
        which,
        [&](Call& call) -> PF_Err {
            if (!is_state(call, draw)) return PF_Err_BAD_CALLBACK_PARAM;
            *out = reinterpret_cast<Reference>(draw);
            return PF_Err_NONE;
        },
        [&] { *out = nullptr; });
}

SPErr get_supplier(DRAWBOT_DrawRef draw, DRAWBOT_SupplierRef* out) {
    return state_as(Callback::kDrawbotGetSupplier, draw, out);
}

SPErr get_surface(DRAWBOT_DrawRef draw, DRAWBOT_SurfaceRef* out) {
    return state_as(Callback::kDrawbotGetSurface, draw, out);
}

PFAppSuite4 filled_app_suite() {
    PFAppSuite4 s{};
    refuse(s.PF_GetPersonalInfo, s.PF_GetFontStyleSheet, s.PF_SetCursor, s.PF_IsRenderEngine, s.PF_GetMouse,
           s.PF_InvalidateRect, s.PF_ConvertLocalToGlobal, s.PF_GetColorAtGlobalPoint);
    s.PF_AppGetBgColor = get_bg_colour;
    s.PF_AppGetColor = get_colour;
    s.PF_AppColorPickerDialog = pick_colour;
    return s;
}

}  // namespace

const DRAWBOT_DrawbotSuite1& draw_suite() {
    static const DRAWBOT_DrawbotSuite1 suite{get_supplier, get_surface};
    return suite;
}

const PFAppSuite4& app_suite() {
    static const PFAppSuite4 suite = filled_app_suite();
    return suite;
}

const PF_EffectCustomUISuite1& custom_ui_suite() {
    static const PF_EffectCustomUISuite1 suite{get_drawing_reference};
    return suite;
}

}  // namespace flumo::host
