// Layers, gradients and looks that the frames of these tests are made of.
#pragma once

#include "tests/effect/render/effect_fixture.h"

namespace flumo::test {

// Every place of 0 to 1 has its own colour. `shift` moves all stops.
Stops colourful(float shift = 0);

// A layer whose channels all vary differently, alpha included, with padded rows.
host::Layer colourful_layer(int width, int height, host::Depth depth);

host::Layer flat_layer(const host::Rgba& colour, host::Depth depth = host::Depth::k8);

// A grey float layer, opaque, that rises by `across` and `down` from `corner` over its sides.
host::Layer slope_layer(int width, int height, float corner, float across, float down);

// No noise: the height is a plane from below 0 to above 1 over a frame of this size, through layer 2, whose
// texels are the fragments of the frame. Colourful, without cuts.
Look plane(int width, int height);

// plane() with lines of another gradient over it.
Look lined_plane(int width, int height);

// Fluid noise in colour.
Look fluid();

}  // namespace flumo::test
