#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "tests/glsl/comparison.h"
#include "tests/glsl/points.h"
#include "tests/glsl/scenes.h"

namespace flumo::test {
namespace {

void cut_lines(Scene& scene) {
    scene.uniforms.linesBottomCroppingEnabled = 1;
    scene.uniforms.linesBottomCroppingThreshold = 0.2f;
    scene.uniforms.linesTopCroppingEnabled = 1;
    scene.uniforms.linesTopCroppingThreshold = 0.9f;
}

const Variation kLines[] = {
    {"four lines", [](Scene&) {}},
    {"one line", [](Scene& s) { s.uniforms.linesCount = 1; }},
    {"no line", [](Scene& s) { s.uniforms.linesCount = 0; }},
    {"lines without noise", [](Scene& s) { s.uniforms.noiseVisible = 0; }},
    {"added lines",
     [](Scene& s) {
         s.uniforms.linesBlendMode = 2;
         s.uniforms.linesAlpha = 0.6f;
     }},
    {"added lines without noise",
     [](Scene& s) {
         s.uniforms.linesBlendMode = 2;
         s.uniforms.noiseVisible = 0;
     }},
    {"multiplied lines",
     [](Scene& s) {
         s.uniforms.linesBlendMode = 3;
         s.uniforms.linesAlpha = 0.6f;
     }},
    {"unknown blend mode", [](Scene& s) { s.uniforms.linesBlendMode = 4; }},
    {"lines over a half transparent layer",
     [](Scene& s) {
         s.uniforms.colorizeMode = 2;
         s.uniforms.linesAlpha = 0.5f;
         s.uniforms.linesWidth = 12;
     }},
    {"lines moved", [](Scene& s) { s.uniforms.linesOffset = 0.37f; }},
    {"lines looped",
     [](Scene& s) {
         s.uniforms.linesOffset = 0.63f;
         s.uniforms.linesLoop = 2;
     }},
    {"cut lines", cut_lines},
    {"softly cut lines",
     [](Scene& s) {
         cut_lines(s);
         s.uniforms.linesBottomCroppingFeather = 0.3f;
         s.uniforms.linesTopCroppingFeather = 0.4f;
         s.uniforms.linesOffset = 0.2f;
     }},
    {"line gradient",
     [](Scene& s) {
         s.uniforms.linesGradientOffset = 0.1f;
         s.uniforms.linesGradientScale = 0.6f;
         s.uniforms.linesGradientScaleBase = 0.5f;
     }},
    {"looped line gradient, jittered before the wrap",
     [](Scene& s) {
         s.uniforms.linesGradientOffset = 0.6f;
         s.uniforms.linesGradientLoop = 1;
         s.uniforms.gradientRandomize = 10;
         s.uniforms.randomSeed = 3;
     }},
    {"jittered heights",
     [](Scene& s) {
         s.uniforms.linesRandomize = 1.5f;
         s.uniforms.randomSeed = 11;
     }},
    {"jittered widths",
     [](Scene& s) {
         s.uniforms.widthRandomize = 2;
         s.uniforms.randomSeed = 5.5f;
     }},
    {"lines of no width",
     [](Scene& s) {
         s.uniforms.linesWidth = 0;
         s.uniforms.widthRandomize = 2;
     }},
    {"masked lines",
     [](Scene& s) {
         s.uniforms.linesAlphaThreshold = 0.6f;
         s.uniforms.linesAlphaNoiseScale = {9, 5};
         s.uniforms.linesAlphaNoiseOffset = {0.4f, -0.3f};
         s.uniforms.linesAlphaNoiseEvolution = 77;
         s.uniforms.linesAlphaNoiseSpeed = 0.03f;
     }},
    {"masks that differ by line",
     [](Scene& s) {
         s.uniforms.linesCount = 9;
         s.uniforms.linesAlphaThreshold = 0.5f;
         s.uniforms.alphaRandomize = 0.1f;
         s.uniforms.randomSeed = 4;
         s.uniforms.linesAlphaNoiseScale = {3, 3};
     }},
    {"masks by a looped noise",
     [](Scene& s) {
         s.uniforms.linesAlphaThreshold = 0.5f;
         s.uniforms.linesAlphaNoiseLoopEvolution = 1;
         s.uniforms.linesAlphaNoiseEvolution = 500;
         s.uniforms.linesAlphaNoiseScale = {6, 6};
         s.uniforms.linesAlphaNoiseComplexity = 2;
     }},
    {"masks by smoke, which has the main complexity",
     [](Scene& s) {
         s.uniforms.linesAlphaNoiseType = 3;
         s.uniforms.complexity = 25;
         s.uniforms.linesAlphaThreshold = 0.15f;
         s.uniforms.linesAlphaNoiseScale = {4, 4};
     }},
    {"masks by cells, which have the main complexity",
     [](Scene& s) {
         s.uniforms.linesAlphaNoiseType = 4;
         s.uniforms.complexity = 7;
         s.uniforms.linesAlphaThreshold = 0.7f;
     }},
};

// Widths and distances are divided by the slope, a difference of two heights whose last bit is 6e-8 of one:
// with slopes of about 0.02 that is 1e-5 of a width, and lines are up to a dozen pixels wide.
constexpr double kLineTolerance = 3e-4;

TEST(Isolines, FollowTheTwinOverAPlane) {
    for (const Variation& variation : kLines) {
        Scene scene = plane(-0.1f, 0.9f, 0.4f);
        scene.uniforms.linesVisible = 1;
        variation.apply(scene);
        compare_frame(variation.name, scene, kLineTolerance);
    }
}

TEST(Isolines, IsolineIsTheDistanceInSlopes) {
    const auto points = make_points(6000, 60, [](Numbers& n) {
        return Point{n.between(-3, 3), n.between(0.001f, 0.2f), n.between(-1, 1), n.between(0.3f, 2),
                     n.between(0, 8)};
    });
    const auto got = GlslBench::shared().evaluate("vec4(isoline(a.x, a.y, a.z, a.w, b.x))", points);
    Comparison comparison("isoline", 1e-4);  // a distance known to 1e-7, over slopes mostly above 0.01
    for (size_t i = 0; i < points.size(); ++i) {
        const auto [value, slope, ref, period, width] =
            std::to_array<double>({points[i][0], points[i][1], points[i][2], points[i][3], points[i][4]});
        const double pixels = std::fabs(std::remainder(value - ref, period)) / slope - width / 2;
        const double t = std::clamp((pixels - 0.2) / 0.6, 0.0, 1.0);
        comparison.add(got[i][0], t * t * (3 - 2 * t), [&] { return as_text(points[i]); });
    }
}

// A flat field has no line, wherever it lies, and drawing none changes neither colour nor alpha.
TEST(Isolines, FlatFieldsHaveNoLine) {
    for (const float height : {0.5f, 0.25f, 0.0f, 1.0f}) {
        for (const int mode : {1, 2, 3}) {
            Scene scene = plane(height, 0, 0);
            const Texel without = GlslBench::shared().draw(scene, 4, 4).at(1, 1);
            scene.uniforms.linesVisible = 1;
            scene.uniforms.linesCount = 3;  // at 1/4, 1/2 and 3/4
            scene.uniforms.linesBlendMode = mode;
            EXPECT_EQ(GlslBench::shared().draw(scene, 4, 4).at(1, 1), without) << height << ", mode " << mode;
        }
    }
}

TEST(Isolines, NothingOverNothingIsTransparentBlack) {
    Scene scene = plane(-0.1f, 0.9f, 0.4f);
    scene.uniforms.noiseVisible = 0;
    scene.uniforms.linesVisible = 1;
    scene.uniforms.linesAlpha = 0;
    EXPECT_THAT(GlslBench::shared().draw(scene, 16, 16).texels, testing::Each(Texel{0, 0, 0, 0}));
}

}  // namespace
}  // namespace flumo::test
