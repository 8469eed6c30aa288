// Frames of the interface and worlds of the host.
#pragma once

#include <cstdint>

#include "host/values/value.h"
#include "host/values/world.h"

namespace flumo::frei0r {

/// The frame, width x height pixels of red, green, blue, alpha, 8 bits each, as a layer.
host::Layer layer_of(const uint32_t* frame, int width, int height);

/// Writes an 8-bit world into a frame of the same size.
void write_frame(const host::World& world, uint32_t* frame);

/// Writes the world over a frame that may be the same memory as `frame`; alpha is straight in all three.
/// Where the world is opaque its bytes stand, where it is transparent the frame's.
void write_over(const host::World& world, const uint32_t* below, uint32_t* frame);

}  // namespace flumo::frei0r
