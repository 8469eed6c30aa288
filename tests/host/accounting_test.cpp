// What an effect leaves behind or does wrong is found, each by its own trace.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/instance.h"
#include "tests/host/scripted_effect.h"

namespace flumo::host::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Offence {
    const char* trace;
    Handler handler;
};

PF_ParamDef checked_out(EffectCall& call, int index = kAmount) {
    PF_ParamDef def{};
    call.in.inter.checkout_param(call.in.effect_ref, index, 0, 1, 1, &def);
    return def;
}

/// What stays lent after a render; the trace is a piece of describe().
const Offence kLeaks[] = {
    {"of 5 bytes is alive, locked 0",
     [](EffectCall& c) {
         c.in.utils->host_new_handle(5);
         return PF_Err_NONE;
     }},
    {"of 6 bytes is alive, locked 1",
     [](EffectCall& c) {
         c.in.utils->host_lock_handle(c.in.utils->host_new_handle(6));
         return PF_Err_NONE;
     }},
    {"1 control(s) checked out",
     [](EffectCall& c) {
         checked_out(c);
         return PF_Err_NONE;
     }},
    {"1 layer(s) checked out",
     [](EffectCall& c) {
         PF_EffectWorld* world = nullptr;
         return c.render().cb->checkout_layer_pixels(c.in.effect_ref, 0, &world);
     }},
    {"\"PF World Suite\" version 2 is acquired 1",
     [](EffectCall& c) {
         c.acquire<PF_WorldSuite2>(kPFWorldSuite, kPFWorldSuiteVersion2);
         return PF_Err_NONE;
     }},
};

/// What is noted as a misuse.
const Offence kMisuses[] = {
    {"unlocked a handle",
     [](EffectCall& c) {
         const PF_Handle handle = c.in.utils->host_new_handle(4);
         c.in.utils->host_unlock_handle(handle);
         c.in.utils->host_dispose_handle(handle);
         return PF_Err_NONE;
     }},
    {"disposed of a handle that does not live",
     [](EffectCall& c) {
         const PF_Handle handle = c.in.utils->host_new_handle(4);
         c.in.utils->host_dispose_handle(handle);
         c.in.utils->host_dispose_handle(handle);
         return PF_Err_NONE;
     }},
    {"disposed of a locked handle",
     [](EffectCall& c) {
         const PF_Handle handle = c.in.utils->host_new_handle(4);
         c.in.utils->host_lock_handle(handle);
         c.in.utils->host_dispose_handle(handle);
         return PF_Err_NONE;
     }},
    {"wrote behind the end",
     [](EffectCall& c) {
         const PF_Handle handle = c.in.utils->host_new_handle(4);
         static_cast<char*>(*handle)[4] = 0;
         c.in.utils->host_dispose_handle(handle);
         return PF_Err_NONE;
     }},
    {"checked in a control",
     [](EffectCall& c) {
         PF_ParamDef def = checked_out(c);
         c.in.inter.checkin_param(c.in.effect_ref, &def);
         return c.in.inter.checkin_param(c.in.effect_ref, &def);
     }},
    {"checked in a layer",
     [](EffectCall& c) { return c.render().cb->checkin_layer_pixels(c.in.effect_ref, 0); }},
    {"pixels that pre-render did not ask for",
     [](EffectCall& c) {
         PF_EffectWorld* world = nullptr;
         return c.render().cb->checkout_layer_pixels(c.in.effect_ref, 9, &world);
     }},
    {"released suite \"PF World Suite\" version 2",
     [](EffectCall& c) {
         c.release(kPFWorldSuite, kPFWorldSuiteVersion2);
         return PF_Err_NONE;
     }},
    {"a foreign effect reference", [](EffectCall& c) { return c.in.inter.abort(nullptr); }},
    {"does not offer",
     [](EffectCall& c) { return c.in.utils->fill(c.in.effect_ref, nullptr, nullptr, nullptr); }},
    {"not this host's",
     [](EffectCall& c) {
         PF_EffectWorld world{};
         PF_Pixel8* pixels = nullptr;
         return c.in.utils->get_pixel_data8(&world, nullptr, &pixels);
     }},
    {"an exception left", [](EffectCall&) -> PF_Err { throw 3.5; }},
};

class Offences : public testing::Test {
  protected:
    Offences() { host.start(); }

    /// Renders once with the handler; errors of the effect are no matter here.
    void commit(const Handler& handler) {
        effect.on[PF_Cmd_SMART_RENDER] = handler;
        auto instance = host.new_instance();
        try {
            instance->render({.width = 4, .height = 4});
        } catch (const HostError&) {
        }
    }

    ScriptedEffect effect;
    Host host{effect.module};
};

TEST(Accounting, FindsEveryKindOfLeak) {
    for (const Offence& leak : kLeaks) {
        ScriptedEffect effect;
        Host host(effect.module);
        host.start();
        effect.on[PF_Cmd_SMART_RENDER] = leak.handler;
        host.new_instance()->render({.width = 4, .height = 4});
        host.global_setdown();
        EXPECT_FALSE(host.accounting().clean()) << leak.trace;
        EXPECT_THAT(host.accounting().describe(), HasSubstr(leak.trace));
        EXPECT_THAT(host.accounting().misuses(), IsEmpty()) << leak.trace;
    }
}

TEST_F(Offences, AreNotedInWords) {
    for (const Offence& misuse : kMisuses) {
        host.accounting().forget_misuses();
        commit(misuse.handler);
        EXPECT_THAT(host.accounting().misuses(), ElementsAre(HasSubstr(misuse.trace)));
        EXPECT_TRUE(host.accounting().idle()) << misuse.trace << ": " << host.accounting().describe();
    }
}

TEST_F(Offences, AWellBehavedLifeLeavesNothing) {
    commit(plain_render);
    EXPECT_TRUE(host.accounting().idle());
    EXPECT_FALSE(host.accounting().clean()) << "the control's default lives until set-down";
    host.global_setdown();
    EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
    EXPECT_THAT(host.accounting().misuses(), IsEmpty());
}

TEST_F(Offences, MessagesAreKeptAndCarriedByTheError) {
    effect.on[PF_Cmd_SMART_RENDER] = [](EffectCall& call) -> PF_Err {
        call.in.utils->ansi.sprintf(call.out.return_msg, "no %s", "paint");
        call.out.out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
        return PF_Err_OUT_OF_MEMORY;
    };
    try {
        host.new_instance()->render({.width = 4, .height = 4});
        FAIL() << "the error was swallowed";
    } catch (const HostError& error) {
        EXPECT_EQ(error.code(), PF_Err_OUT_OF_MEMORY);
        EXPECT_STREQ(error.what(), "PF_Cmd_SMART_RENDER failed with 4 (PF_Err_OUT_OF_MEMORY): no paint");
    }
    EXPECT_THAT(host.accounting().messages(), ElementsAre("no paint"));
}

TEST_F(Offences, EveryCallIsCountedAndCanFail) {
    std::vector<PF_Err> answers;
    const Handler probe = [&](EffectCall& call) -> PF_Err {
        answers.clear();
        PF_ParamDef def{};
        answers.push_back(call.in.inter.checkout_param(call.in.effect_ref, kAmount, 0, 1, 1, &def));
        if (!answers[0]) call.in.inter.checkin_param(call.in.effect_ref, &def);
        const PF_Handle handle = call.in.utils->host_new_handle(4);
        answers.push_back(handle ? 0 : 4);
        if (handle) call.in.utils->host_dispose_handle(handle);
        const void* suite = nullptr;
        answers.push_back(call.in.pica_basicP->AcquireSuite(kPFANSISuite, kPFANSISuiteVersion1, &suite));
        answers.push_back(suite ? 0 : 516);
        if (suite) call.release(kPFANSISuite, kPFANSISuiteVersion1);
        return PF_Err_NONE;
    };
    effect.on[PF_Cmd_SMART_RENDER] = probe;
    auto instance = host.new_instance();
    host.faults().start_recording();
    instance->render({.width = 4, .height = 4});
    const auto calls = host.faults().stop_recording();
    EXPECT_THAT(calls, ElementsAre(Callback::kCheckoutLayer, Callback::kCheckoutParam,
                                   Callback::kCheckinParam, Callback::kNewHandle, Callback::kDisposeHandle,
                                   Callback::kAcquireSuite, Callback::kReleaseSuite));
    const auto answers_when = [&](uint64_t ordinal, FaultMode mode) {
        host.faults().fail(ordinal, mode, 77);
        instance->render({.width = 4, .height = 4});
        EXPECT_TRUE(host.faults().happened());
        host.faults().clear();
        return answers;
    };
    EXPECT_THAT(answers_when(1, FaultMode::kError), ElementsAre(77, 0, 0, 0));
    EXPECT_THAT(answers_when(3, FaultMode::kNull), ElementsAre(0, 4, 0, 0));
    EXPECT_THAT(answers_when(5, FaultMode::kError), ElementsAre(0, 0, 77, 516));
    EXPECT_THAT(answers_when(5, FaultMode::kNull), ElementsAre(0, 0, 0, 516));
    host.accounting().forget_misuses();
    EXPECT_THAT(answers_when(5, FaultMode::kErrorWithResult), ElementsAre(0, 0, 77, 0));
    EXPECT_THAT(host.accounting().misuses(), ElementsAre(HasSubstr("which is not acquired")));
    host.faults().fail(0, FaultMode::kError, 513);
    EXPECT_THROW(instance->render({.width = 4, .height = 4}), HostError) << "pre-render's only call";
    EXPECT_TRUE(host.accounting().idle());
}

TEST(HostOptions, DecideWhatAnEffectFinds) {
    ScriptedEffect effect;
    A_AppID application = 0;
    const void* handles = nullptr;
    const void* ansi = nullptr;
    effect.on[PF_Cmd_GLOBAL_SETUP] = [&](EffectCall& call) -> PF_Err {
        application = call.in.appl_id;
        if (!call.in.pica_basicP) return PF_Err_BAD_CALLBACK_PARAM;
        handles = call.acquire<void>(kPFHandleSuite, kPFHandleSuiteVersion1);
        ansi = call.acquire<void>(kPFANSISuite, kPFANSISuiteVersion1);
        EXPECT_EQ(call.acquire<void>(kPFHandleSuite, 1), nullptr) << "another version is another suite";
        EXPECT_EQ(call.acquire<void>(kPFAppSuite, kPFAppSuiteVersion4), nullptr) << "there is no panel";
        call.out.my_version = 5;
        return PF_Err_NONE;
    };
    Host premiere(effect.module, {.appl_id = kPremiereApplId, .missing_suites = {{kPFANSISuite, 1}}});
    premiere.global_setup();
    EXPECT_EQ(application, kPremiereApplId);
    EXPECT_NE(handles, nullptr);
    EXPECT_EQ(ansi, nullptr);
    EXPECT_EQ(premiere.identity().version, 5u);
    Host bare(effect.module, {.basic_suite = false});
    EXPECT_THROW(bare.global_setup(), HostError);
}

}  // namespace
}  // namespace flumo::host::test
