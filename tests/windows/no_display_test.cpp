// A machine that has no display to make a window on, and so no OpenGL.
#include <gmock/gmock.h>

#include "tests/windows/answers.h"
#include "tests/windows/windows_module.h"

namespace flumo::tests {
namespace {

TEST(NoDisplay, SetUpIsRefusedWithOutOfMemoryAndFlagsStand) {
    ASSERT_EQ(CreateWindowExA(0, "STATIC", "", 0, 0, 0, 8, 8, nullptr, nullptr, nullptr, nullptr), nullptr)
        << "there is a display after all";
    const WindowsModule windows;
    host::Host host(windows.module());
    for (int attempt = 0; attempt < 3; ++attempt) {
        EXPECT_EQ(set_up(host), kOutOfMemory);
        EXPECT_TRUE(knows_identity(host));
        EXPECT_EQ(host.identity().message, "");
        EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
    }
    EXPECT_EQ(windows.module().register_plugin().name, "Flumo") << "what needs no OpenGL still works";
}

}  // namespace
}  // namespace flumo::tests
