// Level 2: values of arbitrary data in the order in which hosts were seen to use them.
#include <algorithm>

#include "judge/cases/case_table.h"
#include "judge/engine/arbitrary_calls.h"
#include "judge/engine/fixture.h"

namespace flumo::judge {

namespace {

using SharedValue = std::shared_ptr<host::ArbitraryValue>;

bool equal(const host::ArbitraryValue& a, const host::ArbitraryValue& b) {
    return a.compare(b) == PF_ArbCompare_EQUAL;
}

/// The host asks for a value in a slot that still holds one. The effect may use that one or make another;
/// in the second case the first is still the host's.
void judge_filled_slot(Fixture& fixture, const host::Control& control) {
    host::Host& host = fixture.host();
    CaseContext& context = fixture.context();
    const SharedValue left = host::ArbitraryValue::default_of(host, control);
    const SharedValue right = host::ArbitraryValue::fresh(host, control);
    const SharedValue expected = host::ArbitraryValue::interpolate(*left, *right, 0.5);
    const PF_ArbitraryH first = raw_copy(host, control, right->handle());
    PF_ArbitraryH slot = first;
    const PF_Err error =
        call_arbitrary(host, control, PF_Arbitrary_INTERP_FUNC, [&](PF_ArbParamsExtra& extra) {
            extra.u.interp_func_params = {control.definition.u.arb_d.refconPV, left->handle(),
                                          right->handle(), 0.5, &slot};
        });
    context.expect(error == PF_Err_NONE, "no error", host::error_name(error));
    if (!host.handles().lives(slot)) {
        context.finding("a value in the slot", "no live handle");
        return;
    }
    const host::ArbitraryValue made(host, control, slot);
    context.expect(equal(made, *expected), "the value that an empty slot gets", "another value");
    if (slot == first || !host.handles().lives(first)) return;
    context.note("what becomes of the slot's first value", "it stays, for the host to dispose of");
    dispose(host, control, first);
}

/// A project is opened, its value compared with the default and shown as text, saved, and opened again.
void judge_project(Fixture& fixture, const host::Control& control) {
    host::Host& host = fixture.host();
    CaseContext& context = fixture.context();
    const SharedValue standard = host::ArbitraryValue::default_of(host, control);
    const std::vector<std::byte> project = standard->flatten();
    const SharedValue opened = host::ArbitraryValue::unflatten(host, control, project);
    context.expect(equal(*opened, *standard), "an opened value that equals the saved one", "another value");
    const std::string text = opened->print();
    try {
        // An effect may refuse every text.
        const SharedValue scanned = host::ArbitraryValue::scan(host, control, text);
        if (scanned->print() != text) context.note("a scanned text to be printed again", scanned->print());
    } catch (const host::HostError&) {
    }
    const std::vector<std::byte> saved = opened->flatten();
    context.expect(saved == project, "the same bytes when saved after comparing and printing", "others");
    const SharedValue again = host::ArbitraryValue::unflatten(host, control, saved);
    context.expect(equal(*again, *opened), "the second opened value to equal the first", "another value");
    context.expect(again->print() == text, "the same text after opening again", again->print());
}

struct Copy {
    SharedValue value;
    std::vector<std::byte> stored;
};

/// Copies and their originals are disposed of in an order that is not the order of their making.
void judge_disposals(Fixture& fixture, const host::Control& control) {
    host::Host& host = fixture.host();
    std::vector<Copy> copies;
    for (const double t : {0.0, 0.25, 0.75, 1.0}) {
        const SharedValue value = host::ArbitraryValue::interpolate(
            *host::ArbitraryValue::default_of(host, control), *host::ArbitraryValue::fresh(host, control), t);
        for (const SharedValue& each : {value, value->copy()})
            copies.push_back({each, each->flatten()});
    }
    std::rotate(copies.begin(), copies.begin() + 3, copies.end());
    while (!copies.empty()) {
        copies.erase(copies.begin());
        for (const Copy& left : copies) {
            fixture.context().expect(left.value->flatten() == left.stored,
                                     "a value unchanged when another is disposed of", "other contents");
        }
    }
}

}  // namespace

void play_filled_slots(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "filled",
                           [&](const host::Control& control) { judge_filled_slot(fixture, control); });
    });
}

void play_projects(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "project",
                           [&](const host::Control& control) { judge_project(fixture, control); });
    });
}

void play_disposals(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "disposal",
                           [&](const host::Control& control) { judge_disposals(fixture, control); });
    });
}

}  // namespace flumo::judge
