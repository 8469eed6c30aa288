#include "tests/effect/render/effect_fixture.h"

#include <EGL/egl.h>
#include <dlfcn.h>
#include <glbinding/gl/gl.h>
#include <gmock/gmock.h>

#include <memory>

#include "effect/entry/effect_main.h"
#include "host/module/module.h"
#include "tests/effect/render/gl_scope.h"

namespace flumo::test {
namespace {

/// The effect and the host of the whole program; the end of the tests is also the end of the effect's life.
class EffectEnvironment : public testing::Environment {
  public:
    // At the end of the process libEGL unloads the driver, and what Mesa holds until then would be a leak to
    // a leak checker; so the driver stays.
    void SetUp() override {
        dlopen("libEGL_mesa.so.0", RTLD_NOW | RTLD_NODELETE);
        testing::internal::CaptureStdout();
        host.start();
        driver_lines = testing::internal::GetCapturedStdout();
        const GlScope gl;
        gl::glEnable(gl::GL_DEBUG_OUTPUT);
        gl::glEnable(gl::GL_DEBUG_OUTPUT_SYNCHRONOUS);
        gl::glDebugMessageCallback(hear, this);
    }

    void TearDown() override {
        host.global_setdown();
        EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
        EXPECT_TRUE(RenderDataTable.empty());
        EXPECT_EQ(CommonData, nullptr);
    }

    static void GL_APIENTRY hear(gl::GLenum, gl::GLenum type, gl::GLuint, gl::GLenum, gl::GLsizei,
                                 const gl::GLchar* message, const void* environment) {
        if (type != gl::GL_DEBUG_TYPE_ERROR && type != gl::GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR &&
            type != gl::GL_DEBUG_TYPE_DEPRECATED_BEHAVIOR) {
            return;
        }
        const_cast<EffectEnvironment*>(static_cast<const EffectEnvironment*>(environment))
            ->complaints.emplace_back(message);
    }

    host::Module module{EffectMain, PluginDataEntryFunction};
    host::Host host{module};
    std::string driver_lines;
    /// What the driver said of this thread's calls.
    std::vector<std::string> complaints;
};

EffectEnvironment* const environment =
    dynamic_cast<EffectEnvironment*>(testing::AddGlobalTestEnvironment(new EffectEnvironment));

}  // namespace

host::Host& effect_host() {
    return environment->host;
}

std::unique_ptr<host::Instance> instance_of(const Look& look) {
    return instance_with(environment->host, look);
}

host::World render_checked(const FrameCase& frame_case) {
    host::Accounting& accounting = environment->host.accounting();
    environment->complaints.clear();
    host::World frame = instance_of(frame_case.look)->render(frame_case.request);
    EXPECT_TRUE(frame.guards_intact());
    EXPECT_TRUE(accounting.idle()) << accounting.describe();
    EXPECT_THAT(accounting.misuses(), testing::IsEmpty());
    EXPECT_THAT(environment->complaints, testing::IsEmpty());
    EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
    EXPECT_EQ(eglQueryAPI(), static_cast<EGLenum>(EGL_OPENGL_ES_API)) << "what every thread starts with";
    return frame;
}

std::string driver_lines() {
    return environment->driver_lines;
}

}  // namespace flumo::test
