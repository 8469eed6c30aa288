// A session at the gradient editor, in the real module's hands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "host/control_events.h"
#include "host/instance.h"
#include "host/panel/panel.h"

namespace flumo::host {
namespace {

constexpr int kLinesGradient = 60;

/// Hard edges: black from 0, white from 1.
Arbitrary black_and_white(Host& host) {
    constexpr std::array<float, 13> kStored = {0, 0, 0, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1};
    constexpr int32_t kCount = 2, kEdge = 2;
    std::array<std::byte, sizeof kStored> bytes;
    std::memcpy(bytes.data(), kStored.data(), sizeof kStored);
    std::memcpy(bytes.data(), &kCount, sizeof kCount);
    for (const std::size_t place : {8U, 32U})
        std::memcpy(&bytes[place], &kEdge, sizeof kEdge);
    return ArbitraryValue::unflatten(host, host.control(kLinesGradient), bytes);
}

TEST(EditorSession, AddsMovesLiftsRecoloursAndRemoves) {
    const Module module(FLUMO_MODULE);
    Host host(module);
    host.params_setup();  // without global set-up there is no OpenGL, which an editor does not need
    auto instance = host.new_instance();
    instance->set(kLinesGradient, black_and_white(host));
    Panel panel({});
    panel.color_picker = [](const PF_PixelFloat&) { return PickedColor{PF_Err_NONE, {0, 1, 0.25F, 2}}; };
    ControlEvents events(*instance, {.index = kLinesGradient}, &panel);

    const auto B = [](const char* at) { return std::string(" t ") + at + " edge  r 0 g 0 b 0 a 1"; };
    const std::string W = " t 1 edge  r 1 g 1 b 1 a 1", P = "  r 1 g 0.25 b 2 a 1",
                      P_linear = " t 0.5 linear" + P;
    enum Gesture { kClick, kDouble, kCtrl, kDrag, kRelease };
    enum Answer { kIgnored, kHandled, kEdited, kMoved };
    const struct {
        const char* what;
        Gesture gesture;
        PF_Point at;
        Answer answer;
        std::string stops;  // none: as before
    } steps[] = {
        {"add", kDouble, {75, 20}, kEdited, B("0") + B("0.5") + W},
        {"recolour", kDouble, {75, 40}, kEdited, B("0") + " t 0.5 edge" + P + W},
        {"next kind", kCtrl, {75, 40}, kEdited, B("0") + P_linear + W},
        {"beside all stops", kClick, {110, 20}, kIgnored, {}},
        {"press three pixels off", kClick, {9, 40}, kHandled, {}},
        {"across a neighbour", kDrag, {113, 20}, kMoved, P_linear + B("0.753623") + W},
        {"onto it", kDrag, {78, 20}, kMoved, B("0.499") + P_linear + W},
        {"below the frame", kDrag, {78, 51}, kMoved, P_linear + W},
        {"about down there", kDrag, {60, 99}, kIgnored, {}},
        {"and back", kDrag, {23, -30}, kMoved, B("0.101449") + P_linear + W},
        {"let go", kRelease, {23, -30}, kIgnored, {}},
        {"press on another", kClick, {144, 40}, kHandled, {}},
        {"straight down", kDrag, {144, 51}, kIgnored, {}},
        {"aside as well", kDrag, {140, 51}, kMoved, B("0.101449") + P_linear},
        {"let go below", kRelease, {140, 51}, kIgnored, {}},
        {"add in the margin", kDouble, {0, 20}, kEdited, B("-0.0434783") + B("0.101449") + P_linear},
    };
    const auto play = [&](Gesture gesture, PF_Point at) {
        if (gesture == kDrag) return events.drag(at);
        if (gesture == kRelease) return events.release(at);
        return events.click(at, gesture == kDouble ? 2 : 1,
                            gesture == kCtrl ? PF_Mod_CMD_CTRL_KEY : PF_Mod_NONE);
    };
    std::string expected;
    for (const auto& step : steps) {
        SCOPED_TRACE(step.what);
        const EventOutcome outcome = play(step.gesture, step.at);
        EXPECT_EQ(outcome.error, PF_Err_NONE);
        EXPECT_EQ(outcome.handled(), step.answer == kHandled || step.answer == kEdited);
        EXPECT_EQ(outcome.changed, step.answer == kEdited || step.answer == kMoved);
        if (!step.stops.empty()) expected = "Gradient" + step.stops;
        EXPECT_EQ(std::get<Arbitrary>(instance->value_at(kLinesGradient, 0))->print(), expected);
        EXPECT_TRUE(events.draw().handled());
        EXPECT_TRUE(host.accounting().idle()) << host.accounting().describe();
    }
    instance.reset();
    host.release_controls();
    EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
    EXPECT_THAT(host.accounting().misuses(), testing::IsEmpty());
}

}  // namespace
}  // namespace flumo::host
