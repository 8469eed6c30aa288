#include "effect/gradient/gradient_events.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/gradient/fake_panel_host.h"

namespace flumo::test {
namespace {

using ::testing::ElementsAre;

constexpr int kIndex = 26;
constexpr A_long kDiskId = 41;

// A panel with one gradient control of the registered size at (0, 0), and the pointer on it.
struct Panel {
    explicit Panel(GradientStopMap initial) : stops(std::move(initial)) {
        param.u.arb_d.value = host.Wrap(stops);
        params[kIndex] = &param;
    }

    PF_EventExtra Event(PF_EventType type) const {
        PF_EventExtra event{};
        event.e_type = type;
        event.effect_win.index = kIndex;
        event.effect_win.area = PF_EA_CONTROL;
        event.effect_win.current_frame = {0, 0, 150, height};
        return event;
    }

    PF_EventExtra ClickEvent(int x, int clicks, PF_Modifiers modifiers = 0) const {
        PF_EventExtra event = Event(PF_Event_DO_CLICK);
        event.u.do_click.screen_point = {x, 10};
        event.u.do_click.num_clicks = clicks;
        event.u.do_click.modifiers = modifiers;
        return event;
    }

    PF_Err Send(PF_EventExtra& event) {
        param.uu.id = kDiskId;
        return HandleGradientEvent(&host.in_data, &host.out_data, params, &event);
    }

    bool Changed() const { return param.uu.change_flags != kDiskId; }
    bool Tidy() const { return host.AllGivenBack(1); }

    FakePanelHost host;
    GradientStopMap stops;
    PF_ParamDef param{};
    PF_ParamDef* params[kIndex + 1]{};
    A_long height = 50;
};

bool Handled(const PF_EventExtra& event) {
    return event.evt_out_flags == PF_EO_HANDLED_EVENT;
}

const GradientStop kRed{kStopLinear, 1, 0, 0, 0.5F};

TEST(GradientEvents, ADragIsTheRepeatedClickWithItsWordsCarriedAlong) {
    Panel panel({{0.0F, kRed}, {0.5F, {}}});
    PF_EventExtra event = panel.ClickEvent(8, 1);
    EXPECT_EQ(panel.Send(event), 0);
    EXPECT_TRUE(event.u.do_click.send_drag);
    EXPECT_TRUE(Handled(event));
    EXPECT_FALSE(panel.Changed());

    const auto move = [&](int x, int y) {
        event.e_type = PF_Event_DO_CLICK;
        event.evt_out_flags = 0;
        event.u.do_click.screen_point = {x, y};
        EXPECT_EQ(panel.Send(event), 0);
        EXPECT_EQ(event.e_type, PF_Event_DRAG);
        EXPECT_FALSE(Handled(event));
        return panel.Changed();
    };
    EXPECT_TRUE(move(146, 10)) << "over the neighbour to the right end";
    EXPECT_EQ(panel.stops, (GradientStopMap{{0.5F, {}}, {1.0F, kRed}}));
    EXPECT_EQ(panel.param.uu.change_flags, PF_ChangeFlag_CHANGED_VALUE);
    EXPECT_FALSE(move(400, 51)) << "still at 1: straight down lifts nothing";
    EXPECT_TRUE(move(77, 51)) << "lifted off";
    EXPECT_EQ(panel.stops.size(), 1U);
    EXPECT_FALSE(move(90, 52));
    EXPECT_TRUE(move(77, 50)) << "back, beside the stop at the middle";
    EXPECT_EQ(panel.stops, (GradientStopMap{{0.5F - 0.001F, kRed}, {0.5F, {}}}));
    EXPECT_TRUE(panel.Tidy());
}

TEST(GradientEvents, ClicksEditAndSayWhatTheyDid) {
    const GradientStopMap before = {{0.0F, kRed}};
    struct Case {
        const char* promise;
        int x;
        int clicks;
        PF_Modifiers modifiers;
        bool handled;
        GradientStopMap after;
    };
    const Case cases[] = {
        {"kind with the key",
         6,
         1,
         PF_Mod_CMD_CTRL_KEY | PF_Mod_SHIFT_KEY,
         true,
         {{0.0F, {1, 1, 0, 0, 0.5F}}}},
        {"the key beside a stop", 75, 2, PF_Mod_CMD_CTRL_KEY, false, before},
        {"another key counts for nothing", 75, 1, PF_Mod_OPT_ALT_KEY, false, before},
        {"a stop where there is none", 75, 2, 0, true, {{0.0F, kRed}, {0.5F, kRed}}},
        {"a colour where there is one", 6, 2, 0, true, {{0.0F, {0, 0.25F, 0.5F, 2, 0.5F}}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.promise);
        Panel panel(before);
        panel.host.picker_answer = {.alpha = 0.125F, .red = 0.25F, .green = 0.5F, .blue = 2};
        PF_EventExtra event = panel.ClickEvent(c.x, c.clicks, c.modifiers);
        EXPECT_EQ(panel.Send(event), 0);
        EXPECT_EQ(panel.stops, c.after);
        EXPECT_EQ(Handled(event), c.handled);
        EXPECT_EQ(panel.Changed(), c.after != before);
        EXPECT_FALSE(event.u.do_click.send_drag);
        EXPECT_TRUE(panel.Tidy());
    }
}

TEST(GradientEvents, ThePickerMayBeCancelledOrFail) {
    struct Case {
        PF_Err status;
        PF_Err result;
        bool handled;
    };
    for (const Case& c : {Case{PF_Interrupt_CANCEL, 0, true}, {513, 513, false}}) {
        Panel panel({{0.0F, kRed}});
        panel.host.picker_status = c.status;
        PF_EventExtra event = panel.ClickEvent(6, 2);
        EXPECT_EQ(panel.Send(event), c.result);
        EXPECT_EQ(panel.host.picker_title, "Gradient Color");
        EXPECT_EQ(panel.host.picker_sample.alpha, 0.5F);
        EXPECT_EQ(panel.host.picker_sample.red, 1.0F);
        EXPECT_EQ(Handled(event), c.handled);
        EXPECT_FALSE(panel.Changed());
        EXPECT_EQ(panel.stops, (GradientStopMap{{0.0F, kRed}}));
        EXPECT_TRUE(panel.Tidy());
    }
}

TEST(GradientEvents, PaintsTheRampAndAMarkerOfEachKind) {
    Panel panel({{0.0F, {kStopLinear, 0, 0, 0, 1}},
                 {0.5F, {kStopSin, 1, 0, 0, 0}},
                 {0.75F, {kStopEdge, 0, 1, 0, 1}},
                 {1.0F, {7, 0, 0, 1, 1}}});
    PF_EventExtra event = panel.Event(PF_Event_DRAW);
    EXPECT_EQ(panel.Send(event), 0);
    EXPECT_TRUE(Handled(event));
    EXPECT_FALSE(panel.Changed());
    const std::string linear_after_edge = " M 6.5 34.5 L 11.5 42 L 6.5 49.5 L 1.5 49.5 L 1.5 34.5 Z";
    const std::string sin_after_linear =
        " M 75.5 34.5 C 78 34.5 80.5 38.25 80.5 42 C 80.5 45.75 78 49.5 75.5 49.5 L 70.5 42 Z";
    // 138 x 0.75 lies between two pixels and rounds up.
    const std::string edge_after_sin =
        " M 110.5 34.5 L 115.5 34.5 L 115.5 49.5 L 110.5 49.5"
        " C 108 49.5 105.5 45.75 105.5 42 C 105.5 38.25 108 34.5 110.5 34.5 Z";
    const std::string none_after_edge = " M 144.5 34.5 L 139.5 49.5 L 139.5 34.5 Z";
    const std::string pen = "stroke pen 1 (0 0 1 1)";
    EXPECT_THAT(
        panel.host.painted,
        ElementsAre("fill 1 (1 0.2 0 1) R 0.5 0.5 150 50", "image 138x34 row 552 layout 2 at 6 0 alpha 1",
                    "fill 0 (0 0 0 1)" + linear_after_edge, pen + linear_after_edge,
                    "fill 0 (1 0 0 1)" + sin_after_linear, pen + sin_after_linear,
                    "fill 0 (0 1 0 1)" + edge_after_sin, pen + edge_after_sin,
                    "fill 0 (0 0 1 1)" + none_after_edge, pen + none_after_edge));
    EXPECT_TRUE(panel.Tidy());
}

// The four bytes of the image's pixel.
std::vector<int> Pixel(const FakePanelHost& host, std::size_t width, std::size_t x, std::size_t y) {
    std::vector<int> bytes;
    for (std::size_t i = 0; i < 4; ++i)
        bytes.push_back(std::to_integer<int>(host.image[(y * width + x) * 4 + i]));
    return bytes;
}

TEST(GradientEvents, RampPixelsTruncateAndWrapInTheHostsLayout) {
    Panel panel({{0.0F, {kStopLinear, 0, 1.5F, 0.999F, 0}}, {1.0F, {kStopLinear, 1, 1.5F, -0.5F, 0}}});
    PF_EventExtra event = panel.Event(PF_Event_DRAW);
    EXPECT_EQ(panel.Send(event), 0);
    // 1.5 * 255 = 382, of which a byte keeps 126; column 69 is the middle of 138.
    EXPECT_THAT(Pixel(panel.host, 138, 0, 0), ElementsAre(255, 0, 126, 254));
    EXPECT_THAT(Pixel(panel.host, 138, 69, 33), ElementsAre(255, 127, 126, 63));
    EXPECT_THAT(Pixel(panel.host, 138, 137, 7), ElementsAre(255, 253, 126, 256 - 124));
    panel.host.prefers_argb = false;
    panel.host.prefers_bgra = panel.host.supports_bgra = true;
    EXPECT_EQ(panel.Send(event), 0);
    EXPECT_THAT(panel.host.painted.back(), testing::StartsWith("stroke"));
    EXPECT_THAT(Pixel(panel.host, 138, 69, 33), ElementsAre(63, 126, 127, 255));
    panel.stops = {{0.0F, {kStopLinear, 1e20F, 0, 0, 1}}};
    EXPECT_EQ(panel.Send(event), 0);
    EXPECT_THAT(Pixel(panel.host, 138, 5, 0), ElementsAre(0, 0, 0, 255));
}

TEST(GradientEvents, NeedsAPixelLayoutThatIsPreferredAndSupported) {
    struct Case {
        bool prefers_argb, supports_argb, prefers_bgra, supports_bgra;
    };
    for (const Case& c :
         {Case{false, true, false, true}, {true, false, false, true}, {false, true, true, false}}) {
        Panel panel({{0.0F, kRed}});
        panel.host.prefers_argb = c.prefers_argb;
        panel.host.supports_argb = c.supports_argb;
        panel.host.prefers_bgra = c.prefers_bgra;
        panel.host.supports_bgra = c.supports_bgra;
        PF_EventExtra event = panel.Event(PF_Event_DRAW);
        EXPECT_EQ(panel.Send(event), PF_Err_OUT_OF_MEMORY);
        EXPECT_FALSE(Handled(event));
        EXPECT_EQ(panel.host.painted.size(), 1U) << "the background alone";
        EXPECT_TRUE(panel.Tidy());
    }
}

TEST(GradientEvents, SmallAndForeignAreas) {
    Panel low({{0.0F, kRed}});
    low.height = 16;
    PF_EventExtra draw = low.Event(PF_Event_DRAW);
    EXPECT_EQ(low.Send(draw), 0);
    EXPECT_EQ(low.host.painted.size(), 3U) << "background and marker, no image";
    EXPECT_THAT(low.host.painted[1], testing::HasSubstr(" M 6.5 0.5 "));

    Panel panel({{0.0F, kRed}});
    PF_EventExtra title = panel.Event(PF_Event_DRAW);
    title.effect_win.area = PF_EA_PARAM_TITLE;
    EXPECT_EQ(panel.Send(title), 0);
    EXPECT_TRUE(Handled(title));
    EXPECT_TRUE(panel.host.painted.empty());
    for (const PF_EventType type : {PF_Event_DO_CLICK, PF_Event_DRAG}) {
        PF_EventExtra event = panel.ClickEvent(8, 2, PF_Mod_CMD_CTRL_KEY);
        event.e_type = type;
        event.effect_win.area = PF_EA_PARAM_TITLE;
        EXPECT_EQ(panel.Send(event), 0);
        EXPECT_FALSE(Handled(event) || panel.Changed());
    }
    for (const PF_EventType type :
         {PF_Event_NEW_CONTEXT, PF_Event_IDLE, PF_Event_ADJUST_CURSOR, PF_Event_KEYDOWN}) {
        PF_EventExtra event = panel.Event(type);
        EXPECT_EQ(panel.Send(event), 0);
        EXPECT_FALSE(Handled(event));
    }
    EXPECT_FALSE(panel.Changed());
    EXPECT_TRUE(panel.Tidy());
}

// Sends the event again and again, each time with the next of the host's calls failing, until none
// fails; every failure must come back as its number and leave nothing behind.
int FailEachCall(const GradientStopMap& stops, const PF_EventExtra& sent) {
    for (int call = 1;; ++call) {
        SCOPED_TRACE(testing::Message() << "failing call " << call);
        Panel panel(stops);
        panel.host.fail_call = call;
        PF_EventExtra event = sent;
        const PF_Err result = panel.Send(event);
        EXPECT_EQ(result, panel.host.expected);
        EXPECT_EQ(Handled(event), result == 0);
        EXPECT_TRUE(panel.Tidy());
        if (panel.host.expected == 0) return call - 1;
        EXPECT_EQ(panel.stops, stops);
    }
}

TEST(GradientEvents, EveryFailureGivesItsNumberAndLeaksNothing) {
    const GradientStopMap stops = {{0.0F, kRed}, {0.5F, {}}};
    const Panel panel({});
    EXPECT_GT(FailEachCall(stops, panel.Event(PF_Event_DRAW)), 50);
    EXPECT_EQ(FailEachCall(stops, panel.ClickEvent(6, 2)), 4) << "two suites, one lock, the dialog";
}

TEST(GradientEvents, AMissingSuiteIs516AndSaysSo) {
    for (const char* suite : {"PF Handle Suite 2", "PF AE App Suite 6", "PF Effect Custom UI Suite 1",
                              "DRAWBOT Draw Suite 1", "DRAWBOT Path Suite 1"}) {
        SCOPED_TRACE(suite);
        Panel panel({{0.0F, kRed}});
        panel.host.missing_suites = {suite};
        PF_EventExtra event = panel.Event(PF_Event_DRAW);
        EXPECT_EQ(panel.Send(event), PF_Err_BAD_CALLBACK_PARAM);
        const bool silent = std::string(suite).starts_with("PF Handle");
        EXPECT_STREQ(panel.host.out_data.return_msg, silent ? "" : "Not able to acquire AEFX Suite.");
        EXPECT_EQ(panel.host.out_data.out_flags, silent ? 0 : PF_OutFlag_DISPLAY_ERROR_MESSAGE);
        EXPECT_TRUE(panel.Tidy());
    }
    Panel panel({{0.0F, kRed}});
    panel.host.in_data.pica_basicP = nullptr;
    PF_EventExtra event = panel.Event(PF_Event_DRAW);
    EXPECT_EQ(panel.Send(event), PF_Err_BAD_CALLBACK_PARAM);
}

}  // namespace
}  // namespace flumo::test
