// The panel events of a gradient control: reads the event record, lets the editor work on the stops,
// and paints.
#pragma once

#include "effect_api/effect.h"
#include "effect_api/event.h"
#include "effect_api/params.h"

namespace flumo {

/// Answers click, drag and draw for the gradient at params[extra->effect_win.index]; other events do
/// nothing. Called on the host's interface thread. Every change of the stops sets the
/// parameter's change flag, from which the host makes the undo step and the redraw. Throws nothing: returns
/// PF_Err_BAD_CALLBACK_PARAM for a missing suite, PF_Err_OUT_OF_MEMORY for a failed lock, and the host's
/// number for any other failure.
PF_Err HandleGradientEvent(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params,
                           PF_EventExtra* extra);

}  // namespace flumo
