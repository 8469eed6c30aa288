#include "judge/engine/fixture.h"

#include <algorithm>

namespace flumo::judge {

namespace {

void judge_tidiness(CaseContext& context, host::Host& host, const Ledger& before) {
    for (const host::Misuse& misuse : take_misuses(host))
        context.finding("no misuse of the host", misuse.text);
    for (const LedgerDifference& difference : differences(before, read_ledger(host)))
        context.finding("everything given back", difference.text);
}

std::vector<const host::Control*> controls_where(host::Host& host, bool (*holds)(const host::Control&),
                                                 const char* otherwise) {
    std::vector<const host::Control*> found;
    for (const host::Control& control : host.controls()) {
        if (holds(control)) found.push_back(&control);
    }
    if (found.empty()) throw Skipped{otherwise};
    return found;
}

}  // namespace

Fixture::Fixture(CaseContext& context, host::HostOptions options)
    : context_(context), module_(context.subject().module), host_(module_, std::move(options)) {}

void Fixture::start() {
    host_.start();
    at_start_ = read_ledger(host_);
}

void Fixture::write_off_losses() {
    lost_ = read_ledger(host_);
    for (const auto& [what, count] : at_start_)
        lost_[what] -= count;
}

void Fixture::set_down() {
    context_.step("set-down", [this] {
        host_.accounting().forget_misuses();
        host_.global_setdown();
        // What was lost may be given back at set-down; that is no finding.
        Ledger left = read_ledger(host_);
        for (auto& [what, count] : lost_)
            count = std::min(count, left[what]);
        judge_tidiness(context_, host_, lost_);
    });
}

void Fixture::step(const std::string& name, const std::function<void()>& body) {
    context_.step(name, [&] {
        host_.accounting().forget_misuses();
        const Ledger before = read_ledger(host_);
        body();
        judge_tidiness(context_, host_, before);
    });
}

void with_fixture(CaseContext& context, const std::function<void(Fixture&)>& body,
                  host::HostOptions options) {
    Fixture fixture(context, std::move(options));
    fixture.start();
    body(fixture);
    fixture.set_down();
}

std::vector<const host::Control*> arbitrary_controls(host::Host& host) {
    return controls_where(
        host, [](const host::Control& control) { return control.kind == host::ControlKind::kArbitrary; },
        "no control holds arbitrary data");
}

void for_each_arbitrary(Fixture& fixture, const std::string& name,
                        const std::function<void(const host::Control&)>& body) {
    for (const host::Control* control : arbitrary_controls(fixture.host()))
        fixture.step(name + "-" + std::to_string(control->index), [&] { body(*control); });
}

std::vector<const host::Control*> drawn_controls(host::Host& host) {
    return controls_where(
        host, [](const host::Control& control) { return control.has_value() && control.has_custom_ui(); },
        "no control draws itself");
}

}  // namespace flumo::judge
