#include "host/control_events.h"

#include <algorithm>
#include <stdexcept>

#include "host/instance.h"
#include "host/suite_provider.h"

namespace flumo::host {

ControlEvents::ControlEvents(Instance& instance, const ControlPlace& place, SuiteProvider* suites)
    : instance_(instance), place_(place), suites_(suites) {
    context_.magic = PF_CONTEXT_MAGIC;
    context_.w_type = PF_Window_EFFECT;
    context_.reserved_drawref = suites_ ? suites_->draw_ref() : nullptr;
}

EventOutcome ControlEvents::send_plain(PF_EventType type) {
    PF_EventExtra event{};
    event.e_type = type;
    return send(event);
}

EventOutcome ControlEvents::open() {
    const EventOutcome outcome = send_plain(PF_Event_NEW_CONTEXT);
    return outcome.error != PF_Err_NONE ? outcome : send_plain(PF_Event_ACTIVATE);
}

EventOutcome ControlEvents::close() {
    const EventOutcome outcome = send_plain(PF_Event_DEACTIVATE);
    return outcome.error != PF_Err_NONE ? outcome : send_plain(PF_Event_CLOSE_CONTEXT);
}

EventOutcome ControlEvents::idle() {
    return send_plain(PF_Event_IDLE);
}

EventOutcome ControlEvents::move(PF_Point point) {
    PF_EventExtra event{};
    event.e_type = PF_Event_ADJUST_CURSOR;
    event.u.adjust_cursor.screen_point = point;
    return send(event);
}

EventOutcome ControlEvents::leave() {
    return send_plain(PF_Event_MOUSE_EXITED);
}

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
    if (!dragging_) throw std::logic_error("no click asked for drag events");
    return continue_drag(point, false);
}

EventOutcome ControlEvents::release(PF_Point point) {
    if (!dragging_) throw std::logic_error("no click asked for drag events");
    const EventOutcome outcome = continue_drag(point, true);
    dragging_ = false;
    return outcome;
}

EventOutcome ControlEvents::drag_again(PF_Point point) {
    return continue_drag(point, false);
}

EventOutcome ControlEvents::continue_drag(PF_Point point, bool last) {
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
    event.contextH = &context_pointer_;
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
