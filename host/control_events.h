// The mouse and the painting of one control that draws itself.
//
//   ControlEvents events(*instance, {.index = 26, .frame = {0, 0, 150, 50}}, &panel);
//   events.open();                                           // as a panel that appears
//   events.draw();
//   if (events.click({6, 10}).drag_wanted) events.drag({40, 10});
//   events.close();
#pragma once

#include <array>
#include <string>

#include "effect_api/commands.h"
#include "effect_api/event.h"

namespace flumo::host {

class Instance;
class SuiteProvider;

struct ControlPlace {
    PF_ParamIndex index = 0;
    /// In panel pixels.
    PF_UnionableRect frame{0, 0, 150, 50};
    PF_EffectArea area = PF_EA_CONTROL;
    /// The time that the panel shows.
    double time_frame = 0;
};

struct EventOutcome {
    PF_Err error = PF_Err_NONE;
    PF_EventOutFlags flags = PF_EO_NONE;
    /// The effect wants the drag events of this click.
    bool drag_wanted = false;
    /// The effect marked the control's value as changed.
    bool changed = false;
    std::string message;

    bool handled() const { return (flags & PF_EO_HANDLED_EVENT) != 0; }
};

/// Sends events to one control in one context, whose handle and words of the effect are kept as long as
/// this object. Keeps the four words that a click passes to drags. `suites` (a panel) is borrowed; without
/// one the drawing and application suites are missing.
class ControlEvents {
  public:
    ControlEvents(Instance& instance, const ControlPlace& place, SuiteProvider* suites = nullptr);
    ControlEvents(const ControlEvents&) = delete;
    ControlEvents& operator=(const ControlEvents&) = delete;
    ~ControlEvents() = default;

    /// The context is new, then active. A host need not send either.
    EventOutcome open();
    /// The context is no longer active, then closed.
    EventOutcome close();
    EventOutcome idle();
    /// The pointer moves over the control.
    EventOutcome move(PF_Point point);
    EventOutcome leave();
    /// Moves the control to another place, also during a drag.
    void resize(const PF_UnionableRect& frame) { place_.frame = frame; }

    EventOutcome click(PF_Point point, int clicks = 1, PF_Modifiers modifiers = PF_Mod_NONE);
    /// Repeats the click at another point. Throws std::logic_error unless a click asked for drags.
    EventOutcome drag(PF_Point point);
    /// The last drag of a click. Some hosts send another one after it; drag_again() does.
    EventOutcome release(PF_Point point);
    EventOutcome drag_again(PF_Point point);
    EventOutcome draw();
    /// Sends a record as it is; fills in the context and the window only.
    EventOutcome send(PF_EventExtra& event);

  private:
    EventOutcome continue_drag(PF_Point point, bool last);
    EventOutcome send_plain(PF_EventType type);
    PF_EventExtra click_event(PF_Point point, int clicks, PF_Modifiers modifiers) const;

    Instance& instance_;
    ControlPlace place_;
    SuiteProvider* suites_;
    PF_Context context_{};
    PF_Context* context_pointer_ = &context_;
    PF_EventExtra pressed_{};
    std::array<A_intptr_t, 4> drag_words_{};
    bool dragging_ = false;
};

}  // namespace flumo::host
