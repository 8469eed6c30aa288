// What an effect does wrong is noted, each misuse in its own words.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/instance.h"
#include "tests/host/scripted_effect.h"

namespace flumo::host::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

struct Offence {
    const char* trace;
    void (*commit)(EffectCall& call);
};

PF_ParamDef checked_out(EffectCall& call) {
    PF_ParamDef def{};
    call.in.inter.checkout_param(call.in.effect_ref, kAmount, 0, 1, 1, &def);
    return def;
}

PF_Handle new_handle(EffectCall& call, A_HandleSize size) {
    return call.in.utils->host_new_handle(size);
}

PF_EffectWorld* pixels_of(EffectCall& call, A_long id) {
    PF_EffectWorld* world = nullptr;
    call.render().cb->checkout_layer_pixels(call.in.effect_ref, id, &world);
    return world;
}

/// What is noted as a misuse.
constexpr Offence kMisuses[] = {
    {"unlocked a handle",
     [](EffectCall& c) {
         const PF_Handle handle = new_handle(c, 4);
         c.in.utils->host_unlock_handle(handle);
         c.in.utils->host_dispose_handle(handle);
     }},
    {"disposed of a locked handle",
     [](EffectCall& c) {
         const PF_Handle handle = new_handle(c, 4);
         c.in.utils->host_lock_handle(handle);
         c.in.utils->host_dispose_handle(handle);
     }},
    {"wrote past the end",
     [](EffectCall& c) {
         const PF_Handle handle = new_handle(c, 4);
         static_cast<char*>(*handle)[4] = 0;
         c.in.utils->host_dispose_handle(handle);
     }},
    {"checked in a control",
     [](EffectCall& c) {
         PF_ParamDef def = checked_out(c);
         c.in.inter.checkin_param(c.in.effect_ref, &def);
         c.in.inter.checkin_param(c.in.effect_ref, &def);
     }},
    {"checked in a layer", [](EffectCall& c) { c.render().cb->checkin_layer_pixels(c.in.effect_ref, 0); }},
    {"pixels that pre-render did not ask for", [](EffectCall& c) { pixels_of(c, 9); }},
    {"released suite \"PF World Suite\" version 2",
     [](EffectCall& c) { c.release(kPFWorldSuite, kPFWorldSuiteVersion2); }},
    {"a foreign effect reference", [](EffectCall& c) { c.in.inter.abort(nullptr); }},
    {"does not offer", [](EffectCall& c) { c.in.utils->fill(c.in.effect_ref, nullptr, nullptr, nullptr); }},
    {"not this host's",
     [](EffectCall& c) {
         PF_EffectWorld world{};
         PF_Pixel8* pixels = nullptr;
         c.in.utils->get_pixel_data8(&world, nullptr, &pixels);
     }},
};

/// Renders once with an effect that does this; errors of the effect are no matter here.
void commit(const Offence& offence, ScriptedEffect& effect, Host& host) {
    effect.on[PF_Cmd_SMART_RENDER] = [&](EffectCall& call) {
        offence.commit(call);
        return PF_Err_NONE;
    };
    try {
        host.new_instance()->render({.width = 4, .height = 4});
    } catch (const HostError&) {
    }
}

class Offences : public testing::Test {
  protected:
    Offences() { host.start(); }

    ScriptedEffect effect;
    Host host{effect.module};
};

TEST_F(Offences, AreNotedOnceEach) {
    for (const Offence& misuse : kMisuses) {
        host.accounting().forget_misuses();
        commit(misuse, effect, host);
        EXPECT_THAT(host.accounting().misuse_texts(), ElementsAre(HasSubstr(misuse.trace)));
        EXPECT_TRUE(host.accounting().idle()) << misuse.trace << ": " << host.accounting().describe();
    }
}

TEST_F(Offences, MessagesAreKeptAndCarriedByTheError) {
    effect.on[PF_Cmd_SMART_RENDER] = [](EffectCall& call) -> PF_Err {
        call.in.utils->ansi.sprintf(call.out.return_msg, "no %s", "paint");
        call.out.out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
        return PF_Err_OUT_OF_MEMORY;
    };
    EXPECT_THAT(
        [&] { host.new_instance()->render({.width = 4, .height = 4}); },
        ThrowsMessage<HostError>("PF_Cmd_SMART_RENDER failed with 4 (PF_Err_OUT_OF_MEMORY): no paint"));
    EXPECT_THAT(host.accounting().messages(), ElementsAre("no paint"));
}

}  // namespace
}  // namespace flumo::host::test
