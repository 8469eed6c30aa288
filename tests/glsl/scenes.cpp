#include "tests/glsl/scenes.h"

#include <cmath>
#include <map>

#include "tests/glsl/comparison.h"
#include "tests/glsl/frame_twin.h"

namespace flumo::test {
namespace {

// A decision on a number of about 1 that single precision reaches in a few steps.
constexpr double kDecisionMargin = 2e-5;

constexpr int kWidth = 64;
constexpr int kHeight = 48;

// The driver's own random numbers of all lines of a scene.
twin::LineRandom driver_random(const MainUniforms& uniforms) {
    std::vector<Point> asked;
    for (int line = 1; line <= uniforms.linesCount; ++line) {
        for (float seed : {uniforms.randomSeed, uniforms.randomSeed + 1, uniforms.randomSeed + 2,
                           uniforms.randomSeed * 3}) {
            asked.push_back({static_cast<float>(line), seed});
        }
    }
    std::map<std::pair<float, float>, double> known;
    if (!asked.empty()) {
        const auto got = GlslBench::shared().evaluate("vec4(rand(a.xy))", asked);
        for (size_t i = 0; i < asked.size(); ++i)
            known[{asked[i][0], asked[i][1]}] = got[i][0];
    }
    return [known](float line, float seed) { return known.at({line, seed}); };
}

float wave(float x, float turns) {
    return 0.5f - 0.5f * std::cos(x * turns * 6.2831853f);
}

}  // namespace

Image colourful_ramp() {
    Image ramp = filled_image(2048, 1, {});
    for (int x = 0; x < ramp.width; ++x) {
        const float at = (static_cast<float>(x) + 0.5f) / 2048;
        ramp.texels[static_cast<size_t>(x)] = {at, wave(at, 1), wave(at, 1.5f), 0.25f};
    }
    return ramp;
}

Image colourful_layer(int width, int height) {
    Image layer = filled_image(width, height, {});
    for (int i = 0; i < width * height; ++i) {
        const float x = (static_cast<float>(i % width) + 0.5f) / static_cast<float>(width);
        const float y = (static_cast<float>(i / width) + 0.5f) / static_cast<float>(height);
        layer.texels[static_cast<size_t>(i)] = {1 - 0.9f * x * y, x, wave(x + y, 0.7f), 1 - y};
    }
    return layer;
}

Scene plane(float corner, float across, float down) {
    Scene scene;
    scene.uniforms.noiseContrast = 0;
    scene.uniforms.noiseBottomCroppingEnabled = 0;
    scene.uniforms.useLayer2 = 1;
    scene.layer2 = filled_image(2, 2, {});
    for (size_t i = 0; i < 4; ++i) {
        const float value = corner + across * static_cast<float>(i % 2) + down * static_cast<float>(i / 2);
        scene.layer2.texels[i] = {1, value, value, value};
    }
    scene.uvs = {0.25f, 0.25f, 0.75f,
                 0.75f};  // from texel centre to texel centre, where the filter is linear
    scene.layer3 = colourful_layer(24, 24);
    scene.noiseRamp = colourful_ramp();
    scene.linesRamp = colourful_ramp();
    return scene;
}

namespace {

// Compares an image with expected(twin, x, y), a vector of the channels that count.
template <class Expected>
void compare_pixels(const std::string& name, const Scene& scene, const Image& got, double tolerance,
                    Expected expected) {
    twin::FrameTwin frame(scene, driver_random(scene.uniforms), got.width, got.height);
    Comparison comparison(name, tolerance);
    int undecided = 0;
    for (int i = 0; i < got.width * got.height; ++i) {
        const int x = i % got.width;
        const int y = i / got.width;
        const std::vector<double> channels = expected(frame, x, y);
        if (frame.margin() < kDecisionMargin) {
            ++undecided;
            continue;
        }
        for (size_t c = 0; c < channels.size(); ++c) {
            comparison.add(got.at(x, y)[c], channels[c], [&] {
                return "channel " + std::to_string(c) + " of " + std::to_string(x) + ", " + std::to_string(y);
            });
        }
    }
    EXPECT_LT(undecided, got.width * got.height / 8) << name;
}

}  // namespace

void compare_frame(const std::string& name, const Scene& scene, double tolerance) {
    const Image got = GlslBench::shared().draw(scene, kWidth, kHeight);
    compare_pixels(name, scene, got, tolerance, [](twin::FrameTwin& frame, int x, int y) {
        const twin::Colour colour = frame.colour_at(x, y);
        return std::vector{colour.r, colour.g, colour.b, colour.a};
    });
}

void compare_heights(const std::string& name, const Scene& scene, double tolerance) {
    const Image got =
        GlslBench::shared().draw(scene, kWidth, kHeight, "vec4(getHeight(out_uvs.xy), 0.0, 1.0)");
    compare_pixels(name, scene, got, tolerance, [](twin::FrameTwin& frame, int x, int y) {
        const twin::Height height = frame.height_at(frame.uv_at(x, y));
        return std::vector{height.value, height.coverage};
    });
}

}  // namespace flumo::test
