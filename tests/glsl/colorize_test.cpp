#include <gmock/gmock.h>

#include "tests/glsl/scenes.h"

namespace flumo::test {
namespace {

const Variation kColours[] = {
    {"gradient", [](Scene&) {}},
    {"gradient moved and scaled",
     [](Scene& s) {
         s.uniforms.noiseGradientOffset = 0.15f;
         s.uniforms.noiseGradientScale = 0.6f;
         s.uniforms.noiseGradientScaleBase = 0.4f;
     }},
    {"gradient looped",
     [](Scene& s) {
         s.uniforms.noiseGradientLoop = 1;
         s.uniforms.noiseGradientScale = -2.3f;
     }},
    {"gradient jittered",
     [](Scene& s) {
         s.uniforms.gradientRandomizeAmplitude = 0.2f;
         s.uniforms.gradientRandomizeFrequency = 0.7f;
         s.uniforms.randomSeed = 17;
     }},
    {"gradient jittered after the wrap",
     [](Scene& s) {
         s.uniforms.noiseGradientLoop = 1;
         s.uniforms.noiseGradientOffset = 0.5f;
         s.uniforms.gradientRandomizeAmplitude = 0.6f;
     }},
    {"gradient from layer",
     [](Scene& s) {
         s.uniforms.colorizeMode = 2;
         s.uniforms.useLayer3 = 1;
     }},
    {"gradient from layer of 16 bits",
     [](Scene& s) {
         s.uniforms.colorizeMode = 2;
         s.uniforms.useLayer3 = 1;
         s.uniforms.multiplier16bit = 65535.0f / 32768.0f;
         s.uniforms.layer2Mult = 0.5f;
     }},
    {"reflection",
     [](Scene& s) {
         s.uniforms.colorizeMode = 3;
         s.uniforms.useLayer3 = 1;
     }},
    {"reflection of no layer", [](Scene& s) { s.uniforms.colorizeMode = 3; }},
    {"refraction",
     [](Scene& s) {
         s.uniforms.colorizeMode = 4;
         s.uniforms.reflectionScale = 0.35f;
     }},
    {"refraction looped",
     [](Scene& s) {
         s.uniforms.colorizeMode = 4;
         s.uniforms.noiseGradientLoop = 1;
     }},
    {"unknown mode", [](Scene& s) { s.uniforms.colorizeMode = 5; }},
    {"invisible", [](Scene& s) { s.uniforms.noiseVisible = 2; }},
};

TEST(Colorize, FollowsTheTwinOverAPlane) {
    for (const Variation& variation : kColours) {
        Scene scene = plane(-0.1f, 0.9f, 0.4f);
        variation.apply(scene);
        compare_frame(variation.name, scene, 2e-5);
    }
}

// Modes that read a layer without asking for it get alpha first from an empty sampler, which says 0 there.
TEST(Colorize, ModesWithoutTheirLayerAreTransparent) {
    for (const int mode : {2, 4}) {
        Scene scene = plane(-0.1f, 0.9f, 0.4f);
        scene.layer3 = {};
        scene.uniforms.colorizeMode = mode;
        for (const Texel& texel : GlslBench::shared().draw(scene, 8, 8).texels)
            EXPECT_EQ(texel[3], 0.0f);
    }
}

// A tiny negative position wraps to the start of the ramp, not to its end.
TEST(Colorize, LoopedPositionsStayBelowOne) {
    const std::vector<Point> points{{-1e-9f}, {0}, {1}, {-0.25f}, {-3}, {2.75f}};
    std::vector<float> got;
    for (const Texel& texel : GlslBench::shared().evaluate("vec4(wrapped(a.x))", points))
        got.push_back(texel[0]);
    EXPECT_THAT(got, testing::ElementsAre(0, 0, 0, 0.75f, 0, 0.75f));
}

}  // namespace
}  // namespace flumo::test
