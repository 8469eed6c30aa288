// Frames that the Windows and the Linux module render alike. Layers and gradients are made of whole numbers,
// so that both sides give the effect the same bits.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "effect/params/control_table.h"
#include "host/instance.h"

namespace flumo::tests {

struct Scene {
    std::string name;
    host::Depth depth = host::Depth::k8;
    int width = 96;
    int height = 54;
    std::vector<std::pair<Section, double>> settings = {};
    /// Test pictures in the input and the three layers.
    bool layers = false;
    /// A gradient with stops of every kind instead of the default one.
    bool gradient = false;
};

const std::vector<Scene>& scenes();

/// Sets the scene's controls on a fresh instance of the host and renders its one frame. Throws HostError.
host::World render_scene(host::Host& host, const Scene& scene);

/// The frame's rows without their padding, in the host's channel order.
std::vector<std::byte> picture_bytes(const host::World& world);

}  // namespace flumo::tests
