#pragma once

#include <string>
#include <vector>

#include "tests/glsl/glsl_bench.h"

namespace flumo::test {

// Red, green, blue from 0 to 1 and back, three times around at different speeds: every place has its own
// colour.
Image colourful_ramp();

// A layer in the host's channel order whose four channels all vary differently, alpha included.
Image colourful_layer(int width, int height);

// A height that is a plane: `corner` at the first fragment's side, rising by `across` and `down` over the
// frame. No noise, no cuts; ramps and layer 3 are colourful.
Scene plane(float corner, float across, float down);

// One change of a scene, with a name for the reader of a failure.
struct Variation {
    const char* name;
    void (*apply)(Scene&);
};

// Draws the scene and compares every pixel with the twin, except the few that stand on a hard decision.
// Channels may differ by `tolerance`.
void compare_frame(const std::string& name, const Scene& scene, double tolerance);

// The same for the height and the coverage of every fragment.
void compare_heights(const std::string& name, const Scene& scene, double tolerance);

}  // namespace flumo::test
