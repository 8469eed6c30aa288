// Puts tracks onto an applied effect.
#pragma once

#include "host/instance.h"
#include "scene/track.h"

namespace flumo::job {

/// Gives the instance every track's values; layers are read from their files and converted to `depth`,
/// since a layer reaches an effect at the frame's depth. Throws Failure (unreadable input) for a layer.
void apply_tracks(host::Instance& instance, const scene::Tracks& tracks, host::Depth depth);

}  // namespace flumo::job
