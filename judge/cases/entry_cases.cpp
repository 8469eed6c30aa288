// Level 1: what an effect says about itself, and that it can be set up and down.
#include <algorithm>
#include <limits>

#include "judge/cases/case_table.h"
#include "judge/engine/expectation.h"
#include "judge/engine/ledger.h"
#include "judge/engine/stage.h"
#include "judge/windows_module/property_list.h"

namespace flumo::judge {

namespace {

/// Characters that the host keeps of a name.
constexpr std::size_t kLongestName = 31;
constexpr int kRounds = 3;

void judge_name(Trial& trial, const char* which, const std::string& text) {
    trial.expect(!text.empty() && text.size() <= kLongestName, std::string(which) + " of 1 to 31 characters",
                 "\"" + text + "\"");
}

void judge_number(Trial& trial, const std::string& what, int64_t expected, int64_t seen) {
    trial.expect(expected == seen, what + " " + std::to_string(expected), std::to_string(seen));
}

void judge_text(Trial& trial, const std::string& what, const std::string& expected, const std::string& seen) {
    trial.expect(expected == seen, what + " \"" + expected + "\"", "\"" + seen + "\"");
}

void judge_registration(Trial& trial, const host::Registration& registration) {
    judge_name(trial, "a name", registration.name);
    judge_name(trial, "a match name", registration.match_name);
    judge_name(trial, "a category", registration.category);
    judge_text(trial, "the entry point", "EffectMain", registration.entry_point);
    judge_number(trial, "the kind of an effect,", kEffectPluginKind, registration.kind);
    trial.expect(registration.api_major >= PF_AE220_PLUG_IN_VERSION, "interface version 13 or later",
                 std::to_string(registration.api_major) + "." + std::to_string(registration.api_minor));
}

void judge_same(Trial& trial, const host::EffectIdentity& first, const host::EffectIdentity& again) {
    judge_number(trial, "at each set-up version", first.version, again.version);
    judge_number(trial, "at each set-up flags", first.flags, again.flags);
    judge_number(trial, "at each set-up second flags", first.flags2, again.flags2);
}

/// Set-up and set-down by itself. Gives what the effect said.
host::EffectIdentity set_up_and_down(Trial& trial, host::Host& host, bool with_controls) {
    host.global_setup();
    const host::EffectIdentity identity = host.identity();
    if (with_controls) {
        host.params_setup();
        host.accounting().forget_misuses();
        const auto instance = host.new_instance();
    }
    host.global_setdown();
    for (const std::string& misuse : take_misuses(host))
        trial.finding("no misuse of the host", misuse);
    for (const std::string& difference : differences({}, read_ledger(host)))
        trial.finding("everything given back at set-down", difference);
    return identity;
}

void compare_with_list(Trial& trial, const PropertyList& list, const host::Registration& registration,
                       const host::EffectIdentity& identity) {
    judge_text(trial, "in the list, as registered, name", registration.name, list.name);
    judge_text(trial, "in the list, as registered, match name", registration.match_name, list.match_name);
    judge_text(trial, "in the list, as registered, category", registration.category, list.category);
    judge_text(trial, "in the list, as registered, entry point", registration.entry_point, list.entry_point);
    judge_number(trial, "in the list, as registered, kind", registration.kind, list.kind);
    judge_number(trial, "in the list, as global set-up says, version", identity.version, list.version);
    judge_number(trial, "in the list, as global set-up says, flags", identity.flags, list.flags);
    judge_number(trial, "in the list, as global set-up says, second flags", identity.flags2, list.flags2);
}

}  // namespace

void play_load(Trial& trial) {
    try {
        const host::Module module(trial.subject().module);
    } catch (const host::ModuleError& error) {
        trial.finding("a module with both exports", error.what());
    }
}

void play_registration(Trial& trial) {
    const host::Module module(trial.subject().module);
    trial.step("texts", [&] { judge_registration(trial, module.register_plugin()); });
}

void play_resource(Trial& trial) {
    const Subject& subject = trial.subject();
    const bool is_windows = is_windows_module(subject.module);
    if (!is_windows && subject.resource.empty()) throw Skipped{"no property list is given"};
    PropertyList list;
    trial.step("list", [&] {
        list = read_property_list(is_windows ? subject.module : subject.resource);
        judge_number(trial, "the kind of an effect,", kEffectPluginKind, list.kind);
        trial.expect(list.version != 0, "a version", "0");
    });
    if (is_windows) {
        trial.step("exports", [&] { judge_exports(trial, subject.module, list.entry_point); });
        return;
    }
    trial.step("agreement", [&] {
        list = read_property_list(subject.resource);
        const host::Module module(subject.module);
        host::Host host(module);
        host.global_setup();
        compare_with_list(trial, list, module.register_plugin(), host.identity());
    });
}

void play_about(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        stage.step("text", [&] {
            stage.trial().expect(!stage.host().about().empty(), "a text about the effect", "none");
        });
    });
}

void play_global_setup(Trial& trial) {
    const host::Module module(trial.subject().module);
    trial.step("flags", [&] {
        host::Host host(module);
        const host::EffectIdentity identity = set_up_and_down(trial, host, false);
        trial.expect(identity.version != 0, "a version", "0");
        const bool smart = (identity.flags2 & PF_OutFlag2_SUPPORTS_SMART_RENDER) != 0;
        const bool floats = (identity.flags2 & PF_OutFlag2_FLOAT_COLOR_AWARE) != 0;
        trial.expect(smart || !floats, "smart rendering, which float frames need", "floats without it");
        trial.expect(identity.message.empty(), "no message to the user", identity.message);
        judge_same(trial, identity, set_up_and_down(trial, host, false));
    });
}

void play_unknown_commands(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        constexpr PF_Cmd kCommands[] = {-1,
                                        PF_Cmd_UNUSED_0,
                                        25,
                                        77,
                                        1000,
                                        std::numeric_limits<PF_Cmd>::min(),
                                        std::numeric_limits<PF_Cmd>::max()};
        for (const PF_Cmd command : kCommands) {
            stage.step(std::to_string(command), [&] {
                const PF_Err error = stage.host().send(command).error;
                stage.trial().expect(error == PF_Err_NONE, "no error", host::error_name(error));
            });
        }
    });
}

void play_set_up_and_down(Trial& trial) {
    const host::Module module(trial.subject().module);
    trial.step("after-effects", [&] {
        host::Host host(module);
        for (int round = 0; round < kRounds; ++round)
            set_up_and_down(trial, host, true);
    });
    trial.step("premiere", [&] {
        host::Host host(module, {.appl_id = kPremiereApplId});
        try {
            set_up_and_down(trial, host, true);
        } catch (const host::HostError& error) {
            trial.note("to run in Premiere Pro, too", error.what());
        }
    });
}

void play_expected_identity(Trial& trial) {
    const Expectation expected = read_expectation(trial.subject().expectation);
    if (!expected.has_identity()) throw Skipped{"nothing particular is expected"};
    const host::Module module(trial.subject().module);
    trial.step("identity", [&] {
        host::Host host(module);
        host.global_setup();
        for (const Mismatch& mismatch :
             identity_mismatches(expected, module.register_plugin(), host.identity()))
            trial.finding(mismatch.expected, mismatch.seen);
    });
}

}  // namespace flumo::judge
