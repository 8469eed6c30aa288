#include "tests/windows/scenes.h"

#include <bit>
#include <cstdint>
#include <memory>
#include <span>

namespace flumo::tests {

namespace {

using enum Section;

int index_of(Section section) {
    return static_cast<int>(section) + 1;
}

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

void set_gradients(host::Host& host, host::Instance& instance) {
    constexpr auto kWhole = [](std::int32_t number) { return std::bit_cast<float>(number); };
    // A count, then position, kind, red, green, blue and alpha of each stop.
    constexpr float kStored[] = {kWhole(5),                                         //
                                 0,         kWhole(1), 0,     0.125F, 0.5F,  1,     //
                                 0.25F,     kWhole(0), 0.75F, 0.25F,  0,     1,     //
                                 0.5F,      kWhole(2), 1,     0.875F, 0.25F, 0.5F,  //
                                 0.75F,     kWhole(1), 0.25F, 1,      0.5F,  1,     //
                                 1,         kWhole(1), 1,     1,      1,     0.75F};
    for (const Section section : {Gradient, LinesGradient}) {
        const int index = index_of(section);
        instance.set(index, host::ArbitraryValue::unflatten(host, host.control(index),
                                                            std::as_bytes(std::span(kStored))));
    }
}

void set_layers(host::Instance& instance, const Scene& scene, host::FrameRequest& request) {
    request.input = test_picture(scene.width, scene.height, scene.depth, 0);
    int seed = 1;
    for (const Section section : {Layer1, Layer2, Layer3}) {
        instance.set(index_of(section), test_picture(scene.width, scene.height, scene.depth, seed++));
    }
}

}  // namespace

const std::vector<Scene>& scenes() {
    using enum host::Depth;
    static const std::vector<Scene> all = {
        {"default", k8},
        {"fluid", k32, {{NoiseType, 1}, {Evolution, 37}, {Scale, 60}}},
        {"voronoi", k16, {{NoiseType, 2}, {Evolution, 12}, {Speed, 80}}},
        {"smoke", k32, {{NoiseType, 3}, {Complexity, 6}, {Scale, 40}}},
        {"worley", k16, {{NoiseType, 4}, {Complexity, 3}, {Evolution, 5}}},
        {"cropped",
         k8,
         {{NoiseBottomCroppingEnabled, 1},
          {NoiseBottomCroppingThreshold, 40},
          {NoiseBottomCroppingFeather, 10}}},
        {"gradient", k32, {{NoiseGradientScale, 150}}, false, true},
        {"lines",
         k32,
         {{LinesVisible, 1}, {LinesCount, 7}, {LinesRandomize, 1}, {LinesAlphaThreshold, 20}},
         false,
         true},
        {"odd-size", k16, {{LinesVisible, 1}}, false, false, 61, 33},
        {"layer-gradient", k8, {{ColorizeMode, 2}}, true},
        {"reflection", k32, {{ColorizeMode, 3}, {ReflectionScale, 1.5}}, true},
        {"refraction", k16, {{ColorizeMode, 4}}, true},
    };
    return all;
}

std::vector<float> render_scene(host::Host& host, const Scene& scene) {
    const auto instance = host.new_instance();
    host::FrameRequest request;
    request.width = scene.width;
    request.height = scene.height;
    request.depth = scene.depth;
    request.frame = 3;
    for (const auto& [section, value] : scene.settings)
        instance->set(index_of(section), value);
    if (scene.gradient) set_gradients(host, *instance);
    if (scene.layers) set_layers(*instance, scene, request);
    const host::World world = instance->render(request);
    const auto row_length = static_cast<std::size_t>(4 * world.width());
    std::vector<float> all(row_length * static_cast<std::size_t>(world.height()));
    for (int y = 0; y < world.height(); ++y)
        world.read_row(y, std::span(all).subspan(static_cast<std::size_t>(y) * row_length, row_length));
    return all;
}

}  // namespace flumo::tests
