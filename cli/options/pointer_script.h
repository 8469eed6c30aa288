// Mouse events on a control, as text.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "effect_api/event.h"
#include "host/panel/panel.h"

namespace flumo::cli {

/// A press of the button.
struct Press {
    PF_Point at;
    int clicks;
    PF_Modifiers modifiers;
};
/// A move with the button held.
struct Move {
    PF_Point at;
};
/// The button is let go where the pointer is.
struct Release {};

/// One line of a script. A colour picker's answer holds until the next one.
struct PointerEvent {
    std::string text;  ///< as written, for reports
    std::variant<Press, Move, Release, host::PickedColour> action;
};

/// Reads `cancel`, `fail` or a colour (#rgb, #rrggbb or #rrggbbaa). Throws Failure (usage).
host::PickedColour parse_picker_answer(std::string_view text);

/// Reads `click X,Y`, `double-click X,Y`, `ctrl-click X,Y`, `drag X,Y`, `release` or `pick ANSWER`, X and Y
/// in panel pixels from the control's upper left corner. Throws Failure (usage) with what was expected.
PointerEvent parse_pointer_event(std::string_view text);

/// The same line by line, without empty lines and those that start with `#`. Throws Failure (usage), naming
/// `name` and the line.
std::vector<PointerEvent> parse_pointer_script(std::string_view text, const std::string& name);

}  // namespace flumo::cli
