#include "bench/scenes.h"

#include <memory>

namespace flumo::bench {

namespace {

using enum Section;

int index_of(Section section) {
    return static_cast<int>(section) + 1;
}

/// Opaque, with a slope in each colour, so that neighbouring texels differ.
host::Layer slopes(int width, int height, host::Depth depth) {
    auto layer = std::make_shared<host::World>(width, height, depth);
    for (int y = 0; y < height; ++y) {
        const float v = static_cast<float>(y) / static_cast<float>(height);
        for (int x = 0; x < width; ++x) {
            const float u = static_cast<float>(x) / static_cast<float>(width);
            layer->set_rgba(x, y, {u, v, 1 - u * v, 1});
        }
    }
    return layer;
}

}  // namespace

Scene lines_scene(std::string_view name, int count, int alpha_noise) {
    return {name,
            {{LinesVisible, 1},
             {LinesCount, count},
             {LinesAlphaNoiseType, alpha_noise},
             {LinesAlphaThreshold, 30}},
            false,
            true};
}

std::span<const Scene> standard_scenes() {
    static const std::vector<Scene> scenes = {
        {"default (fluid)", {}},
        {"voronoi", {{NoiseType, 2}}},
        {"smoke", {{NoiseType, 3}}},
        {"worley", {{NoiseType, 4}}},
        {"looped noise", {{LoopEvolution, 1}, {Evolution, 100}}},
        // Two layers shape the height, the third is the palette.
        {"three layers", {{ColorizeMode, 2}}, true},
        lines_scene("4 lines, fluid", 4, 1),
        lines_scene("4 lines, voronoi", 4, 2),
        lines_scene("4 lines, smoke", 4, 3),
        lines_scene("4 lines, worley", 4, 4),
        lines_scene("40 lines, fluid", 40, 1),
        lines_scene("40 lines, voronoi", 40, 2),
        lines_scene("40 lines, smoke", 40, 3),
        lines_scene("40 lines, worley", 40, 4),
    };
    return scenes;
}

const Scene& default_scene() {
    return standard_scenes().front();
}

void apply(const Scene& scene, host::Instance& instance, int width, int height, host::Depth depth) {
    for (const auto& [section, value] : scene.settings)
        instance.set(index_of(section), value);
    if (!scene.layers) return;
    const host::Layer layer = slopes(width, height, depth);
    for (const Section section : {Layer1, Layer2, Layer3})
        instance.set(index_of(section), layer);
}

}  // namespace flumo::bench
