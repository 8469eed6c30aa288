#include "effect/gradient/value/compare_gradient.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/effect/gradient/random_gradients.h"

namespace flumo::test {
namespace {

TEST(GradientsMatch, IsReflexiveAndSeesEveryField) {
    ForRandomGradients([](const GradientStopMap& stops, std::mt19937& random) {
        EXPECT_TRUE(GradientsMatch(stops, stops));
        if (stops.empty()) return;
        const auto change = [&](auto edit, bool matches) {
            GradientStopMap edited = stops;
            edit(std::next(edited.begin(), static_cast<long>(random() % edited.size()))->second);
            EXPECT_EQ(GradientsMatch(stops, edited), matches);
            EXPECT_EQ(GradientsMatch(edited, stops), matches);
        };
        change([](GradientStop& stop) { ++stop.kind; }, false);
        for (float GradientStop::*channel :
             {&GradientStop::r, &GradientStop::g, &GradientStop::b, &GradientStop::a}) {
            change([&](GradientStop& stop) { stop.*channel += 0.0000995F; }, true);
            change([&](GradientStop& stop) { stop.*channel -= 0.0001005F; }, false);
        }
    });
}

TEST(GradientsMatch, HasNoToleranceInPositions) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(GradientsMatch({{0.5F, {}}}, {{0.50000006F, {}}}));
    EXPECT_FALSE(GradientsMatch({{0.5F, {}}}, {{0.5F, {}}, {0.6F, {}}}));
    EXPECT_FALSE(GradientsMatch({{0.5F, {}}}, {{0.6F, {}}}));
    EXPECT_TRUE(GradientsMatch({{nan, {0, nan, nan, nan, nan}}}, {{nan, {0, nan, nan, nan, nan}}}));
}

}  // namespace
}  // namespace flumo::test
