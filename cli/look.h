// Puts tracks onto an applied effect.
#pragma once

#include "cli/track.h"
#include "host/instance.h"

namespace flumo::cli {

/// Gives the instance every track's values; layers are read from their files and converted to `depth`,
/// since a layer reaches an effect at the frame's depth. Throws Failure (unreadable input) for a layer.
void apply_tracks(host::Instance& instance, const Tracks& tracks, host::Depth depth);

}  // namespace flumo::cli
