// The driver fails: the frame or the set-up is out of memory, nothing is shown, and the next try is a new
// one.
#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#include "tests/faults/effect_fixture.h"
#include "tests/faults/gl_spy.h"
#include "tests/support/caller_context.h"

namespace flumo::test {
namespace {

using host::Depth;
using host::test::CallerContext;

constexpr PF_Err kOutOfMemory = 4;
/// Layers and ramps of a frame on the fixture.
constexpr int kFrameTextures = 5;

/// What the driver's failures in the first frame of a thread come to.
struct FrameFault {
    GlPoint point;
    /// Calls of this kind in the frame.
    int64_t calls;
    /// Those of them, counted from 0, that may fail without harm: the context is current already, or the
    /// program is one for the look, in whose place the main program draws.
    int64_t harmless_from;
    /// What the failure leaves in the context.
    int objects_left = 0;
    /// Every second check of a target is the one that may tell the user.
    bool tells = false;
};

constexpr FrameFault kFrameFaults[] = {
    {GlPoint::kChooseConfig, 1, 1},
    {GlPoint::kCreateContext, 1, 1},
    {GlPoint::kMakeCurrent, 3, 1},
    {GlPoint::kCompile, 12, 10},
    {GlPoint::kLink, 6, 5, 1},
    {GlPoint::kFramebufferStatus, 10, 10, 0, true},
    {GlPoint::kMapBuffer, 1, 1, kFrameTextures},
};

class DriverFaults : public testing::Test {
  protected:
    /// A thread's first frame with one failure, and its second.
    void render_twice(const FrameFault& fault, int64_t nth) {
        const CallerContext caller;
        host::World frame;
        gl_spy::fail(fault.point, nth);
        const bool harmless = nth >= fault.harmless_from;
        const PF_Err result = result_of([&] { instance_->render(small_frame(Depth::k16), frame); });
        EXPECT_EQ(result, harmless ? PF_Err_NONE : kOutOfMemory);
        EXPECT_EQ(fixture_.host().accounting().messages().size(), fault.tells && nth % 2 == 1 ? 1U : 0U);
        EXPECT_TRUE(caller.is_current());
        EXPECT_TRUE(fixture_.host().accounting().idle()) << fixture_.host().accounting().describe();
        fixture_.host().accounting().forget_messages();
        fixture_.kept_objects += fault.objects_left;

        gl_spy::clear();
        EXPECT_TRUE(fixture_.renders_as_before(Depth::k16));
        const bool has_no_context = fault.point < GlPoint::kCompile && !harmless;
        EXPECT_EQ(gl_spy::calls(GlPoint::kCreateContext), has_no_context ? 1 : 0);
    }

    EffectFixture fixture_;
    std::unique_ptr<host::Instance> instance_ = fixture_.new_instance();
};

TEST_F(DriverFaults, CostOneFrameOfTheThread) {
    for (const FrameFault& fault : kFrameFaults) {
        gl_spy::clear();
        std::jthread([&] { EXPECT_TRUE(fixture_.renders_as_before(Depth::k16)); }).join();
        ASSERT_EQ(gl_spy::calls(fault.point), fault.calls) << gl_spy::name(fault.point);
        for (int64_t nth = 0; nth < fault.calls; ++nth) {
            SCOPED_TRACE(std::string(gl_spy::name(fault.point)) + " " + std::to_string(nth));
            std::jthread([&] { render_twice(fault, nth); }).join();
        }
    }
    instance_.reset();
}

TEST_F(DriverFaults, OfProgramsForLooksAreNoneOnHardware) {
    instance_.reset();
    fixture_.host().global_setdown();
    gl_spy::rename_renderer("NVIDIA H200/PCIe/SSE2");
    fixture_.host().start();
    gl_spy::clear();
    EXPECT_TRUE(fixture_.renders_as_before(Depth::k8));
    EXPECT_EQ(gl_spy::calls(GlPoint::kCompile), 10);
    EXPECT_EQ(gl_spy::calls(GlPoint::kLink), 5);
    gl_spy::rename_renderer(nullptr);
}

TEST_F(DriverFaults, OfOneDisplayLeadToTheNextAndOfAllToNoSetUp) {
    instance_.reset();
    for (const GlPoint point :
         {GlPoint::kInitialize, GlPoint::kChooseConfig, GlPoint::kCreateContext, GlPoint::kMakeCurrent}) {
        SCOPED_TRACE(gl_spy::name(point));
        fixture_.host().global_setdown();
        gl_spy::fail_every(point);
        EXPECT_EQ(result_of([&] { fixture_.host().start(); }), kOutOfMemory);
        EXPECT_TRUE(fixture_.host().accounting().messages().empty());
        EXPECT_EQ(fixture_.host().identity().version, 566784U);
        gl_spy::fail(point, 0);
        fixture_.host().start();
        EXPECT_TRUE(fixture_.renders_as_before(Depth::k8));
    }
}

TEST_F(DriverFaults, FrameBeyondTheLargestTextureIsOutOfMemory) {
    const host::FrameRequest wide{.width = 9000, .height = 1};
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(result_of([&] { instance_->render(wide); }), kOutOfMemory);
        EXPECT_TRUE(fixture_.renders_as_before(Depth::k32));
    }
    EXPECT_TRUE(fixture_.host().accounting().messages().empty());
    instance_.reset();
}

/// A machine whose driver is not enough. Mesa reads its environment once, so each of these is a process of
/// its own.
class PoorMachine : public testing::Test {
  protected:
    void expect_no_set_up() {
        EXPECT_EQ(result_of([&] { host_.start(); }), kOutOfMemory);
        EXPECT_TRUE(host_.accounting().messages().empty());
        EXPECT_TRUE(host_.accounting().clean());
        EXPECT_EQ(host_.identity().version, 566784U);
    }

    host::Module module_{std::filesystem::path(FLUMO_MODULE)};
    host::Host host_{module_};
};

TEST_F(PoorMachine, WithoutADisplay) {
    setenv("__EGL_VENDOR_LIBRARY_FILENAMES", "/nowhere/vendor.json", 1);
    expect_no_set_up();
}

TEST_F(PoorMachine, WithAnOldDriver) {
    setenv("MESA_GL_VERSION_OVERRIDE", "3.2", 1);
    expect_no_set_up();
}

TEST_F(PoorMachine, WithAnOldCompiler) {
    setenv("MESA_GL_VERSION_OVERRIDE", "4.5", 1);
    setenv("MESA_GLSL_VERSION_OVERRIDE", "150", 1);
    const CallerContext caller;
    host_.start();
    for (int i = 0; i < 2; ++i) {
        gl_spy::clear();
        const auto render = [&] { host_.new_instance()->render(small_frame(Depth::k8)); };
        EXPECT_EQ(result_of(render), kOutOfMemory);
        EXPECT_GT(gl_spy::calls(GlPoint::kCompile), 0) << "the frame was not tried";
        EXPECT_TRUE(host_.accounting().messages().empty());
        EXPECT_TRUE(host_.accounting().idle());
        EXPECT_TRUE(caller.is_current());
    }
}

}  // namespace
}  // namespace flumo::test
