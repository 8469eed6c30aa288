// A frame a second time, in double precision: controls become uniforms, twins of the programs' fragments
// make the double-size image, and that is reduced and brought to the host's scale.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/frames/studio.h"
#include "tests/glsl/frame_twin.h"

namespace flumo::test {

// All noises but Voronoi. Lines and reflections need a height that is a plane: differences of neighbours
// in a curved one are the driver's choice.
class ExpectedFrame {
  public:
    // `shape` is that of the delivered frame.
    ExpectedFrame(const Shot& shot, const host::WorldShape& shape);

    // Straight colour, not rounded to the depth. Nothing where the pixel hangs on a decision (a threshold, a
    // wrap) that is too close to foresee.
    std::optional<twin::Colour> at(int x, int y);

  private:
    struct Fragment {
        twin::Colour premultiplied;
        bool decided;
    };
    const Fragment& fragment(int x, int y);

    host::WorldShape shape_;
    Scene scene_;
    twin::FrameTwin twin_;
    std::vector<std::optional<Fragment>> fragments_;
};

// Compares a delivered frame, at about `kComparedPixels` places, with what the shot should give. A colour
// may differ by `tolerance`, weighted by its alpha, on top of half a step of the depth, and a share of
// `allowed_beyond` of all channels by more.
inline constexpr int kComparedPixels = 4000;
void compare_with_expected(const std::string& name, const Shot& shot, const host::World& frame,
                           double tolerance, double allowed_beyond = 0);

}  // namespace flumo::test
