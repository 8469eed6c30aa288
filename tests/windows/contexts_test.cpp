// How the module makes, joins, keeps and ends its contexts, seen from the system's side.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tests/windows/answers.h"
#include "tests/windows/windows_module.h"

namespace flumo::tests {
namespace {

using testing::ElementsAre;

// What follows the call that failed: nothing but letting go of the context.
void expect_stopped_at(const std::string& failed) {
    auto calls = spy::calls();
    const auto at = std::find_if(calls.begin(), calls.end(), [&](const std::string& call) {
        return call.find(failed) != std::string::npos;
    });
    ASSERT_NE(at, calls.end());
    EXPECT_THAT(std::vector(at + 1, calls.end()), testing::Each("wglMakeCurrent - -"));
}

class Contexts : public testing::Test {
  protected:
    WindowsModule windows_;
    host::Host host_{windows_.module()};
};

std::vector<std::string> calls_since(const std::function<void()>& action) {
    spy::forget_calls();
    action();
    return spy::calls();
}

TEST_F(Contexts, LifeOfRootAndThreadContextKeepsItsOrder) {
    EXPECT_THAT(
        calls_since([&] { host_.start(); }),
        ElementsAre("RegisterClassExA AESDK_OpenGL_Flumo_Win_Class0", "CreateWindowExA w0", "GetDC w0 d0",
                    "ChoosePixelFormat d0", "SetPixelFormat d0", "wglCreateContext d0 c0",
                    "wglMakeCurrent d0 c0", "wglGetProcAddress wglGetExtensionsStringARB",
                    "wglGetExtensionsStringARB d0", "wglGetProcAddress wglCreateContextAttribsARB",
                    "wglMakeCurrent d0 c0", "wglMakeCurrent - -"));

    auto instance = host_.new_instance();
    const auto render = [&] { instance->render(tiny_frame()); };
    EXPECT_THAT(calls_since(render),
                ElementsAre("RegisterClassExA AESDK_OpenGL_Flumo_Win_Class1", "CreateWindowExA w1",
                            "GetDC w1 d1", "ChoosePixelFormat d1", "SetPixelFormat d1",
                            "wglCreateContextAttribsARB d1 - 8337 3 8338 3 c1", "wglMakeCurrent d1 c1",
                            "wglShareLists c0 c1", "wglMakeCurrent d1 c1", "wglMakeCurrent d1 c1",
                            "wglMakeCurrent - -"))
        << "a thread's first frame";
    EXPECT_THAT(calls_since(render), ElementsAre("wglMakeCurrent d1 c1", "wglMakeCurrent - -"))
        << "a thread's later frames";

    instance.reset();
    EXPECT_THAT(calls_since([&] { host_.global_setdown(); }),
                ElementsAre("wglMakeCurrent d1 c1", "wglMakeCurrent - -", "wglDeleteContext c1",
                            "ReleaseDC w1 d1", "UnregisterClassA AESDK_OpenGL_Flumo_Win_Class1 -",
                            "wglMakeCurrent - -", "wglDeleteContext c0", "ReleaseDC w0 d0",
                            "UnregisterClassA AESDK_OpenGL_Flumo_Win_Class0 -"));
    EXPECT_EQ(spy::wrong_shares(), 0);
    EXPECT_EQ(spy::live_contexts(), 0);
}

// A context of the host's own, on a window of its own, current on the calling thread while this lives.
class CallersContext {
  public:
    CallersContext()
        : window_(CreateWindowExA(0, "STATIC", "", 0, 0, 0, 8, 8, nullptr, nullptr, nullptr, nullptr)),
          dc_(GetDC(window_)) {
        PIXELFORMATDESCRIPTOR format = {};
        format.nSize = sizeof(format);
        format.nVersion = 1;
        format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
        SetPixelFormat(dc_, ChoosePixelFormat(dc_, &format), &format);
        context_ = wglCreateContext(dc_);
        wglMakeCurrent(dc_, context_);
    }
    ~CallersContext() {
        wglMakeCurrent(nullptr, nullptr);
        wglDeleteContext(context_);
        ReleaseDC(window_, dc_);
        DestroyWindow(window_);
    }
    CallersContext(const CallersContext&) = delete;
    CallersContext& operator=(const CallersContext&) = delete;

    bool current() const {
        return context_ != nullptr && wglGetCurrentContext() == context_ && wglGetCurrentDC() == dc_;
    }

  private:
    HWND window_;
    HDC dc_;
    HGLRC context_ = nullptr;
};

TEST_F(Contexts, CallersContextIsCurrentAgainAfterEveryCommand) {
    const CallersContext caller;
    ASSERT_TRUE(caller.current());
    spy::fail_next("wglCreateContext");
    EXPECT_EQ(set_up(host_), kOutOfMemory);
    EXPECT_TRUE(caller.current()) << "after a failed set-up";
    host_.start();
    EXPECT_TRUE(caller.current()) << "after set-up";
    auto instance = host_.new_instance();
    spy::fail_next("wglShareLists");
    EXPECT_EQ(render_tiny(*instance), kOutOfMemory);
    EXPECT_TRUE(caller.current()) << "after a failed frame";
    EXPECT_EQ(render_tiny(*instance), PF_Err_NONE);
    EXPECT_TRUE(caller.current()) << "after a frame";
    instance.reset();
    host_.global_setdown();
    EXPECT_TRUE(caller.current()) << "after set-down";
}

TEST_F(Contexts, EveryFaultOfSetUpIsAnsweredWithOutOfMemoryAndRepaired) {
    for (const char* call :
         {"RegisterClassExA", "CreateWindowExA", "ChoosePixelFormat", "SetPixelFormat", "wglCreateContext",
          "wglMakeCurrent", "wglGetExtensionsStringARB", "wglCreateContextAttribsARB"}) {
        SCOPED_TRACE(call);
        host::Host host(windows_.module());
        spy::forget_calls();
        spy::fail_next(call);
        EXPECT_EQ(set_up(host), kOutOfMemory);
        // A root context that was not made is found out by what is asked of it next.
        if (call != std::string("wglCreateContext")) expect_stopped_at(call);
        EXPECT_TRUE(knows_identity(host));
        EXPECT_EQ(host.identity().message, "") << "a fault of the GL layer is not shown";
        EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
        EXPECT_EQ(wglGetCurrentContext(), nullptr);
        EXPECT_EQ(set_up(host), PF_Err_NONE) << "once the cause is gone";
        host.global_setdown();
        EXPECT_EQ(spy::live_contexts(), 0) << "what was made before the failure went with its record";
        EXPECT_EQ(
            std::ranges::count_if(
                spy::calls(), [](const std::string& made) { return made.starts_with("UnregisterClassA"); }),
            2)
            << "whatever a record has";
    }
}

TEST_F(Contexts, DriverWithoutVersionedContextsIsRefusedInSetUp) {
    spy::hide_extension("WGL_ARB_create_context");
    EXPECT_EQ(set_up(host_), kOutOfMemory);
    EXPECT_TRUE(knows_identity(host_));
    EXPECT_TRUE(host_.accounting().clean()) << host_.accounting().describe();
    EXPECT_THAT(spy::calls(),
                testing::Not(testing::Contains("wglGetProcAddress wglCreateContextAttribsARB")));
}

TEST_F(Contexts, FaultOfAThreadsFirstFrameIsRepairedByTheNext) {
    host_.start();
    auto instance = host_.new_instance();
    for (const char* call : {"RegisterClassExA", "CreateWindowExA", "ChoosePixelFormat", "SetPixelFormat",
                             "wglCreateContextAttribsARB", "wglMakeCurrent", "wglShareLists"}) {
        SCOPED_TRACE(call);
        PF_Err first = PF_Err_NONE;
        PF_Err second = PF_Err_NONE;
        std::thread([&] {
            spy::fail_next(call);
            first = render_tiny(*instance);
            second = render_tiny(*instance);
        }).join();
        EXPECT_EQ(first, kOutOfMemory);
        EXPECT_EQ(second, PF_Err_NONE);
        EXPECT_TRUE(host_.accounting().idle()) << host_.accounting().describe();
    }
    EXPECT_THAT(host_.accounting().messages(), testing::IsEmpty());
    EXPECT_THAT(host_.accounting().misuses(), testing::IsEmpty());
    EXPECT_EQ(spy::wrong_shares(), 0);
}

// The first load's windows and classes stay for the program's life, as they must; the second load starts to
// count at 0 again and meets them.
TEST(SecondLoad, IsRefusedWithOutOfMemory) {
    for (const PF_Err expected : {PF_Err{PF_Err_NONE}, kOutOfMemory}) {
        {
            const WindowsModule windows;
            host::Host host(windows.module());
            EXPECT_EQ(set_up(host), expected);
            EXPECT_TRUE(knows_identity(host));
        }
        ASSERT_EQ(GetModuleHandleA("Flumo.aex"), nullptr) << "not unloaded";
    }
}

}  // namespace
}  // namespace flumo::tests
