#include <gmock/gmock.h>

#include "tests/glsl/scenes.h"

namespace flumo::test {
namespace {

using testing::ElementsAre;

void cut_noise(Scene& scene) {
    scene.uniforms.noiseBottomCroppingEnabled = 1;
    scene.uniforms.noiseBottomCroppingThreshold = 0.3f;
    scene.uniforms.noiseTopCroppingEnabled = 1;
    scene.uniforms.noiseTopCroppingThreshold = 0.7f;
}

const Variation kHeights[] = {
    {"plain noise", [](Scene&) {}},
    {"noise moved and scaled",
     [](Scene& s) {
         s.uniforms.scale = {3, -1.5f};
         s.uniforms.offsetX = 0.7f;
         s.uniforms.offsetY = -2.2f;
         s.uniforms.evolution = 130;
         s.uniforms.fluidSpeed = 0.02f;
         s.uniforms.complexity = 7;
     }},
    {"looped noise",
     [](Scene& s) {
         s.uniforms.loopEvolution = 1;
         s.uniforms.evolution = -90;
     }},
    {"contrast and brightness",
     [](Scene& s) {
         s.uniforms.noiseContrast = -150;
         s.uniforms.noiseBrightness = 60;
     }},
    {"smoke", [](Scene& s) { s.uniforms.noiseType = 3; }},
    {"cells", [](Scene& s) { s.uniforms.noiseType = 4; }},
    {"layer multiplied",
     [](Scene& s) {
         s.uniforms.useLayer1 = 1;
         s.uniforms.layer1Mult = 1.7f;
     }},
    {"layer multiplied, lightness inverted",
     [](Scene& s) {
         s.uniforms.useLayer1 = 1;
         s.uniforms.layer1LightnessInvert = 1;
         s.uniforms.alphaThreshold = 0.6f;
     }},
    {"layer multiplied, alpha inverted",
     [](Scene& s) {
         s.uniforms.useLayer1 = 1;
         s.uniforms.layer1AlphaInvert = 1;
         s.uniforms.alphaThreshold = 0.2f;
         s.uniforms.noiseBrightness = 10;
     }},
    {"layer added",
     [](Scene& s) {
         s.uniforms.useLayer2 = 1;
         s.uniforms.layer2Mult = -0.8f;
     }},
    {"layer added, inverted",
     [](Scene& s) {
         s.uniforms.useLayer2 = 1;
         s.uniforms.layer2LightnessInvert = 1;
         s.uniforms.layer2AlphaInvert = 1;
     }},
    {"both layers of 16 bits",
     [](Scene& s) {
         s.uniforms.useLayer1 = 1;
         s.uniforms.useLayer2 = 1;
         s.uniforms.layer1LightnessInvert = 1;
         s.uniforms.multiplier16bit = 65535.0f / 32768.0f;
     }},
    {"flags that are not 1",
     [](Scene& s) {
         cut_noise(s);
         s.uniforms.useLayer1 = 2;
         s.uniforms.useLayer2 = -1;
         s.uniforms.loopEvolution = 3;
         s.uniforms.noiseBottomCroppingEnabled = 255;
         s.uniforms.noiseTopCroppingEnabled = 2;
     }},
    {"hard cuts", cut_noise},
    {"soft cuts",
     [](Scene& s) {
         cut_noise(s);
         s.uniforms.noiseBottomCroppingFeather = 0.25f;
         s.uniforms.noiseTopCroppingFeather = 0.5f;
         s.uniforms.noiseBrightness = 15;
     }},
};

TEST(Height, FollowsTheTwin) {
    for (const Variation& variation : kHeights) {
        Scene scene;
        scene.layer1 = colourful_layer(33, 21);
        scene.layer2 = colourful_layer(5, 50);
        variation.apply(scene);
        // Smoke is what its own test says; all else is a few steps of single precision.
        compare_heights(variation.name, scene, scene.uniforms.noiseType == 3 ? 3e-3 : 2e-5);
    }
}

// Without a feather a cut is a step, and a height at the threshold itself counts as above it.
TEST(Height, CutsWithoutFeatherAreSteps) {
    const auto coverage = [](float brightness, bool bottom) {
        Scene scene;
        scene.uniforms.noiseContrast = 0;
        scene.uniforms.noiseBrightness = brightness;
        scene.uniforms.noiseBottomCroppingEnabled = bottom;
        scene.uniforms.noiseTopCroppingEnabled = !bottom;
        scene.uniforms.noiseBottomCroppingThreshold = scene.uniforms.noiseTopCroppingThreshold = 0.5f;
        return GlslBench::shared().draw(scene, 2, 2, "vec4(getHeight(out_uvs.xy), 0.0, 1.0)").at(0, 0)[1];
    };
    const std::vector below_at_above_bottom{coverage(49.99f, true), coverage(50, true),
                                            coverage(50.01f, true)};
    const std::vector below_at_above_top{coverage(49.99f, false), coverage(50, false),
                                         coverage(50.01f, false)};
    EXPECT_THAT(below_at_above_bottom, ElementsAre(0, 1, 1));
    EXPECT_THAT(below_at_above_top, ElementsAre(1, 0, 0));
}

}  // namespace
}  // namespace flumo::test
