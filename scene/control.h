// The effect's controls by the ids that people write.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/values/control.h"

namespace flumo::scene {

using host::ControlKind;

/// A control as registered, and its id. Numbers are in the unit of the panel: percent where `percent` is
/// set, degrees for angles, 1-based choices for popups, 0 or 1 for checkboxes.
struct Control : host::Control {
    std::string id;

    bool is_group_mark() const { return kind == ControlKind::kGroupStart || kind == ControlKind::kGroupEnd; }
};

/// What a number may be: the valid range as registered, what fixed point holds for angles.
host::Range accepted_range(const Control& control);

/// The choices of a popup that it offers by name: no more than it declares.
std::span<const std::string> offered_choices(const Control& control);

/// Whether keyframes make sense: what the effect allows to vary, but layers are chosen once.
bool takes_keyframes(const Control& control);

/// "a number 0 to 100", "one of Fluid, Voronoi, ...": what a control takes.
std::string expected_value(const Control& control);

/// All controls by id.
class ControlCatalog {
  public:
    explicit ControlCatalog(std::vector<Control> controls) : controls_(std::move(controls)) {}

    /// Names each registered control by its durable identity. Throws Failure (unreadable input) for one
    /// that is not of this effect.
    explicit ControlCatalog(std::span<const host::Control> registered);

    const std::vector<Control>& controls() const { return controls_; }

    /// The control that takes a value by that id. Throws Failure (usage) for an unknown id, with the
    /// nearest one as a suggestion, and for a group mark.
    const Control& find(std::string_view id) const;

  private:
    std::vector<Control> controls_;
};

}  // namespace flumo::scene
