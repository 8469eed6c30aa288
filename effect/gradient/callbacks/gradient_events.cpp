#include "effect/gradient/callbacks/gradient_events.h"

#include <algorithm>
#include <iterator>

#include "effect/gradient/editor/ramp_drawing.h"
#include "effect/gradient/editor/ramp_editor.h"
#include "effect/gradient/value/gradient_lock.h"
#include "effect/suites/errors.h"
#include "effect/suites/scoped_suites.h"
#include "effect/suites/suite_handler.h"

namespace flumo {
namespace {

// One event with the parameter that it belongs to.
struct RampEvent {
    PF_InData* in_data;
    PF_OutData* out_data;
    PF_ParamDef& param;
    PF_EventExtra& event;
    const PF_HandleSuite1& handles;

    PF_DoClickEventInfo& Click() const { return event.u.do_click; }
    bool IsOnControl() const { return event.effect_win.area == PF_EA_CONTROL; }
    GradientHandle Gradient() const { return param.u.arb_d.value; }
    RampGeometry Geometry() const { return MakeRampGeometry(event.effect_win.current_frame); }
    // The host makes the undo step and the redraw from this flag. It overwrites the disk id, whose place it
    // shares.
    void MarkChanged() const { param.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE; }
    void MarkHandled() const { event.evt_out_flags = PF_EO_HANDLED_EVENT; }
};

DragWords ReadWords(const PF_DoClickEventInfo& click) {
    DragWords words;
    std::copy(std::begin(click.continue_refcon), std::end(click.continue_refcon), words.begin());
    return words;
}

void WriteWords(const DragWords& words, PF_DoClickEventInfo& click) {
    std::copy(words.begin(), words.end(), std::begin(click.continue_refcon));
}

// Cancelling leaves the stop as it is and is no failure; alpha always stays.
PF_Err PickColour(const RampEvent& ramp, GradientStop& stop) {
    const AcquiredSuite<PFAppSuite4> app(ramp.in_data, ramp.out_data, kPFAppSuite, kPFAppSuiteVersion4);
    const PF_PixelFloat sample{.alpha = stop.a, .red = stop.r, .green = stop.g, .blue = stop.b};
    PF_PixelFloat picked = sample;
    const PF_Err status = app->PF_AppColorPickerDialog("Gradient Color", &sample, false, &picked);
    if (status == PF_Interrupt_CANCEL) return PF_Err_NONE;
    if (status) return status;
    stop.r = picked.red;
    stop.g = picked.green;
    stop.b = picked.blue;
    ramp.MarkChanged();
    return PF_Err_NONE;
}

PF_Err GradientClick(const RampEvent& ramp) {
    if (!ramp.IsOnControl()) return PF_Err_NONE;
    const GradientLock lock(ramp.handles, ramp.Gradient());
    PF_DoClickEventInfo& click = ramp.Click();
    const ClickOutcome outcome = ClickRamp(lock.Stops(), ramp.Geometry(), click.screen_point.h,
                                           click.num_clicks, click.modifiers & PF_Mod_CMD_CTRL_KEY);
    if (outcome.action == ClickAction::kNone) return PF_Err_NONE;
    if (outcome.changed) ramp.MarkChanged();
    if (outcome.action == ClickAction::kStartDrag) {
        click.send_drag = true;
        WriteWords(PackDragState(outcome.drag), click);
    }
    if (outcome.action == ClickAction::kPickColour) ThrowOnError(PickColour(ramp, *outcome.picked));
    ramp.MarkHandled();
    return PF_Err_NONE;
}

PF_Err GradientDrag(const RampEvent& ramp) {
    if (!ramp.IsOnControl()) return PF_Err_NONE;
    const GradientLock lock(ramp.handles, ramp.Gradient());
    PF_DoClickEventInfo& click = ramp.Click();
    DragState drag = UnpackDragState(ReadWords(click));
    const bool changed =
        DragRamp(lock.Stops(), ramp.Geometry(), drag, click.screen_point.h, click.screen_point.v);
    WriteWords(PackDragState(drag), click);
    if (changed) ramp.MarkChanged();
    return PF_Err_NONE;
}

DRAWBOT_DrawRef DrawingReference(const RampEvent& ramp) {
    const AcquiredSuite<PF_EffectCustomUISuite1> customUi(ramp.in_data, ramp.out_data, kPFEffectCustomUISuite,
                                                          kPFEffectCustomUISuiteVersion1);
    DRAWBOT_DrawRef reference = nullptr;
    ThrowOnError(customUi->PF_GetDrawingReference(ramp.event.contextH, &reference));
    return reference;
}

DRAWBOT_ColorRGBA ToDrawbot(const PF_App_Color& colour) {
    constexpr float kScale = 1.5259022e-05F;  // 1 / 65535
    return {static_cast<float>(colour.red) * kScale, static_cast<float>(colour.green) * kScale,
            static_cast<float>(colour.blue) * kScale, 1.0F};
}

void ReadPanelColours(const RampEvent& ramp, RampCanvas& canvas) {
    const AcquiredSuite<PFAppSuite4> app(ramp.in_data, ramp.out_data, kPFAppSuite, kPFAppSuiteVersion4);
    PF_App_Color background{};
    PF_App_Color text{};
    ThrowOnError(app->PF_AppGetBgColor(&background));
    ThrowOnError(app->PF_AppGetColor(PF_App_Color_TEXT, &text));
    canvas.background = ToDrawbot(background);
    canvas.outline = ToDrawbot(text);
}

RampCanvas OpenCanvas(const RampEvent& ramp, const DrawbotSuites& drawbot) {
    RampCanvas canvas{.drawbot = drawbot,
                      .handles = ramp.handles,
                      .supplier = nullptr,
                      .surface = nullptr,
                      .background = {},
                      .outline = {}};
    const DRAWBOT_DrawRef reference = DrawingReference(ramp);
    ThrowOnDrawingError(drawbot.draw->GetSupplier(reference, &canvas.supplier));
    ThrowOnDrawingError(drawbot.draw->GetSurface(reference, &canvas.surface));
    ReadPanelColours(ramp, canvas);
    return canvas;
}

// Outside the control nothing is painted, but the event is handled.
PF_Err GradientDraw(const RampEvent& ramp) {
    const GradientLock lock(ramp.handles, ramp.Gradient());
    const GradientStopMap& stops = lock.Stops();
    const AcquiredDrawbot drawbot(ramp.in_data, ramp.out_data);
    const RampCanvas canvas = OpenCanvas(ramp, drawbot.Suites());
    if (ramp.IsOnControl()) PaintRamp(canvas, ramp.Geometry(), stops);
    ramp.MarkHandled();
    return PF_Err_NONE;
}

// The host repeats a click during the drag that it asked for; such a click is handled as a drag.
PF_EventType EventType(PF_EventExtra& event) {
    if (event.e_type == PF_Event_DO_CLICK && event.u.do_click.send_drag) event.e_type = PF_Event_DRAG;
    return event.e_type;
}

using EventHandler = PF_Err (*)(const RampEvent&);

EventHandler HandlerOf(PF_EventType type) {
    switch (type) {
        case PF_Event_DO_CLICK:
            return GradientClick;
        case PF_Event_DRAG:
            return GradientDrag;
        case PF_Event_DRAW:
            return GradientDraw;
        default:
            return nullptr;
    }
}

}  // namespace

PF_Err HandleGradientEvent(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params,
                           PF_EventExtra* extra) {
    const EventHandler handler = HandlerOf(EventType(*extra));
    if (!handler) return PF_Err_NONE;
    return CommandResult([&] {
        AEGP_SuiteHandler suites(in_data->pica_basicP);
        return handler({.in_data = in_data,
                        .out_data = out_data,
                        .param = *params[extra->effect_win.index],
                        .event = *extra,
                        .handles = suites.HandleSuite()});
    });
}

}  // namespace flumo
