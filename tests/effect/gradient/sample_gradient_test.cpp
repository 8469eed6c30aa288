#include "effect/gradient/value/sample_gradient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>

#include "tests/effect/gradient/random_gradients.h"

namespace flumo::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

std::array<float, 4> Color(const GradientStopMap& stops, float t, A_long* kind = nullptr) {
    const GradientSample sample = SampleGradient(stops, t, kind);
    return {sample.r, sample.g, sample.b, sample.a};
}

std::array<float, 4> Color(const GradientStop& stop) {
    return {stop.r, stop.g, stop.b, stop.a};
}

struct SampleCase {
    const char* promise;
    GradientStopMap stops;
    float t;
    float red;
    A_long kind;
};

TEST(SampleGradient, GivesTheColorAndTheKindOfANewStop) {
    const GradientStop linear{kStopLinear, 0, 0, 0, 1}, sin{kStopSin, 0, 0, 0, 1},
        edge{kStopEdge, 0, 0, 0, 1};
    const GradientStop odd{7, 1, 0, 0, 1}, red{kStopEdge, 1, 0, 0, 1};
    const SampleCase cases[] = {
        {"no stops: black", {}, 0.5F, 0, kStopSin},
        {"one stop, on its left", {{0.3F, red}}, 0.1F, 1, kStopEdge},
        {"one stop, on its right", {{0.3F, odd}}, 0.9F, 1, 7},
        {"before all stops", {{0.25F, odd}, {0.75F, edge}}, 0.1F, 1, 7},
        {"at the last stop", {{0.25F, edge}, {0.75F, odd}}, 0.75F, 1, 7},
        {"linear", {{0, linear}, {1, red}}, 0.25F, 0.25F, kStopSin},
        {"an unknown kind blends as linear", {{0, {9, 0, 0, 0, 1}}, {1, red}}, 0.25F, 0.25F, kStopSin},
        {"sin, a quarter", {{0, sin}, {1, red}}, 0.25F, 0.17751263F, kStopSin},
        {"sin, the middle", {{0, sin}, {1, red}}, 0.5F, 0.5F, kStopSin},
        {"sin, its start", {{0, sin}, {1, red}}, 0, 0, kStopSin},
        {"edge holds", {{0, edge}, {1, red}}, 0.9999F, 0, kStopEdge},
        {"the right segment counts", {{0, edge}, {0.5F, {0, 1, 0, 0, 1}}, {1, edge}}, 0.5F, 1, kStopSin},
        {"a NaN beside t: black", {{0, red}, {kNan, red}}, 0.5F, 0, kStopSin},
    };
    for (const SampleCase& c : cases) {
        SCOPED_TRACE(c.promise);
        A_long kind = -5;
        EXPECT_FLOAT_EQ(Color(c.stops, c.t, &kind)[0], c.red);
        EXPECT_EQ(kind, c.kind);
    }
}

// The largest difference between two colours.
float Distance(const std::array<float, 4>& a, const std::array<float, 4>& b) {
    float largest = 0.0F;
    for (size_t i = 0; i < 4; ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

TEST(SampleGradient, MeetsEveryStopAndJumpsOnlyAtEdges) {
    constexpr float kStep = 1.0F / (1 << 20);
    // Twice the steepest ramp: colours 2 apart within 1/64, sin at 1.4 times the straight slope.
    constexpr float kContinuous = 2.0F * 2.0F * 64.0F * 1.4F * kStep;
    ForRandomGradients([&](const GradientStopMap& stops, std::mt19937&) {
        for (auto stop = stops.begin(); stop != stops.end(); ++stop) {
            EXPECT_EQ(Color(stops, stop->first), Color(stop->second));
            EXPECT_LT(Distance(Color(stops, stop->first + kStep), Color(stop->second)), kContinuous);
            const auto before = stop == stops.begin() ? stop : std::prev(stop);
            const bool jumps = stop != before && before->second.kind == kStopEdge;
            EXPECT_LT(Distance(Color(stops, stop->first - kStep), Color((jumps ? before : stop)->second)),
                      kContinuous);
        }
    });
}

}  // namespace
}  // namespace flumo::test
