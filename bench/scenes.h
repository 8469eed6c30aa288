// The standard scenes, whose cost is measured.
#pragma once

#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "effect/params/control_table.h"
#include "host/instance.h"

namespace flumo::bench {

struct Scene {
    std::string_view name;
    /// Controls that are not at their default, as the host sends them.
    std::vector<std::pair<Section, double>> settings;
    /// Whether all three layer controls have a layer of the frame's size and depth.
    bool layers = false;
    /// Drawn at half the width and height: at full size the reference takes minutes per frame.
    bool half_size = false;
};

std::span<const Scene> standard_scenes();
const Scene& default_scene();
/// A scene with this many lines, their alpha noise of this type (1 fluid, 2 voronoi, 3 smoke, 4 worley).
Scene lines_scene(std::string_view name, int count, int alpha_noise);

/// Sets the scene's controls on an instance for frames of this size and depth.
void apply(const Scene& scene, host::Instance& instance, int width, int height, host::Depth depth);

}  // namespace flumo::bench
