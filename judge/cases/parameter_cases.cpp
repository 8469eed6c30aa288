// Level 2: the controls that an effect registers.
#include <algorithm>
#include <map>
#include <set>

#include "host/values/arbitrary_value.h"
#include "judge/cases/case_table.h"
#include "judge/engine/expectation.h"
#include "judge/engine/fixture.h"
#include "judge/engine/ledger.h"

namespace flumo::judge {

namespace {

std::string named(const host::Control& control) {
    return "control " + std::to_string(control.index) + " \"" + control.name + "\"";
}

std::string shown(const host::Range& range) {
    return std::to_string(range.min) + " to " + std::to_string(range.max);
}

void judge_disk_ids(CaseContext& context, const std::vector<host::Control>& controls) {
    std::map<int, int> first_with;
    for (const host::Control& control : controls) {
        const auto [first, is_new] = first_with.emplace(control.disk_id, control.index);
        context.expect(is_new, "a disk id of its own for " + named(control),
                       "disk id " + std::to_string(control.disk_id) + ", as control " +
                           std::to_string(first->second) + " has");
        context.expect(control.disk_id > 0, "a disk id above 0 for " + named(control),
                       std::to_string(control.disk_id));
    }
}

/// An end without a start is a misuse that the host has noted at registration.
void judge_groups(CaseContext& context, const std::vector<host::Control>& controls) {
    int open = 0;
    for (const host::Control& control : controls) {
        open += control.kind == host::ControlKind::kGroupStart;
        open -= control.kind == host::ControlKind::kGroupEnd;
    }
    context.expect(open == 0, "as many group ends as group starts",
                   std::to_string(open) + " more starts than ends");
}

void judge_names(CaseContext& context, const std::vector<host::Control>& controls) {
    for (const host::Control& control : controls) {
        const bool is_ended =
            std::ranges::find(control.definition.name, '\0') != std::end(control.definition.name);
        context.expect(is_ended, "a name of at most 31 characters for " + named(control),
                       "no end of the text");
        context.expect(!control.name.empty() || control.kind == host::ControlKind::kGroupEnd,
                       "a name for " + named(control), "none");
    }
}

void judge_numbers(CaseContext& context, const host::Control& control) {
    const double value = control.default_value;
    const bool bounded = control.kind != host::ControlKind::kAngle;
    context.expect(!bounded || (control.valid.min <= value && value <= control.valid.max),
                   "a default within " + shown(control.valid) + " for " + named(control),
                   std::to_string(value));
    context.expect(control.slider.min <= control.slider.max && control.valid.min <= control.slider.min &&
                       control.slider.max <= control.valid.max,
                   "a slider range within " + shown(control.valid) + " for " + named(control),
                   shown(control.slider));
    if (control.kind != host::ControlKind::kPopup) return;
    const auto declared = static_cast<size_t>(std::max(control.valid.max, 0.0));
    context.expect(declared > 0, "a choice for " + named(control), "none");
    if (control.choices.size() != declared) {
        context.note("a name for each of the " + std::to_string(declared) + " choices of " + named(control),
                     std::to_string(control.choices.size()) + " names");
    }
}

void judge_default_handle(CaseContext& context, host::Host& host, const host::Control& control) {
    const PF_Handle handle = control.definition.u.arb_d.dephault;
    context.expect(host.handles().lives(handle), "a default value for " + named(control), "no live handle");
}

void judge_control(CaseContext& context, host::Host& host, const host::Control& control) {
    context.expect(control.kind != host::ControlKind::kOther, "a kind of control that this host knows",
                   "type " + std::to_string(control.definition.param_type) + " for " + named(control));
    if (control.is_number()) judge_numbers(context, control);
    if (control.kind == host::ControlKind::kArbitrary) judge_default_handle(context, host, control);
}

}  // namespace

void play_controls(CaseContext& context) {
    Fixture fixture(context);
    host::Host& host = fixture.host();
    host.global_setup();
    fixture.context().step("registration", [&] {
        host.params_setup();
        for (const host::Misuse& misuse : take_misuses(host))
            context.finding("no misuse of the host", misuse.text);
        context.expect(!host.controls().empty(), "controls", "none");
        Ledger left = read_ledger(host);
        std::erase_if(left, [](const auto& entry) { return entry.first.first == Lent::kHandle; });
        for (const LedgerDifference& difference : differences({}, left))
            context.finding("everything but the defaults given back", difference.text);
        judge_disk_ids(context, host.controls());
        judge_groups(context, host.controls());
        judge_names(context, host.controls());
        for (const host::Control& control : host.controls())
            judge_control(context, host, control);
    });
}

void play_custom_ui(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        CaseContext& judge = fixture.context();
        const auto drawn = drawn_controls(fixture.host());
        fixture.step("announced", [&] {
            judge.expect(fixture.has_flag(PF_OutFlag_CUSTOM_UI), "the flag PF_OutFlag_CUSTOM_UI", "not set");
            judge.expect((fixture.host().custom_ui().events & PF_CustomEFlag_EFFECT) != 0,
                         "events of the effect panel to be registered for",
                         std::to_string(fixture.host().custom_ui().events));
        });
        fixture.step("sizes", [&] {
            for (const host::Control* control : drawn) {
                judge.expect(control->definition.ui_width > 0 && control->definition.ui_height > 0,
                             "a size for " + named(*control),
                             std::to_string(control->definition.ui_width) + "x" +
                                 std::to_string(control->definition.ui_height));
            }
        });
    });
}

void play_expected_controls(CaseContext& context) {
    const Expectation expected = read_expectation(context.subject().expectation);
    if (!expected.has_controls()) throw Skipped{"nothing particular is expected"};
    with_fixture(context, [&](Fixture& fixture) {
        host::Host& host = fixture.host();
        fixture.step("controls", [&] {
            std::map<int, std::string> texts;
            for (const host::Control& control : host.controls()) {
                if (control.kind == host::ControlKind::kArbitrary)
                    texts[control.index] = host::ArbitraryValue::default_of(host, control)->print();
            }
            for (const Mismatch& mismatch : control_mismatches(expected, host.controls(), texts))
                context.finding(mismatch.expected, mismatch.seen);
        });
    });
}

}  // namespace flumo::judge
