// Level 1: what an effect registers and announces, and that it can be set up and down.
#include <algorithm>
#include <limits>

#include "judge/cases/case_table.h"
#include "judge/engine/expectation.h"
#include "judge/engine/fixture.h"
#include "judge/engine/ledger.h"
#include "judge/windows_module/property_list.h"

namespace flumo::judge {

namespace {

/// Characters that the host keeps of a name.
constexpr size_t kLongestName = 31;
constexpr int kRounds = 3;

void judge_name(CaseContext& context, const char* which, const std::string& text) {
    context.expect(!text.empty() && text.size() <= kLongestName,
                   std::string(which) + " of 1 to 31 characters", "\"" + text + "\"");
}

void judge_number(CaseContext& context, const std::string& what, int64_t expected, int64_t seen) {
    context.expect(expected == seen, what + " " + std::to_string(expected), std::to_string(seen));
}

void judge_text(CaseContext& context, const std::string& what, const std::string& expected,
                const std::string& seen) {
    context.expect(expected == seen, what + " \"" + expected + "\"", "\"" + seen + "\"");
}

void judge_registration(CaseContext& context, const host::Registration& registration) {
    judge_name(context, "a name", registration.name);
    judge_name(context, "a match name", registration.match_name);
    judge_name(context, "a category", registration.category);
    judge_text(context, "the entry point", "EffectMain", registration.entry_point);
    judge_number(context, "the kind of an effect,", kEffectPluginKind, registration.kind);
    context.expect(registration.api_major >= PF_AE220_PLUG_IN_VERSION, "interface version 13 or later",
                   std::to_string(registration.api_major) + "." + std::to_string(registration.api_minor));
}

void judge_same(CaseContext& context, const host::EffectIdentity& first, const host::EffectIdentity& again) {
    judge_number(context, "at each set-up version", first.version, again.version);
    judge_number(context, "at each set-up flags", first.flags, again.flags);
    judge_number(context, "at each set-up second flags", first.flags2, again.flags2);
}

/// Set-up and set-down alone. Returns what the effect announced.
host::EffectIdentity set_up_and_down(CaseContext& context, host::Host& host, bool with_controls) {
    host.global_setup();
    const host::EffectIdentity identity = host.identity();
    if (with_controls) {
        host.params_setup();
        host.accounting().forget_misuses();
        const auto instance = host.new_instance();
    }
    host.global_setdown();
    for (const host::Misuse& misuse : take_misuses(host))
        context.finding("no misuse of the host", misuse.text);
    for (const LedgerDifference& difference : differences({}, read_ledger(host)))
        context.finding("everything given back at set-down", difference.text);
    return identity;
}

void compare_with_list(CaseContext& context, const PropertyList& list, const host::Registration& registration,
                       const host::EffectIdentity& identity) {
    judge_text(context, "in the list, as registered, name", registration.name, list.name);
    judge_text(context, "in the list, as registered, match name", registration.match_name, list.match_name);
    judge_text(context, "in the list, as registered, category", registration.category, list.category);
    judge_text(context, "in the list, as registered, entry point", registration.entry_point,
               list.entry_point);
    judge_number(context, "in the list, as registered, kind", registration.kind, list.kind);
    judge_number(context, "in the list, as global set-up says, version", identity.version, list.version);
    judge_number(context, "in the list, as global set-up says, flags", identity.flags, list.flags);
    judge_number(context, "in the list, as global set-up says, second flags", identity.flags2, list.flags2);
}

}  // namespace

void play_load(CaseContext& context) {
    try {
        const host::Module module(context.subject().module);
    } catch (const host::ModuleError& error) {
        context.finding("a module with both exports", error.what());
    }
}

void play_registration(CaseContext& context) {
    const host::Module module(context.subject().module);
    context.step("texts", [&] { judge_registration(context, module.register_plugin()); });
}

void play_resource(CaseContext& context) {
    const Subject& subject = context.subject();
    const bool is_windows = is_windows_module(subject.module);
    if (!is_windows && subject.resource.empty()) throw Skipped{"no property list is given"};
    PropertyList list;
    context.step("list", [&] {
        list = read_property_list(is_windows ? subject.module : subject.resource);
        judge_number(context, "the kind of an effect,", kEffectPluginKind, list.kind);
        context.expect(list.version != 0, "a version", "0");
    });
    if (is_windows) {
        context.step("exports", [&] { judge_exports(context, subject.module, list.entry_point); });
        return;
    }
    context.step("agreement", [&] {
        list = read_property_list(subject.resource);
        const host::Module module(subject.module);
        host::Host host(module);
        host.global_setup();
        compare_with_list(context, list, module.register_plugin(), host.identity());
    });
}

void play_about(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        fixture.step("text", [&] {
            fixture.context().expect(!fixture.host().about().empty(), "a text about the effect", "none");
        });
    });
}

void play_global_setup(CaseContext& context) {
    const host::Module module(context.subject().module);
    context.step("flags", [&] {
        host::Host host(module);
        const host::EffectIdentity identity = set_up_and_down(context, host, false);
        context.expect(identity.version != 0, "a version", "0");
        const bool smart = (identity.flags2 & PF_OutFlag2_SUPPORTS_SMART_RENDER) != 0;
        const bool floats = (identity.flags2 & PF_OutFlag2_FLOAT_COLOR_AWARE) != 0;
        context.expect(smart || !floats, "smart rendering, which float frames need", "floats without it");
        context.expect(identity.message.empty(), "no message to the user", identity.message);
        judge_same(context, identity, set_up_and_down(context, host, false));
    });
}

void play_unknown_commands(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        constexpr PF_Cmd kCommands[] = {-1,
                                        PF_Cmd_UNUSED_0,
                                        25,
                                        77,
                                        1000,
                                        std::numeric_limits<PF_Cmd>::min(),
                                        std::numeric_limits<PF_Cmd>::max()};
        for (const PF_Cmd command : kCommands) {
            fixture.step(std::to_string(command), [&] {
                const PF_Err error = fixture.host().send(command).error;
                fixture.context().expect(error == PF_Err_NONE, "no error", host::error_name(error));
            });
        }
    });
}

void play_set_up_and_down(CaseContext& context) {
    const host::Module module(context.subject().module);
    context.step("after-effects", [&] {
        host::Host host(module);
        for (int round = 0; round < kRounds; ++round)
            set_up_and_down(context, host, true);
    });
    context.step("premiere", [&] {
        host::Host host(module, {.appl_id = kPremiereApplId});
        try {
            set_up_and_down(context, host, true);
        } catch (const host::HostError& error) {
            context.note("to run in Premiere Pro, too", error.what());
        }
    });
}

void play_expected_identity(CaseContext& context) {
    const Expectation expected = read_expectation(context.subject().expectation);
    if (!expected.has_identity()) throw Skipped{"nothing particular is expected"};
    const host::Module module(context.subject().module);
    context.step("identity", [&] {
        host::Host host(module);
        host.global_setup();
        for (const Mismatch& mismatch :
             identity_mismatches(expected, module.register_plugin(), host.identity()))
            context.finding(mismatch.expected, mismatch.seen);
    });
}

}  // namespace flumo::judge
