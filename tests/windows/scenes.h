// Frames that the Windows and the Linux module render alike. Layers and gradients are made of whole numbers,
// so that both sides give the effect the same bits.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "effect/params/control_table.h"
#include "host/instance.h"

namespace flumo::tests {

struct Scene {
    std::string name;
    host::Depth depth = host::Depth::k8;
    std::vector<std::pair<Section, double>> settings = {};
    /// Test pictures in the input and the three layers.
    bool layers = false;
    /// A gradient with stops of every kind instead of the default one.
    bool gradient = false;
    int width = 96;
    int height = 54;
};

const std::vector<Scene>& scenes();

/// Sets the scene's controls on a fresh instance of the host and renders its one frame: its channels, row by
/// row, 1 at full scale; every depth's numbers have a float of their own. Throws HostError.
std::vector<float> render_scene(host::Host& host, const Scene& scene);

}  // namespace flumo::tests
