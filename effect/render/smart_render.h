// One frame, from the host's request to finished pixels.
#pragma once

#include "effect_api/effect.h"
#include "effect_api/smart.h"

namespace flumo {

/// Renders one frame into the host's output world. Size and origin are those of the checked-out input
/// world, whose pixels are not read; the output world has its format. Runs on any number of threads at
/// once, and leaves the caller's GL context current. Returns the first error; a failed frame leaves the
/// output world as it was, and everything that was checked out is checked in in any case.
PF_Err SmartRender(PF_InData* in_data, PF_OutData* out_data, PF_SmartRenderExtra* extra);

}  // namespace flumo
