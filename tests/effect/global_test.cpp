// The module's own life. These need a driver: global set-up starts a GL context.
#include "effect/entry/global.h"

#include <gmock/gmock.h>

#include <cstring>

#include "effect/entry/effect_main.h"
#include "effect/gpu/render_data.h"
#include "fake_host.h"

namespace flumo {
namespace {

using test::FakeHost;

class GlobalTest : public testing::Test {
  protected:
    PF_Err StartModule() { return Send(PF_Cmd_GLOBAL_SETUP); }
    PF_Err Send(PF_Cmd command) {
        return EffectMain(command, &host.in_data, &host.out_data, nullptr, nullptr, nullptr);
    }
    void ExpectIdentity() {
        EXPECT_EQ(host.out_data.my_version, 566784U);
        EXPECT_EQ(host.out_data.out_flags, 33588336);
        EXPECT_EQ(host.out_data.out_flags2, 142611456);
    }
    A_long PluginId(PF_Handle handle) {
        A_long id = 0;
        EXPECT_EQ(host.At(handle).bytes.size(), sizeof id);
        std::memcpy(&id, *handle, sizeof id);
        return id;
    }
    ~GlobalTest() override {
        host.in_data.global_data = nullptr;
        Send(PF_Cmd_GLOBAL_SETDOWN);
    }

    FakeHost host;
};

TEST_F(GlobalTest, SetsUpAndDownWithoutARest) {
    ASSERT_EQ(StartModule(), 0);
    ExpectIdentity();
    ASSERT_NE(host.out_data.global_data, nullptr);
    EXPECT_EQ(PluginId(host.out_data.global_data), 4711);
    EXPECT_EQ(host.Count("register Flumo"), 1);
    EXPECT_TRUE(host.AllGivenBack());
    EXPECT_NE(SharedCommonData, nullptr);

    host.in_data.global_data = host.out_data.global_data;
    host.in_data.sequence_data = host.out_data.sequence_data = host.NewHandle(1);
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETDOWN), 0);
    EXPECT_EQ(SharedCommonData, nullptr);
    EXPECT_TRUE(host.blocks.empty());
    EXPECT_EQ(host.Count("dispose"), 1);
    EXPECT_EQ(host.Count("util dispose"), 1) << "a sequence handle goes by the callback";
    EXPECT_EQ(host.out_data.sequence_data, nullptr);
    EXPECT_TRUE(host.AllGivenBack());
    host.in_data.sequence_data = nullptr;
}

TEST_F(GlobalTest, PremiereIsServedWithoutRegistration) {
    host.in_data.appl_id = 'P' << 24 | 'r' << 16 | 'M' << 8 | 'r';
    ASSERT_EQ(StartModule(), 0);
    EXPECT_EQ(host.Count("register Flumo"), 0);
    ASSERT_NE(host.out_data.global_data, nullptr);
    EXPECT_EQ(static_cast<A_u_long>(PluginId(host.out_data.global_data)), 0xA5A5A5A5) << "unwritten";
}

TEST_F(GlobalTest, LackOfAGlobalHandleShowsInTheResult) {
    struct Case {
        const char* name;
        int fail_new;
        int fail_lock;
        PF_Err register_result;
        const char* missing;
        PF_Err result;
    };
    for (const Case& c : {Case{"no memory", 1, 0, 0, "", 512}, Case{"no lock", 0, 1, 0, "", 0},
                          Case{"not registered", 0, 0, 77, "", 77},
                          Case{"no utility suite", 0, 0, 0, "AEGP Utility Suite 7", 516},
                          Case{"no handle suite", 0, 0, 0, "PF Handle Suite 2", 516}}) {
        SCOPED_TRACE(c.name);
        host.news = host.locks = 0;
        host.fail_new = c.fail_new;
        host.fail_lock = c.fail_lock;
        host.register_plugin_result = c.register_result;
        host.missing_suites = {c.missing};
        host.log.clear();
        EXPECT_EQ(StartModule(), c.result);
        EXPECT_EQ(host.out_data.global_data, nullptr);
        ExpectIdentity();
        EXPECT_EQ(host.Count("unlock"), host.Count("lock"));
        EXPECT_TRUE(host.held_suites.empty());
    }
}

TEST_F(GlobalTest, IdentityIsToldEvenWhenSetUpFails) {
    host.in_data.pica_basicP = nullptr;
    EXPECT_EQ(StartModule(), 516);
    ExpectIdentity();
    EXPECT_EQ(host.out_data.global_data, nullptr);
}

// Whatever is missing, the sequence handle goes back.
TEST_F(GlobalTest, SetdownReturnsTheSequenceHandleEvenWithoutSuites) {
    host.missing_suites = {"PF Handle Suite 2"};
    host.in_data.global_data = host.NewHandle(4);
    host.in_data.sequence_data = host.NewHandle(1);
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETDOWN), 516);
    EXPECT_EQ(host.Count("util dispose"), 1);
    EXPECT_EQ(host.blocks.size(), 1U) << "the global handle stays";
    host.in_data.sequence_data = nullptr;
}

}  // namespace
}  // namespace flumo
