// Every control, in a scene where it matters: the frame must move away from the one without the change, and
// to where double precision says.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "tests/image/frame_twin.h"
#include "tests/image/looks.h"

namespace flumo::test {
namespace {

using enum Section;
using host::Depth;

constexpr int kWidth = 40;
constexpr int kHeight = 24;

struct ControlCase {
    Section control;
    Setting changed;
    Look scene;
};

std::vector<ControlCase> noise_cases() {
    const Look moving = with(fluid(), {{Evolution, 100}, {Speed, 20}});
    const Look layered = with(fluid(), {{Layer1, colourful_layer(9, 9, Depth::k8)},
                                        {Layer2, colourful_layer(12, 7, Depth::k8)},
                                        {AlphaTreshold, 30}});
    return {
        {NoiseType, 4, fluid()},
        {NoiseContrast, 60, fluid()},
        {NoiseBrightness, 20, fluid()},
        {OffsetX, 300, fluid()},
        {OffsetY, 300, fluid()},
        {Evolution, 90, fluid()},
        {LoopEvolution, 1, moving},
        {Complexity, 7, fluid()},
        {Speed, 35, moving},
        {Scale, 40, fluid()},
        {ScaleX, 40, fluid()},
        {ScaleY, 40, fluid()},
        {Layer1Mult, 0.4, layered},
        {Layer1, colourful_layer(9, 9, Depth::k8), fluid()},
        {Layer1LightnessInvert, 1, layered},
        {Layer1AlphaInvert, 1, layered},
        {AlphaTreshold, 60, layered},
        {Layer2Mult, -0.6, layered},
        {Layer2, colourful_layer(9, 9, Depth::k8), fluid()},
        {Layer2LightnessInvert, 1, layered},
        {Layer2AlphaInvert, 1, layered},
    };
}

std::vector<ControlCase> colour_cases() {
    const Look base = plane(kWidth, kHeight);
    const Look cut = with(base, {{NoiseBottomCroppingEnabled, 1},
                                 {NoiseBottomCroppingThreshold, 30},
                                 {NoiseTopCroppingEnabled, 1},
                                 {NoiseTopCroppingThreshold, 90}});
    const Look bumps = with(base, {{ColorizeMode, 3}});
    return {
        {NoiseVisible, 0, lined_plane(kWidth, kHeight)},
        {ColorizeMode, 3, base},
        {Gradient, Stops{{0, 1, 1, 0}, {1, 0, 0, 1, 1}}, base},
        {NoiseBottomCroppingEnabled, 0, cut},
        {NoiseBottomCroppingThreshold, 53, cut},
        {NoiseBottomCroppingFeather, 25, cut},
        {NoiseTopCroppingEnabled, 0, cut},
        {NoiseTopCroppingThreshold, 63, cut},
        {NoiseTopCroppingFeather, 25, cut},
        {Layer3, colourful_layer(30, 30, Depth::k8), bumps},
        {NoiseGradientOffset, 30, base},
        {NoiseGradientScale, 40, base},
        {NoiseGradientScaleBase, 70, with(base, {{NoiseGradientScale, 40}})},
        {NoiseGradientLoop, 1, with(base, {{NoiseGradientScale, 250}})},
        {GradientRandomizeAmplitude, 20, base},
        {GradientRandomizeFrequency, 30, with(base, {{GradientRandomizeAmplitude, 20}})},
        {ReflectionScale, 0.3, bumps},
    };
}

std::vector<ControlCase> line_cases() {
    const Look lines = lined_plane(kWidth, kHeight);
    const Look cut = with(lines, {{LinesBottomCroppingEnabled, 1},
                                  {LinesBottomCroppingThreshold, 30},
                                  {LinesTopCroppingEnabled, 1},
                                  {LinesTopCroppingThreshold, 73}});
    const Look jittered = with(lines, {{LinesRandomize, 90}});
    return {
        {LinesVisible, 1, plane(kWidth, kHeight)},
        {LinesBlendMode, 3, lines},
        {LinesCount, 7, lines},
        {LineWidth, 9, lines},
        {LinesOffset, 33, lines},
        {LinesLoop, 1, with(lines, {{LinesOffset, 60}})},
        {LinesBottomCroppingEnabled, 0, cut},
        {LinesBottomCroppingThreshold, 53, cut},
        {LinesBottomCroppingFeather, 35, cut},
        {LinesTopCroppingEnabled, 0, cut},
        {LinesTopCroppingThreshold, 53, cut},
        {LinesTopCroppingFeather, 35, cut},
        {LinesGradient, Stops{{0, 0, 0, 0}, {1, 1, 0, 0, 2}}, lines},
        {LinesGradientOffset, 40, lines},
        {LinesGradientScale, -60, lines},
        {LinesGradientScaleBase, 70, with(lines, {{LinesGradientScale, 40}})},
        {LinesGradientLoop, 1, with(lines, {{LinesGradientScale, 230}})},
        {LinesAlpha, 40, lines},
        {LinesRandomize, 90, lines},
        {WidthRandomize, 150, lines},
        {GradientRandomize, 30, lines},
        {Seed, 5, jittered},
    };
}

// The mask takes whole stretches of the lines away; pixels at its border are left out of the comparison.
std::vector<ControlCase> mask_cases() {
    const Look masked = with(lined_plane(kWidth, kHeight), {{Complexity, 7},  // what smoke and cells follow
                                                            {LineWidth, 12},
                                                            {LinesAlphaThreshold, 50},
                                                            {LinesAlphaNoiseEvolution, 70},
                                                            {LinesAlphaNoiseScale, 300}});
    const Look per_line = with(masked, {{LinesAlphaNoiseScale, 100}});
    return {
        {LinesAlphaNoiseType, 4, masked},
        {LinesAlphaThreshold, 80, masked},
        {LinesAlphaNoiseOffsetX, 400, masked},
        {LinesAlphaNoiseOffsetY, 400, masked},
        {LinesAlphaNoiseEvolution, 200, masked},
        {LinesAlphaNoiseLoopEvolution, 1, with(masked, {{LinesAlphaNoiseSpeed, 40}})},
        {LinesAlphaNoiseComplexity, 2, masked},
        {LinesAlphaNoiseSpeed, 45, masked},
        {LinesAlphaNoiseScale, 40, masked},
        {LinesAlphaNoiseScaleX, 30, masked},
        {LinesAlphaNoiseScaleY, 30, masked},
        {AlphaRandomize, 2, per_line},
    };
}

double mean_difference(const host::World& a, const host::World& b) {
    double sum = 0;
    for (int i = 0; i < a.width() * a.height(); ++i) {
        const auto left = a.rgba(i % a.width(), i / a.width());
        const auto right = b.rgba(i % a.width(), i / a.width());
        for (size_t c = 0; c < 4; ++c)
            sum += std::fabs(left[c] - right[c]);
    }
    return sum / (4.0 * a.width() * a.height());
}

void expect_control_matters(const ControlCase& row) {
    const std::string name(ControlOf(row.control).id);
    const host::FrameRequest request{.width = kWidth, .height = kHeight, .depth = Depth::k32};
    const host::World frame = expect_as_twin(name, {with(row.scene, {{row.control, row.changed}}), request});
    EXPECT_GT(mean_difference(frame, shoot({row.scene, request})), 0.01) << name << " changes nothing";
}

constexpr auto kTables = {noise_cases, colour_cases, line_cases, mask_cases};

TEST(Controls, MoveTheFrameToWhereTheyShould) {
    for (const auto& table : kTables)
        for (const ControlCase& row : table())
            expect_control_matters(row);
}

TEST(Controls, AreEachNamedOnce) {
    std::multiset<std::string_view> named;
    std::multiset<std::string_view> all;
    for (const auto& table : kTables)
        for (const ControlCase& row : table())
            named.insert(ControlOf(row.control).id);
    for (const Control& control : kControls) {
        if (control.kind != ControlKind::GroupStart && control.kind != ControlKind::GroupEnd)
            all.insert(control.id);
    }
    EXPECT_EQ(named, all);
    EXPECT_EQ(all.size(), 72u);
}

}  // namespace
}  // namespace flumo::test
