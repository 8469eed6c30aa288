#include "effect/gradient/ramp_editor.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>

#include "tests/gradient/random_gradients.h"

namespace flumo::test {
namespace {

constexpr GradientStop kRed{kStopLinear, 1, 0, 0, 0.5F};
constexpr GradientStop kBlue{kStopEdge, 0, 0, 1, 0.25F};

// A control of the registered size: position 0 at pixel 6, 138 pixels of ramp.
RampGeometry Ramp() {
    return MakeRampGeometry({0, 0, 150, 50});
}

int X(float position) {
    return 6 + static_cast<int>(position * 138.0F);
}

TEST(RampGeometry, KeepsMarginsAndAMarkerStrip) {
    const RampGeometry moved = MakeRampGeometry({10, 20, 160, 70});
    EXPECT_EQ(moved.x0, 16);
    EXPECT_EQ(moved.w, 138);
    EXPECT_EQ(moved.markerTop, 54);
    EXPECT_EQ(moved.h, 34);
    const RampGeometry low = MakeRampGeometry({10, 20, 160, 36});
    EXPECT_EQ(low.markerTop, 20);
    EXPECT_EQ(low.h, 0);
    EXPECT_EQ(MakeRampGeometry({0, 20, 10, 30}).markerTop, 20);
    EXPECT_EQ(MakeRampGeometry({0, 20, 10, 30}).w, -2);
}

TEST(DragState, LiesInTheFourWordsAsBits) {
    const DragState state{.offset = -3, .ordinal = 2, .stop = {kStopEdge, 1.0F, -2.0F, 0.5F, -0.0F}};
    const DragWords words = PackDragState(state);
    EXPECT_EQ(words[0], -3);
    EXPECT_EQ(static_cast<uint64_t>(words[1]), 0x0000000200000002U);
    EXPECT_EQ(static_cast<uint64_t>(words[2]), 0xC00000003F800000U);
    EXPECT_EQ(static_cast<uint64_t>(words[3]), 0x800000003F000000U);
    const DragState lifted{.offset = 7, .ordinal = kLiftedOff, .stop = {-1, 0, 0, 0, 1}};
    EXPECT_EQ(static_cast<uint64_t>(PackDragState(lifted)[1]), 0xFFFFFFFFFFFFFFFFU);
    for (const DragState& packed : {state, lifted}) {
        const DragState back = UnpackDragState(PackDragState(packed));
        EXPECT_EQ(back.offset, packed.offset);
        EXPECT_EQ(back.ordinal, packed.ordinal);
        EXPECT_EQ(back.stop, packed.stop);
    }
}

TEST(ClickRamp, HitsTheLeftmostStopWithinTenPixels) {
    GradientStopMap ends = WhiteGradient();
    EXPECT_EQ(ClickRamp(ends, Ramp(), X(0) + 9, 1, false).action, ClickAction::kStartDrag);
    EXPECT_EQ(ClickRamp(ends, Ramp(), X(0) + 10, 1, false).action, ClickAction::kNone);
    EXPECT_EQ(ClickRamp(ends, Ramp(), 150, 1, false).action, ClickAction::kStartDrag);
    EXPECT_EQ(ClickRamp(ends, Ramp(), 151, 1, false).action, ClickAction::kNone);
    EXPECT_EQ(ClickRamp(ends, Ramp(), 0, 1, false).action, ClickAction::kStartDrag);
    EXPECT_EQ(ClickRamp(ends, Ramp(), -1, 1, false).action, ClickAction::kNone);

    GradientStopMap close = {{0.0F, {}}, {50.5F / 138.0F, kRed}, {54.5F / 138.0F, kBlue}};
    const ClickOutcome outcome = ClickRamp(close, Ramp(), 6 + 54, 1, false);
    EXPECT_EQ(outcome.drag.ordinal, 1);
    EXPECT_EQ(outcome.drag.stop, kRed);
    EXPECT_EQ(outcome.drag.offset, 50 - 54);
    EXPECT_FALSE(outcome.changed);
}

TEST(ClickRamp, CyclesTheKindWithTheKeyWhateverTheClicks) {
    for (const auto& [kind, next] : {std::pair{0, 1}, {1, 2}, {2, 0}, {7, 7}, {-1, -1}}) {
        GradientStopMap stops = {{0.5F, {kind, 1, 0, 0, 1}}};
        const ClickOutcome outcome = ClickRamp(stops, Ramp(), X(0.5F), 2, true);
        EXPECT_EQ(outcome.action, ClickAction::kHandled);
        EXPECT_TRUE(outcome.changed);
        EXPECT_EQ(stops, (GradientStopMap{{0.5F, {next, 1, 0, 0, 1}}}));
        EXPECT_EQ(ClickRamp(stops, Ramp(), X(0.2F), 2, true).action, ClickAction::kNone);
        EXPECT_EQ(stops.size(), 1U);
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
        {"no stops: black", {}, X(0.5F), 0.5F, {}},
        {"in a blend, alpha included",
         {{0, {kStopLinear, 0, 0, 0, 0}}, {1, {kStopEdge, 1, 1, 1, 1}}},
         X(0.5F),
         0.5F,
         {kStopSin, 0.5F, 0.5F, 0.5F, 0.5F}},
        {"in an edge", {{0, kBlue}, {1, kRed}}, X(0.5F), 0.5F, kBlue},
        {"beyond the last stop", {{0, kBlue}, {0.25F, {7, 1, 0, 1, 1}}}, X(0.5F), 0.5F, {7, 1, 0, 1, 1}},
        {"in the left margin", {{0.5F, kRed}}, 0, -6.0F / 138.0F, kRed},
        {"in the right margin", {{0.5F, kRed}}, 150, 144.0F / 138.0F, kRed},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.promise);
        GradientStopMap stops = c.stops;
        GradientStopMap expected = c.stops;
        expected[c.position] = c.added;
        const ClickOutcome outcome = ClickRamp(stops, Ramp(), c.x, 2, false);
        EXPECT_EQ(outcome.action, ClickAction::kHandled);
        EXPECT_TRUE(outcome.changed);
        EXPECT_EQ(stops, expected);
    }
}

TEST(ClickRamp, LeavesEverythingElseAlone) {
    GradientStopMap stops = {{0.5F, kRed}};
    const ClickOutcome pick = ClickRamp(stops, Ramp(), X(0.5F), 2, false);
    EXPECT_EQ(pick.action, ClickAction::kPickColor);
    EXPECT_EQ(pick.picked, &stops.at(0.5F));
    EXPECT_FALSE(pick.changed);
    EXPECT_EQ(ClickRamp(stops, Ramp(), X(0.5F), 3, false).action, ClickAction::kNone);
    EXPECT_EQ(ClickRamp(stops, Ramp(), X(0.2F), 1, false).action, ClickAction::kNone);
    const RampGeometry no_width = MakeRampGeometry({0, 0, 12, 50});
    for (int x = 0; x <= 12; ++x)
        EXPECT_EQ(ClickRamp(stops, no_width, x, 2, false).action, ClickAction::kNone);
    EXPECT_EQ(stops, (GradientStopMap{{0.5F, kRed}}));
}

// Presses on the stop at `from` and moves the pointer to column x, row y.
bool PressAndDrag(GradientStopMap& stops, float from, int x, int y, DragState* state = nullptr) {
    DragState drag = ClickRamp(stops, Ramp(), X(from), 1, false).drag;
    const bool changed = DragRamp(stops, Ramp(), drag, x, y);
    if (state) *state = drag;
    return changed;
}

TEST(DragRamp, MovesAStopOverItsNeighboursAndOffTakenPlaces) {
    struct Case {
        const char* promise;
        float from;
        int x;
        float to;
        int ordinal;
    };
    // The other stops stand at 1/4, 1/2 and 3/4 of a ramp 128 pixels wide.
    const RampGeometry ramp = MakeRampGeometry({0, 0, 140, 50});
    const Case cases[] = {
        {"to a free place", 0, 6 + 16, 0.125F, 0},
        {"over a neighbour", 0, 6 + 48, 0.375F, 1},
        {"onto a stop in the left half", 0, 6 + 32, 0.25F + 0.001F, 1},
        {"onto a stop in the right half", 1, 6 + 96, 0.75F - 0.001F, 2},
        {"onto the middle", 1, 6 + 64, 0.5F - 0.001F, 1},
        {"far to the left ends at 0", 1, -1000, 0.0F, 0},
        {"far to the right ends at 1", 0, 2000, 1.0F, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.promise);
        const GradientStopMap others = {{0.25F, {}}, {0.5F, {}}, {0.75F, {}}};
        GradientStopMap stops = others;
        stops[c.from] = kRed;
        GradientStopMap expected = others;
        expected[c.to] = kRed;
        DragState drag = ClickRamp(stops, ramp, 6 + static_cast<int>(c.from * 128), 1, false).drag;
        EXPECT_TRUE(DragRamp(stops, ramp, drag, c.x, -500));
        EXPECT_EQ(stops, expected);
        EXPECT_EQ(drag.ordinal, c.ordinal);
    }
    GradientStopMap crowd = {{0.25F, {}}, {0.25F + 0.001F, {}}, {0.5F, kRed}};
    DragState drag{.offset = 0, .ordinal = 2, .stop = kRed};
    EXPECT_TRUE(DragRamp(crowd, ramp, drag, 6 + 32, 10));
    EXPECT_EQ(crowd.at(0.25F + 0.001F + 0.001F), kRed);
}

TEST(DragRamp, LiftsBelowTheFrameAndBringsBack) {
    GradientStopMap stops = {{0.0F, kRed}};
    DragState drag{};
    EXPECT_TRUE(PressAndDrag(stops, 0, X(0.5F), 51, &drag));
    EXPECT_TRUE(stops.empty());
    EXPECT_EQ(drag.ordinal, kLiftedOff);
    EXPECT_FALSE(DragRamp(stops, Ramp(), drag, X(0.25F), 1000));
    EXPECT_TRUE(DragRamp(stops, Ramp(), drag, X(0.5F), 50));
    EXPECT_EQ(stops, (GradientStopMap{{0.5F, kRed}}));
    EXPECT_EQ(drag.ordinal, 0);
    EXPECT_FALSE(DragRamp(stops, Ramp(), drag, X(0.5F), 10));
    EXPECT_FALSE(DragRamp(stops, Ramp(), drag, X(0.5F), 51)) << "straight down lifts nothing";
    DragState stale{.offset = 0, .ordinal = 5, .stop = kBlue};
    EXPECT_FALSE(DragRamp(stops, Ramp(), stale, X(0.1F), 10));
    stale.ordinal = -2;
    EXPECT_FALSE(DragRamp(stops, Ramp(), stale, X(0.1F), 10));
    EXPECT_EQ(stops, (GradientStopMap{{0.5F, kRed}}));
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
        std::uniform_int_distribution<int> x(-20, 170), y(-20, 70), press(0, 150);
        for (int round = 0; round < 10; ++round) {
            const ClickOutcome click = ClickRamp(stops, Ramp(), press(random), 1, false);
            if (click.action != ClickAction::kStartDrag) continue;
            DragState drag = click.drag;
            std::multiset<float> others = Reds(stops);
            others.erase(others.find(drag.stop.r));
            for (int move = 0; move < 10; ++move) {
                const GradientStopMap before = stops;
                // A stop that is nudged back to where it was counts as moved.
                const bool changed = DragRamp(stops, Ramp(), drag, x(random), y(random));
                EXPECT_TRUE(changed || stops == before);
                std::multiset<float> expected = others;
                if (drag.ordinal != kLiftedOff) {
                    expected.insert(drag.stop.r);
                    ASSERT_LT(static_cast<std::size_t>(drag.ordinal), stops.size());
                    EXPECT_EQ(std::next(stops.begin(), drag.ordinal)->second, drag.stop);
                }
                EXPECT_EQ(Reds(stops), expected);
            }
        }
    });
}

}  // namespace
}  // namespace flumo::test
