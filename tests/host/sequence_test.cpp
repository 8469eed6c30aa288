// The life of an effect's global and sequence data in the host's hands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "host/instance.h"
#include "tests/host/scripted_effect.h"

namespace flumo::host::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::byte> bytes_of(const char* text) {
    const auto* first = reinterpret_cast<const std::byte*>(text);
    return {first, first + std::strlen(text)};
}

PF_Handle handle_with(EffectCall& call, const char* text) {
    const PF_Handle handle = call.in.utils->host_new_handle(std::strlen(text));
    std::memcpy(*handle, text, std::strlen(text));
    return handle;
}

/// Live data is "live", stored data "stored"; notes each command.
class Sequences : public testing::Test {
  protected:
    Sequences() {
        const auto replace = [this](const char* name, const char* text, bool dispose) {
            return [=, this](EffectCall& call) -> PF_Err {
                log.push_back(name);
                if (call.in.sequence_data)
                    seen.push_back(static_cast<const char*>(*call.in.sequence_data)[0]);
                if (dispose && call.in.sequence_data)
                    call.in.utils->host_dispose_handle(call.in.sequence_data);
                if (text) call.out.sequence_data = handle_with(call, text);
                return PF_Err_NONE;
            };
        };
        effect.on[PF_Cmd_SEQUENCE_SETUP] = replace("setup", "live", false);
        effect.on[PF_Cmd_SEQUENCE_RESETUP] = replace("resetup", "live", false);
        effect.on[PF_Cmd_SEQUENCE_FLATTEN] = replace("flatten", "stored", true);
        effect.on[PF_Cmd_GET_FLATTENED_SEQUENCE_DATA] = replace("copy", "stored", false);
        effect.on[PF_Cmd_SEQUENCE_SETDOWN] = replace("setdown", nullptr, true);
        host.start();
    }

    ScriptedEffect effect;
    Host host{effect.module};
    std::vector<std::string> log;
    std::string seen;
};

TEST_F(Sequences, FlattenAndResetupHandTheDataOver) {
    {
        auto instance = host.new_instance();
        EXPECT_EQ(instance->flatten(), bytes_of("stored"));
        instance->resetup();
        EXPECT_EQ(instance->flattened_copy(), bytes_of("stored"));
        instance->resetup(bytes_of("project"));
    }
    EXPECT_THAT(log, ElementsAre("setup", "flatten", "resetup", "copy", "setdown", "resetup", "setdown"));
    EXPECT_EQ(seen, "lsllpl") << "the first letter of what each command found";
    host.global_setdown();
    EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
    EXPECT_THAT(host.accounting().misuses(), IsEmpty());
}

TEST_F(Sequences, DuplicatesCopyValuesThroughTheEffect) {
    auto instance = host.new_instance();
    instance->set_keyframes(kAmount, {{0, 1.0}, {10, 2.0}});
    auto twin = instance->duplicate();
    EXPECT_EQ(std::get<double>(twin->value_at(kAmount, 5)), 1.5);
    EXPECT_NE(std::get<Arbitrary>(twin->value_at(kNumber, 0))->handle(),
              std::get<Arbitrary>(instance->value_at(kNumber, 0))->handle());
}

TEST_F(Sequences, RenderCopiesKnowNoSetUp) {
    auto instance = host.new_instance();
    instance->set(kAmount, 3.0);
    log.clear();
    seen.clear();
    const auto copy = instance->render_copy(bytes_of("project"));
    EXPECT_EQ(std::get<double>(copy->value_at(kAmount, 0)), 3);
    EXPECT_EQ(instance->render_copy({})->sequence_data(), nullptr);
    EXPECT_THAT(log, ElementsAre("resetup"));
    EXPECT_EQ(seen, "p");
}

TEST_F(Sequences, ErrorsComeOutAndLeaveNothing) {
    effect.on[PF_Cmd_SEQUENCE_FLATTEN] = [](EffectCall&) { return PF_Err_INTERNAL_STRUCT_DAMAGED; };
    auto instance = host.new_instance();
    const PF_Handle live = instance->sequence_data();
    EXPECT_THROW(instance->flatten(), HostError);
    EXPECT_EQ(instance->sequence_data(), live);
    instance.reset();
    effect.on[PF_Cmd_SEQUENCE_SETUP] = [](EffectCall&) { return PF_Err_OUT_OF_MEMORY; };
    EXPECT_THROW(host.new_instance(), HostError);
    effect.on.erase(PF_Cmd_SEQUENCE_SETUP);
    effect.on.erase(PF_Cmd_ARBITRARY_CALLBACK);
    log.clear();
    EXPECT_THROW(host.new_instance(), HostError) << "a default that cannot be copied";
    EXPECT_THAT(log, ElementsAre("setdown"));
}

TEST(Globals, DeclarationsThatDoNotMatchAreNoted) {
    ScriptedEffect effect;
    effect.controls = {effect.controls.back()};
    const Handler declare = effect.on[PF_Cmd_PARAMS_SETUP];
    effect.on[PF_Cmd_PARAMS_SETUP] = [&](EffectCall& call) {
        const PF_Err error = declare(call);
        call.out.num_params = 5;
        return error;
    };
    Host host(effect.module);
    host.start();
    EXPECT_THAT(host.accounting().misuse_texts(),
                ElementsAre(HasSubstr("ends a group"), "announced 5 parameters and declared 1 controls"));
}

}  // namespace
}  // namespace flumo::host::test
