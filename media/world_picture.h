// Between pictures and the host's worlds.
#pragma once

#include "host/values/world.h"
#include "media/picture/picture.h"

namespace flumo::media {

/// The world's pixels at its own depth. 16-bit channels, full at 32768 in the host, become full at 65535;
/// what lies above full scale is clamped there. Floats stay as they are.
Picture picture_of(const host::World& world);

/// The picture as a world of the given depth, rounded to the nearest value.
host::World world_of(const Picture& picture, host::Depth depth);

}  // namespace flumo::media
