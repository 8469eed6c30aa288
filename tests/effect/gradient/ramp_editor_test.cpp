#include "effect/gradient/editor/ramp_editor.h"

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <set>

#include "tests/effect/gradient/random_gradients.h"

namespace flumo::test {
namespace {

constexpr GradientStop kRed{kStopLinear, 1, 0, 0, 0.5F};
constexpr GradientStop kBlue{kStopEdge, 0, 0, 1, 0.25F};

// 128 pixels of ramp from pixel 6 on, so that pixels lie at exact positions.
const RampGeometry kRamp = MakeRampGeometry({0, 0, 140, 50});

TEST(RampGeometry, KeepsMarginsAndAMarkerStrip) {
    const auto numbers = [](const PF_Rect& frame) {
        const RampGeometry ramp = MakeRampGeometry(frame);
        return std::array{ramp.x0, ramp.w, ramp.markerTop, ramp.h};
    };
    EXPECT_EQ(numbers({10, 20, 160, 70}), (std::array{16, 138, 54, 34}));
    EXPECT_EQ(numbers({10, 20, 160, 36}), (std::array{16, 138, 20, 0}));
    EXPECT_EQ(numbers({0, 20, 10, 30}), (std::array{6, -2, 20, 0}));
}

TEST(DragState, LiesInTheFourWordsAsBits) {
    const DragState state{.offset = -3, .ordinal = 2, .stop = {kStopEdge, 1.0F, -2.0F, 0.5F, -0.0F}};
    const DragState lifted{.offset = 7, .ordinal = kLiftedOff, .stop = {-1, 0, 0, 0, 1}};
    EXPECT_EQ(PackDragState(state),
              (DragWords{-3, 0x0000000200000002, static_cast<A_intptr_t>(0xC00000003F800000),
                         static_cast<A_intptr_t>(0x800000003F000000)}));
    EXPECT_EQ(PackDragState(lifted)[1], -1);
    for (const DragState& packed : {state, lifted}) {
        const DragState back = UnpackDragState(PackDragState(packed));
        EXPECT_EQ(back.offset, packed.offset);
        EXPECT_EQ(back.ordinal, packed.ordinal);
        EXPECT_EQ(back.stop, packed.stop);
    }
}

TEST(ClickRamp, HitsTheLeftmostStopWithinTenPixels) {
    GradientStopMap ends = WhiteGradient();
    for (const auto& [x, hit] :
         {std::pair{15, true}, {16, false}, {140, true}, {141, false}, {0, true}, {-1, false}}) {
        EXPECT_EQ(ClickRamp(ends, kRamp, x, 1, false).action == ClickAction::kStartDrag, hit) << x;
    }
    GradientStopMap close = {{0.0F, {}}, {50.5F / 128, kRed}, {54.5F / 128, kBlue}};
    const ClickOutcome outcome = ClickRamp(close, kRamp, 6 + 54, 1, false);
    EXPECT_EQ(outcome.drag.ordinal, 1);
    EXPECT_EQ(outcome.drag.stop, kRed);
    EXPECT_EQ(outcome.drag.offset, 50 - 54);
    EXPECT_FALSE(outcome.changed);
    GradientStopMap outside = {{-2.5F / 128, kRed}};
    EXPECT_EQ(ClickRamp(outside, kRamp, 6, 1, false).drag.offset, -2) << "cut towards zero";
}

TEST(ClickRamp, CyclesTheKindWithTheKeyWhateverTheClicks) {
    for (const auto& [kind, next] : {std::pair{0, 1}, {1, 2}, {2, 0}, {7, 7}, {-1, -1}}) {
        GradientStopMap stops = {{0.5F, {kind, 1, 0, 0, 1}}};
        EXPECT_TRUE(ClickRamp(stops, kRamp, 70, 2, true).changed);
        EXPECT_EQ(ClickRamp(stops, kRamp, 30, 2, true).action, ClickAction::kNone);
        EXPECT_EQ(stops, (GradientStopMap{{0.5F, {next, 1, 0, 0, 1}}}));
    }
}

TEST(ClickRamp, DoubleClickAddsTheColorOfTheRamp) {
    struct Case {
        const char* promise;
        GradientStopMap stops;
        int x;
        float position;
        GradientStop added;
    };
    const Case cases[] = {
        {"no stops: black", {}, 70, 0.5F, {}},
        {"in a blend", {{0, {0, 0, 0, 0, 0}}, {1, {2, 1, 1, 1, 1}}}, 70, 0.5F, {1, 0.5F, 0.5F, 0.5F, 0.5F}},
        {"in an edge", {{0, kBlue}, {1, kRed}}, 70, 0.5F, kBlue},
        {"beyond the last stop", {{0, kBlue}, {0.25F, {7, 1, 0, 1, 1}}}, 70, 0.5F, {7, 1, 0, 1, 1}},
        {"in the left margin", {{0.5F, kRed}}, 0, -6.0F / 128, kRed},
        {"in the right margin", {{0.5F, kRed}}, 140, 134.0F / 128, kRed},
    };
    for (const Case& c : cases) {
        GradientStopMap stops = c.stops, expected = c.stops;
        expected[c.position] = c.added;
        EXPECT_TRUE(ClickRamp(stops, kRamp, c.x, 2, false).changed) << c.promise;
        EXPECT_EQ(stops, expected) << c.promise;
    }
}

TEST(ClickRamp, LeavesEverythingElseAlone) {
    GradientStopMap stops = {{0.5F, kRed}};
    const ClickOutcome pick = ClickRamp(stops, kRamp, 70, 2, false);
    EXPECT_EQ(pick.action, ClickAction::kPickColour);
    EXPECT_EQ(pick.picked, &stops.at(0.5F));
    for (const A_long clicks : {0, 3})
        EXPECT_EQ(ClickRamp(stops, kRamp, 70, clicks, false).action, ClickAction::kNone);
    EXPECT_EQ(ClickRamp(stops, kRamp, 30, 1, false).action, ClickAction::kNone);
    for (const A_long width : {12, 11, 0, -3}) {
        for (A_long x = -3; x <= 12; ++x)
            EXPECT_EQ(ClickRamp(stops, MakeRampGeometry({0, 0, width, 50}), x, 2, false).action,
                      ClickAction::kNone)
                << width;
    }
    EXPECT_EQ(stops, (GradientStopMap{{0.5F, kRed}}));
}

TEST(DragRamp, MovesAStopOverItsNeighboursAndOffTakenPlaces) {
    struct Case {
        const char* promise;
        float from;
        int x;
        float to;
        int ordinal;
    };
    const GradientStopMap others = {{0.25F, {}}, {0.25F + 0.001F, {}}, {0.5F, {}}, {0.75F, {}}};
    const Case cases[] = {
        {"to a free place", 0, 6 + 16, 0.125F, 0},
        {"over a neighbour", 0, 6 + 48, 0.375F, 2},
        {"onto a stop in the left half, and the next", 0, 6 + 32, 0.25F + 0.001F + 0.001F, 2},
        {"onto a stop in the right half", 1, 6 + 96, 0.75F - 0.001F, 3},
        {"onto the middle", 1, 6 + 64, 0.5F - 0.001F, 2},
        {"far to the left ends at 0", 1, -1000, 0.0F, 0},
        {"far to the right ends at 1", 0, 2000, 1.0F, 4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.promise);
        GradientStopMap stops = others, expected = others;
        stops[c.from] = expected[c.to] = kRed;
        DragState drag = ClickRamp(stops, kRamp, 6 + static_cast<int>(c.from * 128), 1, false).drag;
        EXPECT_TRUE(DragRamp(stops, kRamp, drag, c.x, -500));
        EXPECT_EQ(stops, expected);
        EXPECT_EQ(drag.ordinal, c.ordinal);
    }
}

TEST(DragRamp, LiftsBelowTheFrameAndBringsBack) {
    GradientStopMap stops = {{0.0F, kRed}};
    DragState drag = ClickRamp(stops, kRamp, 6, 1, false).drag;
    EXPECT_TRUE(DragRamp(stops, kRamp, drag, 70, 51));
    EXPECT_TRUE(stops.empty());
    EXPECT_EQ(drag.ordinal, kLiftedOff);
    EXPECT_FALSE(DragRamp(stops, kRamp, drag, 30, 1000));
    EXPECT_TRUE(DragRamp(stops, kRamp, drag, 70, 50));
    EXPECT_FALSE(DragRamp(stops, kRamp, drag, 70, 51)) << "straight down lifts nothing";
    for (const A_long ordinal : {1, 5, -2}) {
        DragState stale{.offset = 0, .ordinal = ordinal, .stop = kBlue};
        EXPECT_FALSE(DragRamp(stops, kRamp, stale, 20, 10));
    }
    EXPECT_EQ(stops, (GradientStopMap{{0.5F, kRed}}));
    DragState other{.offset = 0, .ordinal = 0, .stop = kBlue};
    EXPECT_TRUE(DragRamp(stops, kRamp, other, 38, 10));
    EXPECT_EQ(stops, (GradientStopMap{{0.25F, kBlue}})) << "what is put back is what the press kept";
}

// Stops told apart by their red, which nothing here but the colour picker changes.
std::multiset<float> Reds(const GradientStopMap& stops) {
    std::multiset<float> reds;
    for (const auto& entry : stops)
        reds.insert(entry.second.r);
    return reds;
}

TEST(DragRamp, NeverLosesOrDoublesAnotherStop) {
    ForRandomGradients([](GradientStopMap stops, std::mt19937& random) {
        std::uniform_int_distribution<int> x(-20, 170), y(-20, 70);
        for (int round = 0; round < 10; ++round) {
            const ClickOutcome click = ClickRamp(stops, kRamp, x(random), 1, false);
            if (click.action != ClickAction::kStartDrag) continue;
            DragState drag = click.drag;
            std::multiset<float> others = Reds(stops);
            others.erase(others.find(drag.stop.r));
            for (int move = 0; move < 10; ++move) {
                const GradientStopMap before = stops;
                // A stop that is nudged back to where it was counts as moved.
                EXPECT_TRUE(DragRamp(stops, kRamp, drag, x(random), y(random)) || stops == before);
                std::multiset<float> expected = others;
                if (drag.ordinal != kLiftedOff) {
                    expected.insert(drag.stop.r);
                    ASSERT_LT(static_cast<size_t>(drag.ordinal), stops.size());
                    EXPECT_EQ(std::next(stops.begin(), drag.ordinal)->second, drag.stop);
                }
                EXPECT_EQ(Reds(stops), expected);
            }
        }
    });
}

}  // namespace
}  // namespace flumo::test
