// The mouse and the painting of one control that draws itself.
//
//   ControlEvents events(*instance, {.index = 26, .frame = {0, 0, 150, 50}}, &panel);
//   events.draw();
//   if (events.click({6, 10}).drag_wanted) events.drag({40, 10});
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

/// Plays events on one control. Keeps the four words that a click hands to its drags. `suites` (a panel)
/// is borrowed; without one the drawing and application suites are missing.
class ControlEvents {
  public:
    ControlEvents(Instance& instance, const ControlPlace& place, SuiteProvider* suites = nullptr);

    EventOutcome click(PF_Point point, int clicks = 1, PF_Modifiers modifiers = PF_Mod_NONE);
    /// Repeats the click at another point. Throws std::logic_error unless a click asked for drags.
    EventOutcome drag(PF_Point point);
    /// The last drag of a click.
    EventOutcome release(PF_Point point);
    EventOutcome draw();
    /// Sends a record as it is; fills in the context and the window only.
    EventOutcome send(PF_EventExtra& event);

  private:
    EventOutcome continue_drag(PF_Point point, bool last);
    PF_EventExtra click_event(PF_Point point, int clicks, PF_Modifiers modifiers) const;

    Instance& instance_;
    ControlPlace place_;
    SuiteProvider* suites_;
    PF_EventExtra pressed_{};
    std::array<A_intptr_t, 4> drag_words_{};
    bool dragging_ = false;
};

}  // namespace flumo::host
