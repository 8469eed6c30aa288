// The switches of the main program that follow from a frame's controls.
#pragma once

#include "effect/gpu/look.h"
#include "effect/params/param_snapshot.h"

namespace flumo {

/// The look of a frame: the switches that its visible parts read. Values that are usually animated are not
/// among them, so that the frames of an animation share a look.
Look LookOfFrame(ParamSnapshot& snapshot);

}  // namespace flumo
