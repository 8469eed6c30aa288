// Numbers of controls as frei0r passes them: 0 to 1.
#pragma once

#include <optional>

#include "scene/control.h"

namespace flumo::frei0r {

/// Values run evenly from `first` at 0 to `last` at 1, in the unit of the panel; numbers beyond go on evenly,
/// as far as `valid` reaches. Where only whole numbers exist, the nearest one counts: for checkboxes and
/// choices too.
struct NumberScale {
    double first = 0;
    double last = 1;
    host::Range valid;
    bool whole = false;
    double default_value = 0;

    /// Nothing for a number that is not finite or lies outside of what is valid. A little outside, as smooth
    /// keyframes swing past their ends, is the end itself.
    std::optional<double> value_at(double fraction) const;
    double fraction_of(double value) const { return (value - first) / (last - first); }
    double default_fraction() const { return fraction_of(default_value); }
};

/// The slider's range, wide enough to hold the default; a whole turn of an angle; the choices of a popup that
/// it offers by name.
NumberScale number_scale(const scene::Control& control);

/// Choices 1 to `count`.
NumberScale choice_scale(std::size_t count, std::size_t default_choice);

}  // namespace flumo::frei0r
