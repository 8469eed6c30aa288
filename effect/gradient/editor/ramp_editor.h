// The editor's logic: what clicks and drags on the ramp do to the stops. Plain code on a geometry, a
// pointer and a map, without the host.
#pragma once

#include "effect/gradient/editor/drag_state.h"
#include "effect/gradient/editor/ramp_geometry.h"
#include "effect/gradient/value/gradient.h"

namespace flumo {

/// What the caller has to do after a click.
enum class ClickAction {
    kNone,       // no effect: the event stays unhandled
    kHandled,    // done
    kStartDrag,  // ask the host for drag events and store `drag` in them
    kPickColour  // let the user choose a colour for `picked`
};

struct ClickOutcome {
    ClickAction action = ClickAction::kNone;
    bool changed = false;            // the stops were edited
    DragState drag{};                // with kStartDrag
    GradientStop* picked = nullptr;  // with kPickColour; stays the map's
};

/// One press on the control at pixel column `x`: with `cycleKind` (the command or control key) the hit
/// stop's kind goes from linear to sin to edge to linear; a single click on a stop starts a drag; a
/// double click adds a stop where there is none and asks for a colour where there is one. A stop is
/// hit within ten pixels, exclusive, and the leftmost in reach wins. New stops are not clamped to the
/// ramp: the side margins reach beyond 0 and 1.
ClickOutcome ClickRamp(GradientStopMap& stops, const RampGeometry& ramp, A_long x, A_long clicks,
                       bool cycleKind);

/// One pointer move of a drag. The stop follows x within 0 to 1, passing over its neighbours; onto a
/// taken position it goes by steps of 0.001 towards the ramp's middle. Below the frame it is lifted off
/// and comes back with the pointer. `drag` follows the stop. Returns whether the stops were edited.
bool DragRamp(GradientStopMap& stops, const RampGeometry& ramp, DragState& drag, A_long x, A_long y);

}  // namespace flumo
