#include "tests/windows/scenes.h"

#include <memory>
#include <span>

namespace flumo::tests {

namespace {

using enum Section;
using test::look;

// Ramps and a checkerboard, different for each `seed`, opaque at the left and thinner to the right.
host::Layer test_picture(int width, int height, host::Depth depth, int seed) {
    auto world = std::make_shared<host::World>(width, height, depth);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int check = (x / 8 + y / 8 + seed) % 2;
            world->set_rgba(x, y,
                            {static_cast<float>(x * (seed + 1) % width) / static_cast<float>(width),
                             static_cast<float>(y) / static_cast<float>(height), static_cast<float>(check),
                             1 - static_cast<float>(x) / static_cast<float>(2 * width)});
        }
    }
    return world;
}

// The input is the effect's own layer; it has no control here.
test::Look layered(host::Depth depth, const test::Look& changes) {
    return test::with({{Layer1, test_picture(96, 54, depth, 1)},
                       {Layer2, test_picture(96, 54, depth, 2)},
                       {Layer3, test_picture(96, 54, depth, 3)}},
                      changes);
}

// Stops of every kind.
const test::Stops kStops = {{0, 0, 0.125F, 0.5F, 1},
                            {0.25F, 0.75F, 0.25F, 0, 0},
                            {0.5F, 1, 0.875F, 0.25F, 2},
                            {0.75F, 0.25F, 1, 0.5F, 1},
                            {1, 1, 1, 1, 1}};

}  // namespace

const std::vector<Scene>& scenes() {
    using enum host::Depth;
    static const std::vector<Scene> all = {
        {"default", k8},
        {"fluid", k32, look("NoiseType=1 Evolution=37 Scale=60")},
        {"voronoi", k16, look("NoiseType=2 Evolution=12 Speed=80")},
        {"smoke", k32, look("NoiseType=3 Complexity=6 Scale=40")},
        {"worley", k16, look("NoiseType=4 Complexity=3 Evolution=5")},
        {"cropped", k8,
         look("NoiseBottomCroppingEnabled=1 NoiseBottomCroppingThreshold=40 NoiseBottomCroppingFeather=10")},
        {"gradient", k32, {{NoiseGradientScale, 150}, {Gradient, kStops}}},
        {"lines",
         k32,
         {{LinesVisible, 1},
          {LinesCount, 7},
          {LinesRandomize, 1},
          {LinesAlphaThreshold, 20},
          {LinesGradient, kStops}}},
        {"odd-size", k16, {{LinesVisible, 1}}, 61, 33},
        {"layer-gradient", k8, layered(k8, {{ColorizeMode, 2}})},
        {"reflection", k32, layered(k32, look("ColorizeMode=3 ReflectionScale=1.5"))},
        {"refraction", k16, layered(k16, {{ColorizeMode, 4}})},
    };
    return all;
}

std::vector<float> render_scene(host::Host& host, const Scene& scene) {
    const auto instance = test::instance_with(host, scene.look);
    host::FrameRequest request;
    request.width = scene.width;
    request.height = scene.height;
    request.depth = scene.depth;
    request.frame = 3;
    request.input = test_picture(scene.width, scene.height, scene.depth, 0);
    const host::World world = instance->render(request);
    const auto row_length = static_cast<size_t>(4 * world.width());
    std::vector<float> all(row_length * static_cast<size_t>(world.height()));
    for (int y = 0; y < world.height(); ++y)
        world.read_row(y, std::span(all).subspan(static_cast<size_t>(y) * row_length, row_length));
    return all;
}

}  // namespace flumo::tests
