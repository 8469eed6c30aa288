// Which controls have an effect only together with others.
//
// One table serves the command line, which warns of a value that changes nothing, the manual
// (docs/controls.md prints the same words) and any panel that greys out what has no effect.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "scene/control.h"
#include "scene/track.h"

namespace flumo::scene {

/// A state of one control. Over time it holds if one keyframe has it.
struct Condition {
    enum class Test {
        kIs,     ///< the number is `value`
        kIsNot,  ///< the number is another than `value`
        kLayer,  ///< a layer is chosen
    };
    std::string_view id;
    Test test = Test::kIsNot;
    double value = 0;
};

/// At least one of these has to hold, and its control has to have an effect itself.
using Clause = std::span<const Condition>;

/// The control changes pictures only where every clause holds. Ids without a row always do.
struct ControlNeeds {
    std::string_view id;
    std::span<const Clause> clauses;
    std::string_view what_it_does = {};  ///< for a control whose name does not say it; may be empty
};

/// All rows in the order of the controls.
std::span<const ControlNeeds> control_needs();

/// The row in words, with the names of choices: "LinesVisible on, and LinesGradientScale other than 100".
std::string needs_text(const ControlNeeds& needs, const ControlCatalog& catalog);

/// Why the control changes nothing under these tracks, as a sentence without its end; empty if it has an
/// effect. Controls without a track are at their defaults.
std::string why_without_effect(const Control& control, const Tracks& tracks, const ControlCatalog& catalog);

}  // namespace flumo::scene
