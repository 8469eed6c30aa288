// What the cases of events share.
#pragma once

#include "host/control_events.h"
#include "judge/engine/frame_judge.h"

namespace flumo::judge {

/// Panel pixels around a control's frame in which nothing may be drawn, beyond the one that smooth edges
/// reach into.
inline constexpr int kPanelMargin = 20;

/// The value that events have left must be storable, and a frame with it renderable.
void judge_value(Fixture& fixture, host::Instance& instance, const host::Control& control);

}  // namespace flumo::judge
