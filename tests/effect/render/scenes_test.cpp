// Whole frames against double precision, over sizes, depths, layers, placement and every mode.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/effect/render/comparison.h"
#include "tests/effect/render/frame_twin.h"
#include "tests/effect/render/looks.h"

namespace flumo::test {
namespace {

using enum Section;
using host::Depth;
using host::FrameRequest;

constexpr int kWidth = 48;
constexpr int kHeight = 30;

FrameRequest sized(int width, int height, Depth depth = Depth::k32) {
    return {.width = width, .height = height, .depth = depth};
}

// Measured on llvmpipe and softpipe. Single precision through a few dozen steps of noise and ramp: 7e-6. Line
// edges lie a distance over a slope away, both known to 1e-7, and slopes go down to 0.004: 1.7e-5. The
// permutation that smoke uses takes remainders of large products: 3e-4.
double tolerance_of(const Look& look) {
    const auto type = look.find(NoiseType);
    if (type != look.end() && std::get<double>(type->second.value) == 3) return 1e-3;
    return look.contains(LinesVisible) ? 5e-5 : 2e-5;
}

/// Renders, and compares the frame at about 4000 places with its twin. Colours are weighted by their alpha,
/// and half a step of the depth is allowed on top of what the drivers' single precision costs.
void expect_frame(const std::string& name, const Look& look,
                  const FrameRequest& request = sized(kWidth, kHeight)) {
    const FrameCase frame_case{look, request};
    const host::World frame = render_checked(frame_case);
    const int pixels = frame.width() * frame.height();
    // A stride without a common divisor with widths here, so that all columns have their turn.
    const int stride = pixels > 4000 ? 83 : 1;
    // A delivered channel ends where its type does.
    const auto [top, step] = frame.depth() == Depth::k8    ? std::pair(1.0, 1.0 / 255)
                             : frame.depth() == Depth::k16 ? std::pair(65535.0 / 32768, 1.0 / 32768)
                                                           : std::pair(HUGE_VAL, 0.0);
    twin::FrameTwin twin(frame_case, frame.shape());
    Comparison comparison(name, tolerance_of(look) + 0.501 * step);
    int undecided = 0;
    for (int i = 0; i < pixels; i += stride) {
        const int x = i % frame.width();
        const int y = i / frame.width();
        const auto wanted = twin.pixel(x, y);
        undecided += !wanted;
        if (!wanted) continue;
        const auto got = frame.rgba(x, y);
        const double channels[] = {wanted->r, wanted->g, wanted->b, wanted->a};
        for (size_t c = 0; c < 4; ++c) {
            const double weight = c < 3 ? std::min(wanted->a, 1.0) : 1.0;
            comparison.add(got[c] * weight, std::min(channels[c], top) * weight, [=] {
                return "channel " + std::to_string(c) + " of " + std::to_string(x) + ", " + std::to_string(y);
            });
        }
    }
    EXPECT_LE(undecided, pixels / stride / 6) << name;
}

Look noise(const Look& changes) {
    return with(fluid(), changes);
}
Look colour(const Look& changes) {
    return with(plane(kWidth, kHeight), changes);
}
Look lines(const Look& changes) {
    return with(lined_plane(kWidth, kHeight), changes);
}

std::string text(Depth depth) {
    return std::to_string(static_cast<int>(depth)) + " bits";
}

TEST(Scenes, SizesAndDepths) {
    for (const auto& [width, height] : {std::pair(1, 1), {3, 2}, {97, 61}, {640, 360}}) {
        for (const Depth depth : kDepths) {
            expect_frame(std::to_string(width) + " x " + std::to_string(height) + ", " + text(depth), fluid(),
                         sized(width, height, depth));
        }
    }
    expect_frame("default look", {}, sized(97, 61, Depth::k16));
}

// One factor brings all layers to scale, that of the frame's depth, whatever their own.
TEST(Scenes, LayersOfOtherSizesAndDepths) {
    for (const Depth frame : kDepths) {
        for (const Depth layer : kDepths) {
            expect_frame(text(layer) + " in " + text(frame),
                         noise({{Layer1, colourful_layer(61, 7, layer)},
                                {Layer1LightnessInvert, 1},
                                {Layer2, colourful_layer(5, 90, layer)},
                                {Layer2Mult, 0.4},
                                {AlphaTreshold, 30}}),
                         sized(kWidth, kHeight, frame));
            expect_frame("gradient of " + text(layer) + " in " + text(frame),
                         colour({{Layer3, colourful_layer(33, 5, layer)},
                                 {ColorizeMode, 2},
                                 {Layer2Mult, frame == Depth::k16 ? 0.25 : 1}}),
                         sized(kWidth, kHeight, frame));
        }
    }
}

TEST(Scenes, PartialRequests) {
    for (const PF_LRect& region : {PF_LRect{10, 20, 41, 33}, {0, 0, 3, 60}, {95, 59, 96, 60}}) {
        FrameRequest request = sized(96, 60);
        request.region = region;
        expect_frame("part of lines", lined_plane(96, 60), request);
        expect_frame("part of noise", fluid(), request);
    }
}

TEST(Scenes, LowerResolutions) {
    for (const auto& [x, y] : {std::pair(2u, 2u), {3u, 3u}, {2u, 1u}}) {
        FrameRequest request = sized(97, 61);  // neither is a whole number of pixels then
        request.downsample_x = {1, x};
        request.downsample_y = {1, y};
        const std::string name = "1/" + std::to_string(x) + " by 1/" + std::to_string(y);
        expect_frame("noise at " + name, fluid(), request);
        request.width = 96;
        request.height = 60;
        expect_frame("lines at " + name, lined_plane(96 / static_cast<int>(x), 60 / static_cast<int>(y)),
                     request);
    }
}

TEST(Scenes, Heights) {
    for (const int complexity : {1, 4, 23}) {
        const std::string detail = ", complexity " + std::to_string(complexity);
        const Look look = noise({{Complexity, complexity}, {Scale, 60}, {Evolution, 40}});
        expect_frame("voronoi" + detail, with(look, {{NoiseType, 2}}));
        expect_frame("smoke" + detail, with(look, {{NoiseType, 3}}));
        expect_frame("worley" + detail, with(look, {{NoiseType, 4}}));
    }
    for (int type = 1; type <= kNoiseGeneratorCount; ++type) {
        if (type == 3) continue;              // its seams move with time
        for (const int loop : {0, 1, 257}) {  // of a switch that is a byte 257 leaves 1
            for (const int evolution : {0, 360, -90}) {
                expect_frame("type " + std::to_string(type) + (loop ? ", loop at " : " at ") +
                                 std::to_string(evolution),
                             noise({{NoiseType, type},
                                    {Speed, type == 4 ? 400 : 30},
                                    {LoopEvolution, loop},
                                    {Evolution, evolution}}));
            }
        }
    }
}

TEST(Scenes, InvertFlags) {
    for (int flags = 0; flags < 16; ++flags) {
        const auto flag = [flags](int bit) { return Setting(flags >> bit & 1); };
        expect_frame("inverted " + std::to_string(flags),
                     noise({{Layer1, colourful_layer(24, 24, Depth::k8)},
                            {Layer2, colourful_layer(16, 16, Depth::k32)},
                            {AlphaTreshold, 45},
                            {NoiseBrightness, 10},
                            {Layer1LightnessInvert, flag(0)},
                            {Layer1AlphaInvert, flag(1)},
                            {Layer2LightnessInvert, flag(2)},
                            {Layer2AlphaInvert, flag(3)}}));
    }
}

TEST(Scenes, ColorizeModesWithAndWithoutTheirLayer) {
    for (int mode = 1; mode <= 5; ++mode) {
        for (const host::Layer& layer : {host::Layer(), colourful_layer(40, 21, Depth::k8)}) {
            for (const int loop : {0, 1}) {
                expect_frame(
                    "mode " + std::to_string(mode) + (layer ? ", layer" : "") + (loop ? ", loop" : ""),
                    colour({{ColorizeMode, mode},
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
            expect_frame("noise " + name, colour({{NoiseBottomCroppingEnabled, cuts & 1},
                                                  {NoiseBottomCroppingThreshold, 21},
                                                  {NoiseBottomCroppingFeather, feather},
                                                  {NoiseTopCroppingEnabled, cuts >> 1},
                                                  {NoiseTopCroppingThreshold, 87},
                                                  {NoiseTopCroppingFeather, feather}}));
            expect_frame("lines " + name, lines({{LinesBottomCroppingEnabled, cuts & 1},
                                                 {LinesBottomCroppingThreshold, 21},
                                                 {LinesBottomCroppingFeather, feather},
                                                 {LinesTopCroppingEnabled, cuts >> 1},
                                                 {LinesTopCroppingThreshold, 87},
                                                 {LinesTopCroppingFeather, feather},
                                                 {LinesOffset, 30}}));
        }
    }
}

TEST(Scenes, LineBlendModesOverNoiseAndOverNothing) {
    for (int mode = 1; mode <= 4; ++mode) {
        for (const int visible : {1, 0}) {
            expect_frame("blend " + std::to_string(mode) + (visible ? " over noise" : " over nothing"),
                         lines({{LinesBlendMode, mode},
                                {LinesGradient, Stops{{0, 1.2F, 0, 0.5F}, {1, 0, 1.1F, 2}}},
                                {NoiseVisible, visible},
                                {LinesAlpha, 60},
                                {NoiseTopCroppingEnabled, 1},
                                {NoiseTopCroppingThreshold, 90},
                                {NoiseTopCroppingFeather, 60}}));
        }
    }
}

TEST(Scenes, LineCounts) {
    for (const auto& [count, width] : {std::pair(0, 5), {1, 9}, {4, 5}, {1000, 0}}) {
        expect_frame(std::to_string(count) + " lines",
                     with(lined_plane(24, 14), {{LinesCount, count}, {LineWidth, width}, {LinesAlpha, 50}}),
                     sized(24, 14));
    }
}

std::map<std::string, Look> scenes() {
    const Look masked = lines(look("LinesAlphaThreshold=50 LinesAlphaNoiseEvolution=77 LineWidth=12"));
    return {
        {"noise moved, mirrored and upside down",
         noise(look("NoiseType=4 Complexity=3 Evolution=100 LoopEvolution=1 Speed=35 Scale=60 ScaleX=30 "
                    "ScaleY=-70 OffsetX=700 OffsetY=-2200 NoiseContrast=-150 NoiseBrightness=90"))},
        {"noise of two layers", noise({{Layer1, colourful_layer(9, 9, Depth::k8)},
                                       {Layer1Mult, 0.4},
                                       {Layer1LightnessInvert, 1},
                                       {Layer1AlphaInvert, 1},
                                       {AlphaTreshold, 30},
                                       {Layer2, colourful_layer(12, 7, Depth::k8)},
                                       {Layer2Mult, -0.6},
                                       {Layer2LightnessInvert, 1},
                                       {Layer2AlphaInvert, 1}})},
        {"bumps cut at both ends",
         colour(look("ColorizeMode=3 ReflectionScale=0.3 NoiseBottomCroppingEnabled=1 "
                     "NoiseBottomCroppingThreshold=30 NoiseBottomCroppingFeather=25 "
                     "NoiseTopCroppingEnabled=1 NoiseTopCroppingThreshold=90 NoiseTopCroppingFeather=25"))},
        {"lines alone, cut at both ends",
         lines(look("NoiseVisible=0 LinesBottomCroppingEnabled=1 LinesBottomCroppingThreshold=30 "
                    "LinesBottomCroppingFeather=35 LinesTopCroppingEnabled=1 LinesTopCroppingThreshold=73 "
                    "LinesTopCroppingFeather=35"))},
        {"gradient about a base",
         colour(look("NoiseGradientOffset=15 NoiseGradientScale=60 NoiseGradientScaleBase=40"))},
        {"gradient turned round and looped", colour(look("NoiseGradientLoop=1 NoiseGradientScale=-230"))},
        // The jitter follows the gradient's wrap and may leave it.
        {"gradient jittered after the wrap",
         colour(look("NoiseGradientLoop=1 NoiseGradientOffset=50 GradientRandomizeAmplitude=60 "
                     "GradientRandomizeFrequency=30"))},
        {"seed 1", noise(look("GradientRandomizeAmplitude=15 NoiseGradientLoop=1 Seed=1"))},
        {"seed 100000", noise(look("GradientRandomizeAmplitude=15 NoiseGradientLoop=1 Seed=100000"))},
        {"gradient of hard and eased steps", colour({{Gradient, Stops{{-0.5F, 1, 0, 0},
                                                                      {0.25F, 0, 1, 0.5F, 1},
                                                                      {0.5F, 0.5F, 0, 0, 2},
                                                                      {0.75F, 0, 0, 1, 2}}}})},
        // Only exactly 1 is on, but for the lines' loop, which any number but 0 is.
        {"switches of other numbers",
         lines(look("LoopEvolution=2 NoiseBottomCroppingEnabled=255 NoiseTopCroppingEnabled=2 "
                    "NoiseTopCroppingThreshold=50 LinesTopCroppingEnabled=3 LinesTopCroppingThreshold=50 "
                    "NoiseGradientLoop=257 LinesGradientLoop=2 LinesGradientScale=250 NoiseVisible=2 "
                    "LinesOffset=63 LinesLoop=2"))},
        {"lines over a half transparent layer", lines({{ColorizeMode, 2},
                                                       {LinesBlendMode, 3},
                                                       {Layer3, colourful_layer(24, 24, Depth::k8)},
                                                       {LinesAlpha, 50},
                                                       {LineWidth, 12}})},
        {"line gradient jittered before the wrap",
         lines(look("LinesGradientOffset=60 LinesGradientLoop=1 GradientRandomize=100 Seed=3"))},
        {"line gradient about a base",
         lines(look("LinesGradientOffset=10 LinesGradientScale=60 LinesGradientScaleBase=50"))},
        {"jittered heights and widths", lines(look("LinesRandomize=150 WidthRandomize=200 Seed=11"))},
        {"lines of no width", lines(look("LineWidth=0 WidthRandomize=200"))},
        {"masked lines",
         with(masked, look("LinesAlphaNoiseScaleX=900 LinesAlphaNoiseScaleY=500 LinesAlphaNoiseOffsetX=400 "
                           "LinesAlphaNoiseOffsetY=-300 LinesAlphaNoiseSpeed=30"))},
        {"masks that differ by line",
         with(masked, look("LinesCount=7 AlphaRandomize=10 Seed=4 LineWidth=5 LinesAlphaNoiseScale=300"))},
        {"masks by a looped noise",
         with(masked, look("LinesAlphaNoiseLoopEvolution=1 LinesAlphaNoiseEvolution=500 "
                           "LinesAlphaNoiseScale=600 LinesAlphaNoiseComplexity=2"))},
        {"masks by voronoi", with(masked, look("LinesAlphaNoiseType=2 LinesAlphaNoiseComplexity=9"))},
        // These two have the main noise's complexity, not their own.
        {"masks by smoke", with(masked, look("LinesAlphaNoiseType=3 Complexity=25 LinesAlphaThreshold=60 "
                                             "LineWidth=5 LinesAlphaNoiseScale=400"))},
        {"masks by cells", with(masked, look("LinesAlphaNoiseType=4 Complexity=7 LinesAlphaThreshold=70"))},
        {"masks by nothing", with(masked, {{LinesAlphaNoiseType, 5}})},
    };
}

TEST(Scenes, ControlsInCombination) {
    for (const auto& [name, look] : scenes())
        expect_frame(name, look);
}

// In some scene it is away from its default, and the frame is not the one without it, to a step of 255.
TEST(Scenes, HangOnEveryControl) {
    const auto frame_of = [](const Look& look) {
        return render_checked({look, sized(kWidth, kHeight, Depth::k8)});
    };
    const auto all = scenes();
    for (const Control& control : kControls) {
        if (control.kind == ControlKind::GroupStart || control.kind == ControlKind::GroupEnd) continue;
        EXPECT_TRUE(std::ranges::any_of(all, [&](const auto& scene) {
            Look without = scene.second;
            return without.erase(control.section) && !frame_of(without).same_picture(frame_of(scene.second));
        })) << control.id;
    }
}

// Values that have no meaning of their own: the frame comes, and holds numbers.
TEST(Scenes, MeaninglessValuesStillGiveAFrame) {
    const Look looks[] = {
        {{NoiseType, 5}},
        look("NoiseType=4 Complexity=0"),
        look("NoiseType=2 Complexity=0"),
        look("OffsetX=1e6 OffsetY=-1e6 NoiseType=3"),
    };
    for (const Look& look : looks) {
        const host::World frame = render_checked({look, sized(kWidth, kHeight)});
        for (int i = 0; i < kWidth * kHeight; ++i)
            for (const float channel : frame.rgba(i % kWidth, i / kWidth))
                ASSERT_TRUE(std::isfinite(channel)) << i;
    }
    for (const Section scale : {Scale, ScaleX, ScaleY}) {
        for (int type = 1; type <= kNoiseGeneratorCount; ++type)
            render_checked(
                {{{scale, 0}, {NoiseType, type}}, sized(8, 8)});  // no more is known of an infinite scale
    }
}

// No alpha is below a threshold of 0, and of a noise that is one half everywhere none is below 50 percent.
TEST(Scenes, WhatIsAtAThresholdIsNotBelowIt) {
    const Look grey = look("NoiseContrast=0 NoiseBrightness=50");
    const Look cleared = {{Layer1, flat_layer({1, 1, 1, 0})}, {AlphaTreshold, 0}, {NoiseBrightness, 50}};
    EXPECT_TRUE(render_checked({cleared, sized(9, 5)}).same_picture(render_checked({grey, sized(9, 5)})));
    const Look half = lines(look("LinesAlphaNoiseComplexity=1 LinesAlphaNoiseScale=0"));
    const host::World masked =
        render_checked({with(half, {{LinesAlphaThreshold, 50}}), sized(kWidth, kHeight)});
    EXPECT_TRUE(masked.same_picture(render_checked({half, sized(kWidth, kHeight)})));
}

// A flat field has no line, not even at a line's own height, and nothing over nothing is transparent black.
TEST(Scenes, FlatFieldsShowNoLine) {
    const host::Layer empty = flat_layer({0, 0, 0, 0});
    for (const int brightness : {20, 40, 50, 0, 100}) {  // lines lie at 20, 40, 60 and 80
        const Look flat = {{NoiseContrast, 0}, {NoiseBrightness, brightness}, {Layer2, empty}};
        for (int mode = 1; mode <= 3; ++mode) {
            const Look lined = with(flat, {{LinesVisible, 1}, {LinesBlendMode, mode}});
            EXPECT_TRUE(
                render_checked({flat, sized(9, 5)}).same_picture(render_checked({lined, sized(9, 5)})))
                << brightness;
            const host::World bare = render_checked({with(lined, {{NoiseVisible, 0}}), sized(9, 5)});
            EXPECT_TRUE(bare.same_picture(host::World(9, 5, Depth::k32))) << brightness;
        }
    }
}

}  // namespace
}  // namespace flumo::test
