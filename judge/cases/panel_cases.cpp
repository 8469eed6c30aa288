// Level 4: the life of a panel, from its context's start to its end.
#include <array>
#include <optional>

#include "host/panel/panel.h"
#include "judge/cases/case_table.h"
#include "judge/engine/events.h"

namespace flumo::judge {

namespace {

/// Points near both ends and in the middle of a control of the usual size.
constexpr int kPressedAt[] = {6, 75, 143};

PF_UnionableRect frame_of(int width, int height) {
    return {kPanelMargin, kPanelMargin, kPanelMargin + width, kPanelMargin + height};
}

PF_Point inside(int x, int y) {
    return {kPanelMargin + x, kPanelMargin + y};
}

/// One panel with one control of an instance in it.
class Opened {
  public:
    Opened(CaseContext& context, host::Instance& instance, const host::Control& control, int width,
           int height)
        : context_(context),
          panel_({.width = width + 2 * kPanelMargin, .height = height + 2 * kPanelMargin}),
          events_(instance, {.index = control.index, .frame = frame_of(width, height)}, &panel_) {
        expect_none(events_.open());
        draw();
    }

    void draw() { expect_none(events_.draw()); }
    void idle() { expect_none(events_.idle()); }
    void move(PF_Point point) { expect_none(events_.move(point)); }
    void resize(int width, int height) { events_.resize(frame_of(width, height)); }
    void press(PF_Point point) {
        const host::EventOutcome outcome = events_.click(point);
        expect_none(outcome);
        dragging_ = outcome.drag_wanted;
    }
    void drag(PF_Point point) {
        if (dragging_) expect_none(events_.drag(point));
    }
    void release(PF_Point point) {
        if (dragging_) expect_none(events_.release(point));
    }
    /// One drag more than the click has.
    void drag_late(PF_Point point) {
        if (dragging_) expect_none(events_.drag_again(point));
    }
    void close() {
        expect_none(events_.leave());
        draw();
        expect_none(events_.close());
    }

  private:
    void expect_none(const host::EventOutcome& outcome) {
        context_.expect(outcome.error == PF_Err_NONE, "no error", host::error_name(outcome.error));
    }

    CaseContext& context_;
    host::Panel panel_;
    host::ControlEvents events_;
    bool dragging_ = false;
};

/// Ends outside of the control and of the panel, and goes on after the last drag.
void play_life(Fixture& fixture, const host::Control& control, int pressed_at) {
    const auto instance = fixture.host().new_instance();
    Opened panel(fixture.context(), *instance, control, 150, 50);
    panel.move(inside(pressed_at, 25));
    panel.press(inside(pressed_at, 25));
    panel.drag(inside(pressed_at + 9, 25));
    panel.idle();
    panel.draw();
    panel.drag(inside(-3000, 20));
    panel.release(inside(2000, 3000));
    panel.drag_late(inside(75, 20));
    panel.close();
    judge_value(fixture, *instance, control);
}

void play_resized(Fixture& fixture, const host::Control& control, int pressed_at) {
    const auto instance = fixture.host().new_instance();
    Opened panel(fixture.context(), *instance, control, 150, 50);
    panel.press(inside(pressed_at, 25));
    constexpr std::array<std::pair<int, int>, 4> kSizes = {{{80, 30}, {0, 0}, {13, 50}, {150, 12}}};
    for (const auto& [width, height] : kSizes) {
        panel.resize(width, height);
        panel.drag(inside(width / 2, 8));
        panel.draw();
    }
    panel.release(inside(20, 8));
    panel.close();
    judge_value(fixture, *instance, control);
}

std::vector<std::byte> stored_value(const host::Instance& instance, const host::Control& control) {
    if (control.kind != host::ControlKind::kArbitrary) return {};
    return std::get<host::Arbitrary>(instance.value_at(control.index, 0))->flatten();
}

/// A drag in one panel, with a wider panel of the same control beside it or without.
std::vector<std::byte> dragged_value(Fixture& fixture, const host::Control& control, int pressed_at,
                                     bool with_second) {
    const auto instance = fixture.host().new_instance();
    Opened panel(fixture.context(), *instance, control, 150, 50);
    std::optional<Opened> second;
    if (with_second) second.emplace(fixture.context(), *instance, control, 400, 60);
    panel.press(inside(pressed_at, 25));
    if (second) second->draw();
    panel.drag(inside(pressed_at + 20, 25));
    if (second) second->move(inside(300, 30));
    if (second) second->draw();
    panel.release(inside(pressed_at + 30, 25));
    std::vector<std::byte> value = stored_value(*instance, control);
    if (second) second->close();
    panel.close();
    judge_value(fixture, *instance, control);
    return value;
}

void judge_two_panels(Fixture& fixture, const host::Control& control, int pressed_at) {
    const std::vector<std::byte> alone = dragged_value(fixture, control, pressed_at, false);
    fixture.context().expect(dragged_value(fixture, control, pressed_at, true) == alone,
                             "the value that the same drag gives with one panel", "another value");
}

using PlayPanel = void (*)(Fixture&, const host::Control&, int pressed_at);

void play_panels(CaseContext& context, std::initializer_list<std::pair<const char*, PlayPanel>> plays) {
    with_fixture(context, [plays](Fixture& fixture) {
        for (const host::Control* control : drawn_controls(fixture.host())) {
            for (const auto& [name, play] : plays) {
                for (const int at : kPressedAt) {
                    const std::string step =
                        std::to_string(control->index) + "-" + name + "-" + std::to_string(at);
                    fixture.step(step, [&, play_one = play] { play_one(fixture, *control, at); });
                }
            }
        }
    });
}

}  // namespace

void play_panel_life(CaseContext& context) {
    play_panels(context, {{"life", play_life}, {"resized", play_resized}});
}

void play_two_panels(CaseContext& context) {
    play_panels(context, {{"two-panels", judge_two_panels}});
}

}  // namespace flumo::judge
