#include "effect/gradient/callbacks/gradient_events.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <optional>

#include "effect/gradient/editor/ramp_image.h"
#include "host/control_events.h"
#include "host/panel/panel.h"
#include "tests/support/linked_effect.h"

namespace flumo::test {
namespace {

using host::EventOutcome;
using host::PickedColour;

const GradientStop kRed{kStopLinear, 1, 0, 0, 0.5F};
constexpr PF_App_Color kBack{0, 0, 0xffff}, kLine{0, 0xffff, 0};

using Color = std::array<int, 3>;
constexpr Color kBlue{0, 0, 255}, kGreen{0, 255, 0}, kStop{255, 0, 0}, kHalfGreen{0, 127, 128};

// One gradient control at the corner of a panel.
class Editor {
  public:
    explicit Editor(GradientStopMap stops, const host::PanelOptions& options = {},
                    PF_EffectArea area = PF_EA_CONTROL)
        : panel({options.width, options.height, options.scale, options.layout, kBack, kLine}),
          events(*effect.instance,
                 {.index = effect.Gradient().index,
                  .frame = {0, 0, options.width, options.height},
                  .area = area},
                 &panel) {
        effect.Set(std::move(stops));
    }

    EventOutcome Draw() {
        const EventOutcome outcome = events.draw();
        EXPECT_FALSE(outcome.changed);
        image_ = panel.rgba();
        return outcome;
    }
    /// The image's pixel at a place in panel pixels.
    Color At(double x, double y) const {
        const double scale = panel.options().scale;
        const auto column = static_cast<size_t>(x * scale), row = static_cast<size_t>(y * scale);
        const size_t first = 4 * (row * static_cast<size_t>(panel.image_width()) + column);
        return {image_.at(first), image_.at(first + 1), image_.at(first + 2)};
    }

    LinkedEffect effect;
    host::Panel panel;
    host::ControlEvents events;

  private:
    std::vector<uint8_t> image_;
};

TEST(GradientEvents, ClicksEditAndSayWhatTheyDid) {
    const GradientStopMap before = {{0.0F, kRed}};
    const PF_PixelFloat colour{.alpha = 0.125F, .red = 0.25F, .green = 0.5F, .blue = 2};
    constexpr PF_Modifiers kKeys = PF_Mod_CMD_CTRL_KEY | PF_Mod_SHIFT_KEY;
    struct Case {
        const char* promise;
        int x, clicks;
        PF_Modifiers modifiers;
        PF_Err picker, result;
        bool handled;
        GradientStopMap after;
    };
    const Case cases[] = {
        {"kind with the key", 6, 1, kKeys, 0, 0, true, {{0, {1, 1, 0, 0, 0.5F}}}},
        {"the key beside a stop", 75, 2, PF_Mod_CMD_CTRL_KEY, 0, 0, false, before},
        {"another key is none", 75, 2, PF_Mod_OPT_ALT_KEY, 0, 0, true, {{0, kRed}, {0.5F, kRed}}},
        {"a colour where there is one", 6, 2, 0, 0, 0, true, {{0, {0, 0.25F, 0.5F, 2, 0.5F}}}},
        {"a cancelled picker is no failure", 6, 2, 0, PF_Interrupt_CANCEL, 0, true, before},
        {"a failing one is", 6, 2, 0, 513, 513, false, before},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.promise);
        Editor editor(before);
        std::optional<PF_PixelFloat> sample;
        editor.panel.colour_picker = [&](const PF_PixelFloat& shown) {
            sample = shown;
            EXPECT_EQ(editor.effect.host.handles().lock_count(), 1U) << "the stops stay locked";
            return PickedColour{c.picker, colour};
        };
        const EventOutcome outcome = editor.events.click({c.x, 10}, c.clicks, c.modifiers);
        EXPECT_EQ(outcome.error, c.result);
        EXPECT_EQ(outcome.flags, c.handled ? PF_EO_HANDLED_EVENT : PF_EO_NONE);
        EXPECT_EQ(outcome.changed, c.after != before);
        EXPECT_FALSE(outcome.drag_wanted);
        EXPECT_EQ(editor.effect.Stops(), c.after);
        EXPECT_TRUE(!sample || (sample->alpha == 0.5F && sample->red == 1 && sample->green == 0));
        EXPECT_FALSE(editor.panel.picker_converts);
        EXPECT_EQ(editor.panel.picker_title, sample ? "Gradient Color" : "");
        EXPECT_TRUE(editor.effect.Tidy());
    }
}

TEST(GradientEvents, DragTakesAStopOffAndBringsItBack) {
    Editor editor({{0, kRed}, {1, {}}});
    EXPECT_TRUE(editor.events.click({6, 40}, 1, PF_Mod_NONE).drag_wanted);
    const auto stops_after = [&editor](const PF_Point& at, bool changed) {
        EXPECT_EQ(editor.events.drag(at).changed, changed);
        return editor.effect.Stops();
    };
    EXPECT_EQ(stops_after({75, 51}, true), (GradientStopMap{{1, {}}})) << "below the frame";
    EXPECT_EQ(stops_after({60, 99}, false), (GradientStopMap{{1, {}}}));
    EXPECT_EQ(stops_after({75, -30}, true), (GradientStopMap{{0.5F, kRed}, {1, {}}}));
    EXPECT_FALSE(editor.events.release({75, -30}).changed);
    EXPECT_TRUE(editor.effect.Tidy());
}

TEST(GradientEvents, MarkersShowTheKindsOnBothSides) {
    // The first three lie in the middle between two pixels of 138 and go to the outer one.
    Editor editor({{-0.5F / 138, {kStopLinear, 1, 0, 0, 0}},
                   {0.25F, {kStopSin, 1, 0, 0, 0}},
                   {0.75F, {kStopEdge, 1, 0, 0, 0}},
                   {1.0F, {7, 1, 0, 0, 0}}},
                  {.scale = 8});
    EXPECT_TRUE(editor.Draw().handled());
    // Without a right half the left one is cut off to a triangle, which is left alone here.
    enum Shape { kPoint, kCurve, kSquare, kNothing, kTriangle };
    const struct {
        double x;
        Shape left, right;
    } markers[] = {{5.5, kSquare, kPoint},
                   {41.5, kPoint, kCurve},
                   {110.5, kCurve, kSquare},
                   {144.5, kTriangle, kNothing}};
    for (const auto& marker : markers) {
        SCOPED_TRACE(marker.x);
        for (const auto& [side, shape] : {std::pair{-1, marker.left}, {1, marker.right}}) {
            if (shape == kTriangle) continue;
            const auto at = [&, side = side](double out, double y) {
                return editor.At(marker.x + side * out, 34.5 + y);
            };
            const auto red = [&](double out, double y) { return at(out, y) == kStop; };
            // Places inside a shape, by half a pen and more, and outside the one before it.
            for (const bool lower : {false, true}) {
                const auto y = [&](double from_end) { return lower ? 15 - from_end : from_end; };
                EXPECT_EQ(red(0.6, y(5)), shape != kNothing);
                EXPECT_EQ(red(4.0, 7.5), shape != kNothing) << "as wide as the others";
                EXPECT_EQ(red(2.5, y(2.4)), shape == kCurve || shape == kSquare);
                EXPECT_EQ(at(4.2, y(1.9)), shape == kSquare ? kStop : kBlue);
                EXPECT_FALSE(red(5.1, 7.5) || red(4.3, y(-0.1))) << "no larger than the others";
            }
        }
    }
    EXPECT_TRUE(editor.effect.Tidy());
}

TEST(GradientEvents, OutlinesFillWholePixels) {
    Editor editor({{0.5F, {kStopEdge, 1, 0, 0, 1}}, {0.6F, {kStopEdge, 1, 0, 0, 1}}});
    editor.Draw();
    for (int y = 35; y < 49; ++y) {
        // The second marker's centre is pixel 89: its square goes from 84 to 94.
        EXPECT_EQ(editor.At(83, y), kBlue);
        EXPECT_EQ(editor.At(84, y), kGreen);
        EXPECT_EQ(editor.At(85, y), kStop);
        EXPECT_EQ(editor.At(94, y), kGreen);
    }
    for (const int y : {34, 49})
        EXPECT_EQ(editor.At(89, y), kGreen);
}

TEST(GradientEvents, RampPixelsTruncateAndWrapInBothLayouts) {
    for (const auto layout : {host::PixelLayout::kArgb, host::PixelLayout::kBgra}) {
        const bool is_argb = layout == host::PixelLayout::kArgb;
        Editor editor({{0, {kStopLinear, 0, 1.5F, 0.999F, 0}}, {1, {kStopLinear, 1, 1.5F, -0.5F, 0}}},
                      {.layout = layout});
        editor.Draw();
        // 1.5 * 255 = 382, of which a byte keeps 126; column 69 is the middle of 138.
        EXPECT_EQ(editor.At(6, 0), (Color{0, 126, 254}));
        EXPECT_EQ(editor.At(6 + 69, 33), (Color{127, 126, 63}));
        EXPECT_EQ(editor.At(6 + 137, 7), (Color{253, 126, 256 - 124}));
        for (const auto& [x, y] : {std::pair{5, 7}, {6 + 138, 7}, {40, 34}})
            EXPECT_EQ(editor.At(x, y), kBlue) << "beside the ramp";
        std::array<uint8_t, 4> pixel{};
        FillRampPixels({{0, {kStopLinear, 1, 0, 0.5F, 0}}}, 1, 1,
                       is_argb ? kDRAWBOT_PixelLayout_32RGB : kDRAWBOT_PixelLayout_32BGR, pixel.data());
        EXPECT_EQ(pixel, (is_argb ? std::array<uint8_t, 4>{255, 255, 0, 127}
                                  : std::array<uint8_t, 4>{127, 0, 255, 255}));
        editor.effect.Set({{0, {kStopLinear, 1e20F, 0, 0, 1}}});
        editor.Draw();
        EXPECT_EQ(editor.At(40, 0), (Color{0, 0, 0})) << "what fits no integer";
    }
}

TEST(GradientEvents, RepaintingLeavesNothingOfWhatStoodThere) {
    Editor editor({{0, kRed}, {0.3F, kRed}, {1, {}}}), plain(GradientStopMap{{1, {}}});
    editor.Draw();
    editor.effect.Set({{1, {}}});
    editor.Draw();
    plain.Draw();
    EXPECT_EQ(editor.panel.rgba(), plain.panel.rgba());
}

TEST(GradientEvents, DrawLocksBrieflyAndNeedsAPreferredLayoutThatIsSupported) {
    using enum host::Callback;
    Editor editor({{0, kRed}}, {.layout = host::PixelLayout::kArgb});
    host::Faults& faults = editor.effect.host.faults();
    faults.start_recording();
    editor.Draw();
    const auto calls = faults.stop_recording();
    const auto place = [&](host::Callback call) {
        return static_cast<uint64_t>(std::ranges::find(calls, call) - calls.begin());
    };
    EXPECT_EQ(std::ranges::count(calls, kLockHandle), 2) << "the stops and the pixels";
    EXPECT_LT(place(kDrawbotNewImage), place(kUnlockHandle)) << "the pixels are locked while they are copied";
    EXPECT_LT(place(kUnlockHandle), place(kDrawbotDrawImage)) << "and no longer";
    EXPECT_EQ(calls.rbegin()[1], kUnlockHandle) << "the stops are locked to the end";
    for (const uint64_t answer : {0U, 1U}) {
        faults.fail(place(kDrawbotPixelLayout) + answer, host::FaultMode::kNull);
        EXPECT_EQ(editor.Draw().error, PF_Err_OUT_OF_MEMORY);
    }
}

TEST(GradientEvents, SmallAndForeignAreas) {
    Editor low({{-1.0F / 138, kRed}}, {.height = 16});
    EXPECT_TRUE(low.Draw().handled());
    EXPECT_EQ(low.At(3, 0), kGreen) << "the marker has the whole height";
    EXPECT_EQ(low.At(0, 7), kGreen) << "and lies in the margin";
    EXPECT_EQ(low.At(40, 0), kBlue) << "no ramp";
    low.effect.Set({});
    low.Draw();
    for (const auto& [x, y] : {std::pair{3, 0}, {0, 7}})
        EXPECT_EQ(low.At(x, y), kHalfGreen) << "the background begins in the middle of a pixel";
    EXPECT_EQ(low.At(1, 1), kBlue);
    Editor narrow({{0, kRed}}, {.width = 10});
    EXPECT_TRUE(narrow.Draw().handled());
    Editor least({{0, kRed}}, {.width = 13, .height = 17});
    least.Draw();
    EXPECT_EQ(least.At(6, 0), kStop) << "a ramp of one pixel";

    Editor title({{0, kRed}}, {}, PF_EA_PARAM_TITLE);
    EXPECT_TRUE(title.Draw().handled());
    EXPECT_EQ(title.At(6, 7), kBlue) << "nothing is painted";
    const EventOutcome click = title.events.click({8, 10}, 2, PF_Mod_CMD_CTRL_KEY);
    EXPECT_FALSE(click.handled() || click.changed);
    Editor editor({{0, kRed}});
    for (const PF_EventType type :
         {PF_Event_NEW_CONTEXT, PF_Event_IDLE, PF_Event_ADJUST_CURSOR, PF_Event_KEYDOWN}) {
        PF_EventExtra event{};
        event.e_type = type;
        const EventOutcome outcome = editor.events.send(event);
        EXPECT_FALSE(outcome.error || outcome.handled() || outcome.changed);
    }
    for (const auto& [where, moves] : {std::pair{&title, false}, {&editor, true}}) {
        PF_EventExtra drag{};
        drag.e_type = PF_Event_DO_CLICK;
        drag.u.do_click.send_drag = true;
        drag.u.do_click.screen_point.h = 75;
        EXPECT_EQ(where->events.send(drag).changed, moves);
        EXPECT_EQ(drag.e_type, PF_Event_DRAG);
    }
    EXPECT_TRUE(editor.effect.Tidy());
}

}  // namespace
}  // namespace flumo::test
