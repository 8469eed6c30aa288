#include "host/control_events.h"

#include <algorithm>
#include <stdexcept>

#include "host/instance.h"
#include "host/suite_provider.h"

namespace flumo::host {

ControlEvents::ControlEvents(Instance& instance, const ControlPlace& place, SuiteProvider* suites)
    : instance_(instance), place_(place), suites_(suites) {}

PF_EventExtra ControlEvents::click_event(PF_Point point, int clicks, PF_Modifiers modifiers) const {
    PF_EventExtra event{};
    event.e_type = PF_Event_DO_CLICK;
    event.u.do_click.screen_point = point;
    event.u.do_click.num_clicks = clicks;
    event.u.do_click.modifiers = modifiers;
    return event;
}

EventOutcome ControlEvents::click(PF_Point point, int clicks, PF_Modifiers modifiers) {
    PF_EventExtra event = click_event(point, clicks, modifiers);
    pressed_ = event;
    const EventOutcome outcome = send(event);
    dragging_ = outcome.drag_wanted;
    std::ranges::copy(event.u.do_click.continue_refcon, drag_words_.begin());
    return outcome;
}

EventOutcome ControlEvents::drag(PF_Point point) {
    return continue_drag(point, false);
}

EventOutcome ControlEvents::release(PF_Point point) {
    const EventOutcome outcome = continue_drag(point, true);
    dragging_ = false;
    return outcome;
}

EventOutcome ControlEvents::continue_drag(PF_Point point, bool last) {
    if (!dragging_) throw std::logic_error("no click asked for drag events");
    PF_EventExtra event = click_event(point, pressed_.u.do_click.num_clicks, pressed_.u.do_click.modifiers);
    event.u.do_click.send_drag = true;
    event.u.do_click.last_time = last;
    std::ranges::copy(drag_words_, event.u.do_click.continue_refcon);
    const EventOutcome outcome = send(event);
    std::ranges::copy(event.u.do_click.continue_refcon, drag_words_.begin());
    return outcome;
}

EventOutcome ControlEvents::draw() {
    PF_EventExtra event{};
    event.e_type = PF_Event_DRAW;
    event.u.draw.update_rect = place_.frame;
    event.u.draw.depth = 32;
    return send(event);
}

EventOutcome ControlEvents::send(PF_EventExtra& event) {
    PF_Context context{};
    context.magic = PF_CONTEXT_MAGIC;
    context.w_type = PF_Window_EFFECT;
    context.reserved_drawref = suites_ ? suites_->draw_ref() : nullptr;
    PF_Context* context_pointer = &context;
    event.contextH = &context_pointer;
    event.effect_win.index = place_.index;
    event.effect_win.area = place_.area;
    event.effect_win.current_frame = place_.frame;
    EventOutcome outcome;
    const Outcome answered = instance_.send_event(event, suites_, place_.time_frame, outcome.changed);
    outcome.error = answered.error;
    outcome.message = answered.message;
    outcome.flags = event.evt_out_flags;
    outcome.drag_wanted = event.e_type == PF_Event_DO_CLICK && event.u.do_click.send_drag;
    return outcome;
}

}  // namespace flumo::host
