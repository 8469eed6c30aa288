// Frames that the Windows and the Linux module render alike. Layers and gradients are made of sums and
// quotients alone, so that both sides give the effect the same bits.
#pragma once

#include <string>
#include <vector>

#include "tests/support/look.h"

namespace flumo::tests {

struct Scene {
    std::string name;
    host::Depth depth = host::Depth::k8;
    test::Look look = {};
    int width = 96;
    int height = 54;
};

const std::vector<Scene>& scenes();

/// Sets the scene's controls on a fresh instance of the host and renders its one frame: its channels, row by
/// row, 1 at full scale; every depth's numbers have a float of their own. Throws HostError.
std::vector<float> render_scene(host::Host& host, const Scene& scene);

}  // namespace flumo::tests
