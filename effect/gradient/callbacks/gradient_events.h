// The panel events of a gradient control: reads the event record, lets the editor work on the stops,
// and paints.
#pragma once

#include "effect_api/effect.h"
#include "effect_api/event.h"
#include "effect_api/params.h"

namespace flumo {

/// Answers click, drag and draw for the gradient at params[extra->effect_win.index]; other events are
/// left alone. Called on the host's interface thread. Every change of the stops ends in the
/// parameter's change flag, from which the host takes undo and redraw. Throws nothing: a missing suite
/// comes back as 516, a lock that yields nothing as 4, any other failure as the host's own number.
PF_Err HandleGradientEvent(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params,
                           PF_EventExtra* extra);

}  // namespace flumo
