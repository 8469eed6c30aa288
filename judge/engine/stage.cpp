#include "judge/engine/stage.h"

#include <algorithm>

namespace flumo::judge {

namespace {

void judge_tidiness(Trial& trial, host::Host& host, const Ledger& before) {
    for (const std::string& misuse : take_misuses(host))
        trial.finding("no misuse of the host", misuse);
    for (const std::string& difference : differences(before, read_ledger(host)))
        trial.finding("everything given back", difference);
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

Stage::Stage(Trial& trial, host::HostOptions options)
    : trial_(trial), module_(trial.subject().module), host_(module_, std::move(options)) {}

void Stage::start() {
    host_.start();
    at_start_ = read_ledger(host_);
}

void Stage::write_off_losses() {
    lost_ = read_ledger(host_);
    for (const auto& [what, count] : at_start_)
        lost_[what] -= count;
}

void Stage::set_down() {
    trial_.step("set-down", [this] {
        host_.accounting().forget_misuses();
        host_.global_setdown();
        // Nobody minds what comes back after all.
        Ledger left = read_ledger(host_);
        for (auto& [what, count] : lost_)
            count = std::min(count, left[what]);
        judge_tidiness(trial_, host_, lost_);
    });
}

void Stage::step(const std::string& name, const std::function<void()>& body) {
    trial_.step(name, [&] {
        host_.accounting().forget_misuses();
        const Ledger before = read_ledger(host_);
        body();
        judge_tidiness(trial_, host_, before);
    });
}

void on_stage(Trial& trial, const std::function<void(Stage&)>& body, host::HostOptions options) {
    Stage stage(trial, std::move(options));
    stage.start();
    body(stage);
    stage.set_down();
}

std::vector<const host::Control*> arbitrary_controls(host::Host& host) {
    return controls_where(
        host, [](const host::Control& control) { return control.kind == host::ControlKind::kArbitrary; },
        "no control holds arbitrary data");
}

std::vector<const host::Control*> drawn_controls(host::Host& host) {
    return controls_where(
        host, [](const host::Control& control) { return control.has_value() && control.has_custom_ui(); },
        "no control draws itself");
}

}  // namespace flumo::judge
