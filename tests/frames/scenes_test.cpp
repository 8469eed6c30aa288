// Whole frames against double precision, over sizes, depths, layers, placement and every mode.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/frames/expected_frame.h"
#include "tests/frames/looks.h"

namespace flumo::test {
namespace {

using enum Section;
using host::Depth;
using host::FrameRequest;

// A plane is exact; noise and colours of a ramp carry single precision through a few dozen steps.
constexpr double kTolerance = 1e-4;
// Line edges lie a distance over a slope away: both are known to 1e-7, slopes go down to 0.004.
constexpr double kLineTolerance = 2e-4;
// The permutation behind the smoke takes remainders of large products.
constexpr double kSmokeTolerance = 2e-3;

constexpr int kWidth = 48;
constexpr int kHeight = 30;

FrameRequest sized(int width, int height, Depth depth = Depth::k32) {
    return {.width = width, .height = height, .depth = depth};
}

void expect_frame(const std::string& name, const Look& look, double tolerance = kTolerance,
                  const FrameRequest& request = sized(kWidth, kHeight)) {
    const Shot shot{look, request};
    compare_with_expected(name, shot, shoot(shot), tolerance);
}

constexpr Depth kDepths[] = {Depth::k8, Depth::k16, Depth::k32};

std::string text(Depth depth) {
    return std::to_string(static_cast<int>(depth)) + " bits";
}

TEST(Scenes, SizesAndDepths) {
    for (const auto& [width, height] : {std::pair(1, 1), {3, 2}, {97, 61}, {640, 360}}) {
        for (const Depth depth : kDepths) {
            expect_frame(std::to_string(width) + " x " + std::to_string(height) + ", " + text(depth), fluid(),
                         kTolerance, sized(width, height, depth));
        }
    }
    expect_frame("default look", {}, kTolerance, sized(97, 61, Depth::k16));
}

TEST(Scenes, Generators) {
    for (const int complexity : {1, 4, 23}) {
        const std::string detail = ", complexity " + std::to_string(complexity);
        const Look look = with(fluid(), {{Complexity, complexity}, {Scale, 60}, {Evolution, 40}});
        expect_frame("smoke" + detail, with(look, {{NoiseType, 3}}), kSmokeTolerance);
        expect_frame("worley" + detail, with(look, {{NoiseType, 4}}));
    }
}

// One factor brings all layers to scale, that of the frame's depth, whatever their own.
TEST(Scenes, LayersOfOtherSizesAndDepths) {
    for (const Depth frame : kDepths) {
        for (const Depth layer : kDepths) {
            expect_frame(text(layer) + " in " + text(frame),
                         with(fluid(), {{Layer1, colourful_layer(61, 7, layer)},
                                        {Layer2, colourful_layer(5, 90, layer)},
                                        {Layer2Mult, 0.4},
                                        {AlphaTreshold, 30}}),
                         kTolerance, sized(kWidth, kHeight, frame));
            expect_frame("gradient of " + text(layer) + " in " + text(frame),
                         with(plane(kWidth, kHeight), {{Layer3, colourful_layer(33, 5, layer)},
                                                       {ColorizeMode, 2},
                                                       {Layer2Mult, frame == Depth::k16 ? 0.25 : 1}}),
                         kTolerance, sized(kWidth, kHeight, frame));
        }
    }
}

TEST(Scenes, InvertFlags) {
    for (int flags = 0; flags < 16; ++flags) {
        const auto flag = [flags](int bit) { return Setting(flags >> bit & 1); };
        expect_frame("inverted " + std::to_string(flags),
                     with(fluid(), {{Layer1, colourful_layer(24, 24, Depth::k8)},
                                    {Layer2, colourful_layer(16, 16, Depth::k32)},
                                    {AlphaTreshold, 45},
                                    {Layer1LightnessInvert, flag(0)},
                                    {Layer1AlphaInvert, flag(1)},
                                    {Layer2LightnessInvert, flag(2)},
                                    {Layer2AlphaInvert, flag(3)}}));
    }
}

TEST(Scenes, PartialRequests) {
    for (const PF_LRect& region : {PF_LRect{10, 20, 41, 33}, {0, 0, 3, 60}, {95, 59, 96, 60}}) {
        FrameRequest request = sized(96, 60);
        request.region = region;
        for (const auto& [name, look] :
             {std::pair("part of noise", fluid()), {"part of lines", lined_plane(96, 60)}}) {
            const Shot shot{look, request};
            const host::World frame = shoot(shot);
            EXPECT_EQ(frame.width(), region.right - region.left);
            EXPECT_EQ(frame.height(), region.bottom - region.top);
            compare_with_expected(name, shot, frame, kLineTolerance);
        }
    }
}

TEST(Scenes, LowerResolutions) {
    for (const auto& [x, y] : {std::pair(2u, 2u), {3u, 3u}, {2u, 1u}}) {
        FrameRequest request = sized(96, 60);
        request.downsample_x = {1, x};
        request.downsample_y = {1, y};
        const std::string name = "1/" + std::to_string(x) + " by 1/" + std::to_string(y);
        expect_frame("noise at " + name, fluid(), kTolerance, request);
        expect_frame("lines at " + name, lined_plane(96 / static_cast<int>(x), 60 / static_cast<int>(y)),
                     kLineTolerance, request);
    }
}

TEST(Scenes, ColorizeModesWithAndWithoutTheirLayer) {
    for (int mode = 1; mode <= 4; ++mode) {
        for (const host::Layer& layer : {host::Layer(), colourful_layer(40, 21, Depth::k8)}) {
            for (const int loop : {0, 1}) {
                expect_frame(
                    "mode " + std::to_string(mode) + (layer ? ", layer" : "") + (loop ? ", loop" : ""),
                    with(plane(kWidth, kHeight), {{ColorizeMode, mode},
                                                  {Layer3, layer},
                                                  {NoiseGradientLoop, loop},
                                                  {ReflectionScale, 0.6}}));
            }
        }
    }
}

// The lines' cuts test the height before its offset.
TEST(Scenes, Cuts) {
    for (int cuts = 1; cuts < 4; ++cuts) {
        for (const int feather : {0, 30}) {
            const std::string name = "cuts " + std::to_string(cuts) + ", feather " + std::to_string(feather);
            expect_frame("noise " + name,
                         with(plane(kWidth, kHeight), {{NoiseBottomCroppingEnabled, cuts & 1},
                                                       {NoiseBottomCroppingThreshold, 21},
                                                       {NoiseBottomCroppingFeather, feather},
                                                       {NoiseTopCroppingEnabled, cuts >> 1},
                                                       {NoiseTopCroppingThreshold, 87},
                                                       {NoiseTopCroppingFeather, feather}}));
            expect_frame("lines " + name,
                         with(lined_plane(kWidth, kHeight), {{LinesBottomCroppingEnabled, cuts & 1},
                                                             {LinesBottomCroppingThreshold, 21},
                                                             {LinesBottomCroppingFeather, feather},
                                                             {LinesTopCroppingEnabled, cuts >> 1},
                                                             {LinesTopCroppingThreshold, 87},
                                                             {LinesTopCroppingFeather, feather},
                                                             {LinesOffset, 30}}),
                         kLineTolerance);
        }
    }
}

TEST(Scenes, LineBlendModesOverNoiseAndOverNothing) {
    for (int mode = 1; mode <= 3; ++mode) {
        for (const int noise : {1, 0}) {
            expect_frame("blend " + std::to_string(mode) + (noise ? " over noise" : " over nothing"),
                         with(lined_plane(kWidth, kHeight), {{LinesBlendMode, mode},
                                                             {NoiseVisible, noise},
                                                             {LinesAlpha, 60},
                                                             {NoiseTopCroppingEnabled, 1},
                                                             {NoiseTopCroppingThreshold, 90},
                                                             {NoiseTopCroppingFeather, 60}}),
                         kLineTolerance);
        }
    }
}

TEST(Scenes, Evolution) {
    for (const int type : {1, 4}) {
        for (const int loop : {0, 1}) {
            for (const int evolution : {0, 360, -90}) {
                expect_frame("type " + std::to_string(type) + (loop ? ", loop at " : " at ") +
                                 std::to_string(evolution),
                             with(fluid(), {{NoiseType, type},
                                            {Speed, type == 4 ? 400 : 30},
                                            {LoopEvolution, loop},
                                            {Evolution, evolution}}));
            }
        }
    }
}

// The jitter follows the gradient's wrap and may leave it.
TEST(Scenes, Seeds) {
    for (const int seed : {0, 1, 77, 100000}) {
        expect_frame("seed " + std::to_string(seed),
                     with(fluid(), {{GradientRandomizeAmplitude, 15}, {NoiseGradientLoop, 1}, {Seed, seed}}));
    }
}

TEST(Scenes, LineCounts) {
    for (const auto& [count, width] : {std::pair(1, 9), {4, 5}, {1000, 0}}) {
        expect_frame(std::to_string(count) + " lines",
                     with(lined_plane(24, 14), {{LinesCount, count}, {LineWidth, width}, {LinesAlpha, 50}}),
                     kLineTolerance, sized(24, 14));
    }
}

void expect_numbers(const host::World& frame) {
    for (int i = 0; i < frame.width() * frame.height(); ++i)
        for (const float channel : frame.rgba(i % frame.width(), i / frame.width()))
            ASSERT_TRUE(std::isfinite(channel)) << i;
}

// Values that have no meaning of their own: the frame comes, and holds numbers.
TEST(Scenes, MeaninglessValuesStillGiveAFrame) {
    const Look looks[] = {
        {{NoiseType, 5}},
        {{NoiseType, 4}, {Complexity, 0}},
        {{NoiseType, 2}, {Complexity, 0}},
        {{LinesVisible, 1}, {LinesAlphaNoiseType, 5}},
        {{OffsetX, 1e6}, {OffsetY, -1e6}, {NoiseType, 3}},
    };
    for (const Look& look : looks)
        expect_numbers(shoot({look, sized(kWidth, kHeight)}));
    for (const Section scale : {Scale, ScaleX, ScaleY}) {
        for (int type = 1; type <= 4; ++type) {
            const Look look = {{scale, 0}, {NoiseType, type}};
            EXPECT_EQ(shoot({look, sized(8, 8)}).width(), 8) << "no more is known of an infinite scale";
        }
    }
}

// A flat field has no line, not even at a line's own height, and nothing over nothing is transparent black.
TEST(Scenes, FlatFieldsShowNoLine) {
    const host::Layer empty = flat_layer({0, 0, 0, 0});
    for (const int brightness : {20, 40, 50, 0, 100}) {  // lines lie at 20, 40, 60 and 80
        const Look flat = {{NoiseContrast, 0}, {NoiseBrightness, brightness}, {Layer2, empty}};
        for (int mode = 1; mode <= 3; ++mode) {
            const Look lines = with(flat, {{LinesVisible, 1}, {LinesBlendMode, mode}});
            EXPECT_TRUE(shoot({flat, sized(9, 5)}).same_picture(shoot({lines, sized(9, 5)}))) << brightness;
            const host::World bare = shoot({with(lines, {{NoiseVisible, 0}}), sized(9, 5)});
            EXPECT_TRUE(bare.same_picture(host::World(9, 5, Depth::k32))) << brightness;
        }
    }
}

}  // namespace
}  // namespace flumo::test
