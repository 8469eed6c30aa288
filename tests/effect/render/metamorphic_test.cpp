// What must hold between two frames, whatever each of them looks like.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/effect/render/comparison.h"
#include "tests/effect/render/looks.h"

namespace flumo::test {
namespace {

using enum Section;
using host::Depth;
using host::World;

constexpr int kWidth = 48;
constexpr int kHeight = 30;

World shot_of(const Look& look, Depth depth = Depth::k32) {
    return shoot({look, {.width = kWidth, .height = kHeight, .depth = depth}});
}

// Compares `got` with the part of `wanted` that starts at (left, top), leaving out `margin` pixels on all
// sides.
void expect_alike(const std::string& name, const World& got, const World& wanted, double tolerance,
                  int left = 0, int top = 0, int margin = 0) {
    Comparison comparison(name, tolerance);
    for (int y = margin; y < got.height() - margin; ++y) {
        for (int x = margin; x < got.width() - margin; ++x) {
            const auto here = got.rgba(x, y);
            const auto there = wanted.rgba(x + left, y + top);
            for (size_t c = 0; c < 4; ++c)
                comparison.add(here[c], there[c],
                               [&] { return std::to_string(x) + ", " + std::to_string(y); });
        }
    }
}

const char* const kNoises[] = {"fluid", "voronoi", "smoke", "worley"};

Look noise(int type) {
    return with(fluid(), {{NoiseType, type}, {Speed, 40}});
}

TEST(Metamorphic, WholeTurnsOfALoopedEvolutionAreOneFrame) {
    for (int type = 1; type <= 4; ++type) {
        const Look looped = with(noise(type), {{LoopEvolution, 1}});
        const auto at = [&](double degrees) { return shot_of(with(looped, {{Evolution, degrees}})); };
        EXPECT_TRUE(at(0).same_picture(at(360))) << kNoises[type - 1];
        EXPECT_TRUE(at(0).same_picture(at(-720))) << kNoises[type - 1];
        EXPECT_TRUE(at(-90).same_picture(at(270))) << kNoises[type - 1];
        EXPECT_TRUE(at(0).same_picture(shot_of(noise(type)))) << kNoises[type - 1] << " starts elsewhere";
        EXPECT_FALSE(at(0).same_picture(at(90))) << kNoises[type - 1] << " stands still";
    }
}

// Only coordinates differ, in their last bits. Voronoi's cells hang on a sine's last bit only where whole
// numbers differ, which they do not; a line's edge is a distance over a difference of neighbours.
TEST(Metamorphic, ARequestedRectangleIsTheCropOfTheFullFrame) {
    const PF_LRect region{11, 7, 36, 28};
    const auto expect_crop = [&](const std::string& name, const Look& look, double tolerance) {
        Shot part{look, {.width = kWidth, .height = kHeight, .depth = Depth::k32}};
        part.request.region = region;
        expect_alike(name, shoot(part), shot_of(look), tolerance, region.left, region.top, 1);
    };
    for (int type = 1; type <= 4; ++type)
        expect_crop(std::string("crop of ") + kNoises[type - 1], noise(type), 2e-5);
    expect_crop("crop of lines", with(noise(2), {{LinesVisible, 1}}), 1e-4);
}

TEST(Metamorphic, LowerDepthsAreTheRoundedFloatFrame) {
    const Look look = with(
        noise(4), {{NoiseBottomCroppingThreshold, 40}, {NoiseBottomCroppingFeather, 40}, {LinesVisible, 1}});
    const World floats = shot_of(look);
    expect_alike("8 bits", shot_of(look, Depth::k8), floats, 0.51 / 255);
    expect_alike("16 bits", shot_of(look, Depth::k16), floats, 0.51 / 32768);
}

// A ramp has 2048 texels, and shifted stops fall between others: colours move by up to a texel of slope 3.
TEST(Metamorphic, AGradientOffsetIsAShiftedRamp) {
    const Look inside = with(noise(1), {{NoiseContrast, 70}});
    expect_alike("gradient offset", shot_of(with(inside, {{NoiseGradientOffset, 20}})),
                 shot_of(with(inside, {{Gradient, colourful(-0.2F)}})), 3.0 / 2048);
}

TEST(Metamorphic, BrightnessMovesTheFieldByAConstant) {
    for (int type = 1; type <= 4; ++type) {
        const Look look = with(noise(type), {{NoiseBottomCroppingEnabled, 0}});
        expect_alike(std::string("brightness of ") + kNoises[type - 1],
                     shot_of(with(look, {{NoiseBrightness, -25}})),
                     shot_of(with(look, {{NoiseGradientOffset, -25}})), 1e-5);
    }
    const Look lines = with(noise(2), {{NoiseVisible, 0}, {LinesVisible, 1}});
    expect_alike("brightness of lines", shot_of(with(lines, {{NoiseBrightness, 25}})),
                 shot_of(with(lines, {{LinesOffset, 25}})), 1e-5);
}

// One period is 1, an offset of 1000; in time it is an evolution whose product with speed is ten.
TEST(Metamorphic, WorleyTilesWithItsPeriod) {
    const Look look = with(noise(4), {{Complexity, 3}, {Speed, 100}});
    const World base = shot_of(look);
    for (const auto& [control, period] : {std::pair(OffsetX, 1000), {OffsetY, -2000}, {Evolution, 100}})
        expect_alike("worley, one period of " + std::string(ControlOf(control).id),
                     shot_of(with(look, {{control, period}})), base, 1e-5);
    EXPECT_FALSE(shot_of(with(look, {{OffsetX, 500}})).same_picture(base));
}

TEST(Metamorphic, NeutralLayersChangeNothing) {
    for (const Depth depth : kDepths) {
        const Look look = with(noise(2), {{LinesVisible, 1}});
        const Look neutral = {{Layer1, flat_layer({1, 1, 1, 1}, depth)},
                              {Layer2, flat_layer({0, 0, 0, 1}, depth)},
                              {Layer3, flat_layer({1, 0, 0, 1}, depth)}};
        expect_alike("neutral layers", shot_of(with(look, neutral), depth), shot_of(look, depth), 2e-6);
    }
}

TEST(Metamorphic, LinesOfNoAlphaChangeNothing) {
    const Look look =
        with(noise(3),
             {{NoiseTopCroppingEnabled, 1}, {NoiseTopCroppingThreshold, 60}, {NoiseTopCroppingFeather, 60}});
    for (int mode = 1; mode <= 3; ++mode) {
        expect_alike("lines of no alpha, blend " + std::to_string(mode),
                     shot_of(with(look, {{LinesVisible, 1}, {LinesBlendMode, mode}, {LinesAlpha, 0}})),
                     shot_of(look), 1e-5);
    }
}

// Mean of each `factor` x `factor` pixels, on premultiplied colour.
World reduced(const World& frame, int factor) {
    World small(frame.width() / factor, frame.height() / factor, Depth::k32);
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            host::Rgba sum{};
            for (int i = 0; i < factor * factor; ++i) {
                const auto [r, g, b, a] = frame.rgba(x * factor + i % factor, y * factor + i / factor);
                sum = {sum[0] + r * a, sum[1] + g * a, sum[2] + b * a, sum[3] + a};
            }
            const float pixels = static_cast<float>(factor * factor);
            small.set_rgba(x, y, {sum[0] / sum[3], sum[1] / sum[3], sum[2] / sum[3], sum[3] / pixels});
        }
    }
    return small;
}

// Both are means over about the same area, with other weights: what remains is the field's curvature.
TEST(Metamorphic, LowerResolutionsAreTheReducedFullFrame) {
    const Look gentle = with(fluid(), {{Scale, 150}});
    const World full = shot_of(gentle);
    for (const unsigned factor : {2u, 3u}) {
        Shot small{gentle, {.width = kWidth, .height = kHeight, .depth = Depth::k32}};
        small.request.downsample_x = small.request.downsample_y = {1, factor};
        expect_alike("1/" + std::to_string(factor) + " resolution", shoot(small),
                     reduced(full, static_cast<int>(factor)), 0.02);
    }
}

}  // namespace
}  // namespace flumo::test
