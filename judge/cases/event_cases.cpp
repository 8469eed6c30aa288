// Level 4: controls that draw themselves, and the mouse on them.
#include <algorithm>
#include <vector>

#include "host/panel/panel.h"
#include "judge/cases/case_table.h"
#include "judge/engine/events.h"

namespace flumo::judge {

namespace {

constexpr int kScripts = 8;
constexpr int kEventsOfScript = 14;
struct PlaceRow {
    const char* name;
    int width;
    int height;
};
constexpr PlaceRow kPlaces[] = {{"usual", 150, 50}, {"wide", 400, 60}, {"low", 150, 9},
                                {"narrow", 8, 50},  {"dot", 1, 1},     {"nothing", 0, 0}};

constexpr std::pair<const char*, host::PixelLayout> kLayouts[] = {{"argb", host::PixelLayout::kArgb},
                                                                  {"bgra", host::PixelLayout::kBgra},
                                                                  {"neither", host::PixelLayout::kNeither}};

host::ControlPlace place_of(const host::Control& control, int width, int height) {
    return {.index = control.index,
            .frame = {kPanelMargin, kPanelMargin, kPanelMargin + width, kPanelMargin + height}};
}

host::PanelOptions panel_around(int width, int height, host::PixelLayout layout = host::PixelLayout::kBgra) {
    return {.width = width + 2 * kPanelMargin, .height = height + 2 * kPanelMargin, .layout = layout};
}

bool is_within(const PF_UnionableRect& frame, int x, int y) {
    return x >= frame.left - 1 && x <= frame.right && y >= frame.top - 1 && y <= frame.bottom;
}

/// Whether the panel shows anything but its background, inside or outside of a frame.
bool is_painted(const host::Panel& panel, const PF_UnionableRect& frame, bool inside) {
    const std::vector<uint8_t> pixels = panel.rgba();
    const auto width = static_cast<size_t>(panel.image_width());
    for (size_t i = 0; i < pixels.size() / 4; ++i) {
        const bool is_inside = is_within(frame, static_cast<int>(i % width), static_cast<int>(i / width));
        if (is_inside == inside && !std::equal(&pixels[4 * i], &pixels[4 * i] + 4, pixels.data()))
            return true;
    }
    return false;
}

void judge_picture(CaseContext& context, host::Instance& instance, const host::Control& control,
                   const PlaceRow& row, host::PixelLayout layout) {
    const host::ControlPlace place = place_of(control, row.width, row.height);
    host::Panel panel(panel_around(row.width, row.height, layout));
    const host::EventOutcome outcome = host::ControlEvents(instance, place, &panel).draw();
    const bool may_fail = layout == host::PixelLayout::kNeither;
    context.expect(outcome.error == PF_Err_NONE || may_fail, "no error", host::error_name(outcome.error));
    context.expect(!outcome.changed, "a drawing that changes no value", "a change");
    if (outcome.error != PF_Err_NONE) return;
    const bool is_usual = row.width == kPlaces[0].width && row.height == kPlaces[0].height;
    context.expect(!is_usual || is_painted(panel, place.frame, true), "something painted", "nothing");
    context.expect(!is_usual || !is_painted(panel, place.frame, false), "nothing outside of the frame",
                   "paint outside");
    host::Panel other(panel_around(row.width, row.height, layout));
    host::ControlEvents(instance, place, &other).draw();
    context.expect(panel.rgba() == other.rgba(), "the same drawing each time", "another");
}

PF_Point random_point(const PF_UnionableRect& frame, std::mt19937_64& random) {
    return {between(random, frame.left - 10, frame.right + 10),
            between(random, frame.top - 10, frame.bottom + 30)};
}

/// Cancels, picks a colour or fails.
host::PickedColour random_pick(std::mt19937_64& random) {
    constexpr PF_Err kAnswers[] = {PF_Interrupt_CANCEL, PF_Err_NONE, PF_Err_INTERNAL_STRUCT_DAMAGED};
    const auto channel = [&] { return static_cast<float>(random() % 256) / 255.0f; };
    return {kAnswers[random() % 3], {1, channel(), channel(), channel()}};
}

class Script {
  public:
    Script(CaseContext& context, host::Instance& instance, const host::Control& control,
           std::mt19937_64 random)
        : context_(context),
          place_(place_of(control, 150, 50)),
          random_(random),
          panel_(panel_around(150, 50)),
          events_(instance, place_, &panel_) {
        panel_.colour_picker = [this](const PF_PixelFloat&) {
            const host::PickedColour picked = random_pick(random_);
            may_fail_ = picked.status == PF_Err_INTERNAL_STRUCT_DAMAGED;
            return picked;
        };
    }

    void play() {
        for (int i = 0; i < kEventsOfScript; ++i)
            click();
        judge(events_.draw());
    }

  private:
    void click() {
        constexpr PF_Modifiers kModifiers[] = {PF_Mod_NONE, PF_Mod_NONE, PF_Mod_CMD_CTRL_KEY,
                                               PF_Mod_SHIFT_KEY};
        const PF_Point point = random_point(place_.frame, random_);
        const int clicks = between(random_, 1, 3);
        const host::EventOutcome outcome = events_.click(point, clicks, kModifiers[random_() % 4]);
        judge(outcome);
        if (!outcome.drag_wanted) return;
        for (int left = between(random_, 0, 4); left > 0; --left)
            judge(events_.drag(random_point(place_.frame, random_)));
        judge(events_.release(random_point(place_.frame, random_)));
    }

    void judge(const host::EventOutcome& outcome) {
        context_.expect(outcome.error == PF_Err_NONE || may_fail_, "no error",
                        host::error_name(outcome.error));
        may_fail_ = false;
    }

    CaseContext& context_;
    host::ControlPlace place_;
    std::mt19937_64 random_;
    host::Panel panel_;
    host::ControlEvents events_;
    bool may_fail_ = false;
};

void send_foreign(CaseContext& context, host::Instance& instance, PF_ParamIndex index, PF_EventType type,
                  PF_EffectArea area) {
    host::Panel panel(panel_around(150, 50));
    const PF_UnionableRect frame{kPanelMargin, kPanelMargin, kPanelMargin + 150, kPanelMargin + 50};
    host::ControlEvents events(instance, {.index = index, .frame = frame, .area = area}, &panel);
    PF_EventExtra event{};
    event.e_type = type;
    const host::EventOutcome outcome = events.send(event);
    context.expect(outcome.error == PF_Err_NONE, "no error", host::error_name(outcome.error));
    context.expect(!outcome.changed, "no value changed", "a change");
    context.expect(!is_painted(panel, frame, false), "nothing painted outside of the frame", "paint outside");
}

}  // namespace

void play_drawing(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        const auto controls = drawn_controls(fixture.host());
        const auto instance = fixture.host().new_instance();
        for (const host::Control* control : controls) {
            for (const auto& [layout_name, layout] : kLayouts) {
                for (const PlaceRow& row : kPlaces) {
                    const std::string name =
                        std::to_string(control->index) + "-" + row.name + "-" + layout_name;
                    fixture.step(name, [&, which = layout] {
                        judge_picture(fixture.context(), *instance, *control, row, which);
                    });
                }
            }
        }
    });
}

void play_clicks(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for (const host::Control* control : drawn_controls(fixture.host())) {
            for (int i = 0; i < kScripts; ++i) {
                const std::string name = std::to_string(control->index) + "-script-" + std::to_string(i);
                fixture.step(name, [&] {
                    const auto instance = fixture.host().new_instance();
                    Script(fixture.context(), *instance, *control, fixture.context().random(name)).play();
                    judge_value(fixture, *instance, *control);
                });
            }
        }
    });
}

void play_other_events(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        const auto instance = fixture.host().new_instance();
        for (const host::Control& control : fixture.host().controls()) {
            fixture.step("changed-" + std::to_string(control.index),
                         [&] { instance->user_changed_param(control.index); });
            if (control.has_custom_ui() && control.has_value()) continue;
            fixture.step("draw-" + std::to_string(control.index), [&] {
                send_foreign(fixture.context(), *instance, control.index, PF_Event_DRAW, PF_EA_CONTROL);
            });
        }
        for (const host::Control* control : drawn_controls(fixture.host())) {
            for (const PF_EventType type : {PF_Event_NEW_CONTEXT, PF_Event_ACTIVATE, PF_Event_IDLE,
                                            PF_Event_ADJUST_CURSOR, PF_Event_KEYDOWN, 77}) {
                fixture.step(std::to_string(control->index) + "-type-" + std::to_string(type), [&] {
                    send_foreign(fixture.context(), *instance, control->index, type, PF_EA_CONTROL);
                });
            }
            fixture.step(std::to_string(control->index) + "-title", [&] {
                send_foreign(fixture.context(), *instance, control->index, PF_Event_DRAW, PF_EA_PARAM_TITLE);
            });
        }
    });
}

}  // namespace flumo::judge
