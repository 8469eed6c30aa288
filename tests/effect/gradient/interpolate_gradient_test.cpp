#include "effect/gradient/value/interpolate_gradient.h"

#include <gtest/gtest.h>

#include <iterator>

#include "tests/effect/gradient/random_gradients.h"

namespace flumo::test {
namespace {

const GradientStop kRed{kStopEdge, 1, 0, 0, 0.5F};
const GradientStop kBlue{kStopLinear, 0, 0, 1, 1};
const GradientStop kGray{kStopSin, 0.5F, 0.5F, 0.5F, 0};

TEST(InterpolateGradients, AtZeroIsLeftAndAtOneIsRightWithTheLeftKinds) {
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        const GradientStopMap left = RandomGradient(random, 1 + i % 5);
        const GradientStopMap right = RandomGradient(random, 1 + i / 5 % 7);
        EXPECT_EQ(InterpolateGradients(left, right, 0.0), left);

        GradientStopMap expected = right;
        auto kind_from = left.begin();
        for (auto stop = expected.begin(); stop != expected.end(); ++stop) {
            // Surplus left stops all land on the last right one, the last of them at last.
            if (std::next(stop) == expected.end() && left.size() > right.size())
                kind_from = std::prev(left.end());
            stop->second.kind = kind_from->second.kind;
            if (std::next(kind_from) != left.end()) ++kind_from;
        }
        EXPECT_EQ(InterpolateGradients(left, right, 1.0), expected);
    }
}

TEST(InterpolateGradients, PairsStopsByOrder) {
    struct Case {
        const char* promise;
        GradientStopMap left;
        GradientStopMap right;
        double t;
        GradientStopMap result;
    };
    const GradientStopMap ends = {{0, kRed}, {1, kBlue}};
    const Case cases[] = {
        {"both empty", {}, {}, 0.5, {}},
        {"nothing on the left: kind sin",
         {},
         {{0.2F, kRed}, {0.7F, kRed}},
         0.5,
         {{0.2F, {kStopSin, 0.5F, 0, 0, 0.75F}}, {0.7F, {kStopSin, 0.5F, 0, 0, 0.75F}}}},
        {"nothing on the right", {{0.25F, kRed}}, {}, 0.5, {{0.25F, {kStopEdge, 0.5F, 0, 0, 0.75F}}}},
        {"surplus left",
         {{0, kRed}, {0.5F, kGray}, {1, kBlue}},
         {{0, kRed}},
         0.5,
         {{0, kRed},
          {0.25F, {kStopSin, 0.75F, 0.25F, 0.25F, 0.25F}},
          {0.5F, {kStopLinear, 0.5F, 0, 0.5F, 0.75F}}}},
        {"surplus right",
         {{0, kRed}},
         {{0, kBlue}, {0.5F, kGray}},
         0.5,
         {{0, {kStopEdge, 0.5F, 0, 0.5F, 0.75F}}, {0.25F, {kStopEdge, 0.75F, 0.25F, 0.25F, 0.25F}}}},
        {"t is not clamped", {{0.25F, kBlue}}, {{0.5F, kBlue}}, 2.0, {{0.75F, kBlue}}},
        {"crossing stops sort", ends, {{0.5F, kRed}, {0.75F, kBlue}}, 2, {{0.5F, kBlue}, {1, kRed}}},
        {"the later stop stays", {{0, kRed}, {0.5F, kBlue}}, {{0.5F, kRed}, {0.75F, kBlue}}, 2, {{1, kBlue}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.promise);
        EXPECT_EQ(InterpolateGradients(c.left, c.right, c.t), c.result);
    }
}

}  // namespace
}  // namespace flumo::test
