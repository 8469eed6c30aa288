#include "tests/windows/scenes.h"

#include <cstdint>
#include <cstring>
#include <memory>

namespace flumo::tests {

namespace {

using enum Section;

int index_of(Section section) {
    return static_cast<int>(section) + 1;
}

constexpr double kFluid = 1, kVoronoi = 2, kSmoke = 3, kWorley = 4;

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

struct StoredStop {
    float position;
    std::int32_t kind;
    float r, g, b, a;
};

std::vector<std::byte> stored_gradient() {
    constexpr StoredStop kStops[] = {{0, 1, 0, 0.125F, 0.5F, 1},
                                     {0.25F, 0, 0.75F, 0.25F, 0, 1},
                                     {0.5F, 2, 1, 0.875F, 0.25F, 0.5F},
                                     {0.75F, 1, 0.25F, 1, 0.5F, 1},
                                     {1, 1, 1, 1, 1, 0.75F}};
    constexpr std::int32_t kCount = std::size(kStops);
    std::vector<std::byte> bytes(sizeof(kCount) + sizeof(kStops));
    std::memcpy(bytes.data(), &kCount, sizeof(kCount));
    std::memcpy(bytes.data() + sizeof(kCount), kStops, sizeof(kStops));
    return bytes;
}

void set_gradients(host::Host& host, host::Instance& instance) {
    for (const Section section : {Gradient, LinesGradient}) {
        const int index = index_of(section);
        instance.set(index, host::ArbitraryValue::unflatten(host, host.control(index), stored_gradient()));
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
        {.name = "default", .depth = k8},
        {.name = "fluid", .depth = k32, .settings = {{NoiseType, kFluid}, {Evolution, 37}, {Scale, 60}}},
        {.name = "voronoi", .depth = k16, .settings = {{NoiseType, kVoronoi}, {Evolution, 12}, {Speed, 80}}},
        {.name = "smoke", .depth = k32, .settings = {{NoiseType, kSmoke}, {Complexity, 6}, {Scale, 40}}},
        {.name = "worley", .depth = k16, .settings = {{NoiseType, kWorley}, {Complexity, 3}, {Evolution, 5}}},
        {.name = "cropped",
         .depth = k8,
         .settings = {{NoiseBottomCroppingEnabled, 1},
                      {NoiseBottomCroppingThreshold, 40},
                      {NoiseBottomCroppingFeather, 10}}},
        {.name = "gradient", .depth = k32, .settings = {{NoiseGradientScale, 150}}, .gradient = true},
        {.name = "lines",
         .depth = k32,
         .settings = {{LinesVisible, 1}, {LinesCount, 7}, {LinesRandomize, 1}, {LinesAlphaThreshold, 20}},
         .gradient = true},
        {.name = "odd-size", .depth = k16, .width = 61, .height = 33, .settings = {{LinesVisible, 1}}},
        {.name = "layer-gradient", .depth = k8, .settings = {{ColorizeMode, 2}}, .layers = true},
        {.name = "reflection",
         .depth = k32,
         .settings = {{ColorizeMode, 3}, {ReflectionScale, 1.5}},
         .layers = true},
        {.name = "refraction", .depth = k16, .settings = {{ColorizeMode, 4}}, .layers = true},
    };
    return all;
}

host::World render_scene(host::Host& host, const Scene& scene) {
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
    return instance->render(request);
}

std::vector<std::byte> picture_bytes(const host::World& world) {
    std::vector<std::byte> bytes;
    for (int y = 0; y < world.height(); ++y) {
        const auto row = world.row(y);
        bytes.insert(bytes.end(), row.begin(), row.end());
    }
    return bytes;
}

}  // namespace flumo::tests
