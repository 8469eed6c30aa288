// Contexts and records: who gets which, what is shared, and that callers find their own context again.
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <glbinding/gl/gl.h>
#include <gmock/gmock.h>

#include <future>
#include <stdexcept>
#include <thread>

#include "effect/gpu/fault.h"
#include "effect/gpu/gl_context.h"
#include "effect/gpu/global_context.h"
#include "effect/gpu/resources.h"
#include "effect/gpu/target.h"
#include "tests/effect_gpu/gl_fixture.h"

using namespace gl;

namespace flumo::tests {
namespace {

using ContextTest = GlTest;

template <typename Work>
auto OnOtherThread(Work work) {
    return std::async(std::launch::async, std::move(work)).get();
}

/// A context of the test's own on a display of its own, as another user of EGL in the process has it.
class CallersContext {
  public:
    CallersContext() {
        eglInitialize(display_, nullptr, nullptr);
        eglBindAPI(EGL_OPENGL_ES_API);
        const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT,
                                 EGL_NONE};
        const EGLint version[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
        const EGLint size[] = {EGL_WIDTH, 4, EGL_HEIGHT, 4, EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        eglChooseConfig(display_, wanted, &config, 1, &count);
        context_ = eglCreateContext(display_, config, EGL_NO_CONTEXT, version);
        surface_ = eglCreatePbufferSurface(display_, config, size);
        eglMakeCurrent(display_, surface_, surface_, context_);
    }
    ~CallersContext() {
        eglBindAPI(EGL_OPENGL_ES_API);
        eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroySurface(display_, surface_);
        eglDestroyContext(display_, context_);
    }

    bool IsCurrent() const {
        return context_ != EGL_NO_CONTEXT && surface_ != EGL_NO_SURFACE &&
               eglQueryAPI() == EGL_OPENGL_ES_API && eglGetCurrentContext() == context_ &&
               eglGetCurrentDisplay() == display_ && eglGetCurrentSurface(EGL_DRAW) == surface_ &&
               eglGetCurrentSurface(EGL_READ) == surface_;
    }

  private:
    EGLDisplay display_ = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
    EGLContext context_ = EGL_NO_CONTEXT;
    EGLSurface surface_ = EGL_NO_SURFACE;
};

TEST_F(ContextTest, ThreadKeepsItsRecordAndSharesItWithNoOther) {
    EXPECT_EQ(CurrentRenderData().get(), &Record());
    EXPECT_GE(ThreadRenderIndex, 0);
    const auto [before, other, otherIndex] = OnOtherThread([] {
        const int32_t untouched = ThreadRenderIndex;
        const AESDK_OpenGL_SavedContext saved;
        return std::tuple(untouched, CurrentRenderData(), ThreadRenderIndex);
    });
    EXPECT_EQ(before, -1);
    EXPECT_NE(otherIndex, ThreadRenderIndex);
    EXPECT_NE(other.get(), &Record());
    EXPECT_NE(other->renderContext, Record().renderContext);
    EXPECT_EQ(AESDK_OpenGL_RenderDataForThread().get(), &Record());
}

TEST_F(ContextTest, ContextsAreOfVersion33AtLeastAndShareTheirTextures) {
    EXPECT_FALSE(CommonData->contextStarted);
    EXPECT_FALSE(Record().extensions.empty());
    EXPECT_FALSE(CommonData->extensions.empty());
    GLint major = 0;
    GLint minor = 0;
    glGetIntegerv(GL_MAJOR_VERSION, &major);
    glGetIntegerv(GL_MINOR_VERSION, &minor);
    EXPECT_GE(major * 10 + minor, 33);

    const GLuint texture = MakeTexture(1, 1, {{0.25F, 0.5F, 0.75F, 1.0F}});
    glFinish();
    AESDK_OpenGL_MakeCurrent(*CommonData);
    EXPECT_EQ(ReadTexture(texture), (std::vector<Pixel>{{0.25F, 0.5F, 0.75F, 1.0F}}));
    AESDK_OpenGL_MakeCurrent(Record());
    glDeleteTextures(1, &texture);
}

TEST_F(ContextTest, VersionLinesGoToStandardOutput) {
    testing::internal::CaptureStdout();
    AESDK_OpenGL_LogVersion();
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::MatchesRegex("\nOpenGL Version:  [0-9]+\\.[0-9]+\nOpenGL Vendor:   [^\n]+\n"
                                      "OpenGL Renderer: [^\n]+\nOpenGL Revision: 31811 \\(gl\\.xml\\)\n\n"));
}

TEST(SavedContextTest, CallerFindsItsContextAgainAfterWorkAndAfterAnException) {
    OnOtherThread([] {
        const CallersContext caller;
        ASSERT_TRUE(caller.IsCurrent());
        {
            const AESDK_OpenGL_SavedContext saved;
            EXPECT_TRUE(caller.IsCurrent()) << "saving alone changed something";
            CurrentRenderData();
            EXPECT_FALSE(caller.IsCurrent());
        }
        EXPECT_TRUE(caller.IsCurrent());
        try {
            const AESDK_OpenGL_SavedContext saved;
            CurrentRenderData();
            throw std::runtime_error("frame failed");
        } catch (const std::runtime_error&) {
        }
        EXPECT_TRUE(caller.IsCurrent());
    });
}

TEST(SavedContextTest, CallerWithoutAContextIsLeftWithoutOne) {
    OnOtherThread([] {
        {
            const AESDK_OpenGL_SavedContext saved;
            CurrentRenderData();
            EXPECT_NE(eglGetCurrentContext(), EGL_NO_CONTEXT);
        }
        EXPECT_EQ(eglQueryAPI(), static_cast<EGLenum>(EGL_OPENGL_ES_API));
        EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
        eglBindAPI(EGL_OPENGL_API);
        EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
    });
}

TEST_F(ContextTest, RecordThatNeverStartedEndsWithoutDeletingAnything) {
    const CallCounter counter;
    { const AESDK_OpenGL_EffectRenderData untouched; }
    EXPECT_EQ(counter.CallsLike("glDelete"), 0);
}

// Global set-down runs on any thread, also on one that has never drawn.
TEST_F(ContextTest, RecordThatEndsOnAnotherThreadDeletesAllThatItMade) {
    auto record = std::make_unique<AESDK_OpenGL_EffectRenderData>();
    AESDK_OpenGL_StartContext(*record, CommonData);
    AESDK_OpenGL_PrepareResources(*record, 8, 4, 1);
    const GLuint textures[] = {record->largeTexture, record->resultTexture, record->outputTexture};
    const GLuint program = record->mainProgram;
    AESDK_OpenGL_MakeCurrent(*CommonData);
    const CallCounter counter;
    OnOtherThread([&record] { record.reset(); });
    EXPECT_EQ(counter.Calls("glDeleteTextures"), 3);
    EXPECT_EQ(counter.Calls("glDeleteProgram"), 5);
    EXPECT_EQ(counter.Calls("glDeleteFramebuffers"), 1);
    EXPECT_EQ(counter.Calls("glDeleteRenderbuffers"), 1);
    EXPECT_EQ(counter.Calls("glDeleteBuffers"), 2);
    EXPECT_EQ(counter.Calls("glDeleteVertexArrays"), 2);
    for (const GLuint texture : textures)
        EXPECT_EQ(glIsTexture(texture), GL_FALSE);
    EXPECT_EQ(glIsProgram(program), GL_FALSE);
}

TEST(TeardownTest, ThreadKeepsItsNumberAndGetsANewRecord) {
    OnOtherThread([] {
        const AESDK_OpenGL_SavedContext saved;
        const std::weak_ptr<AESDK_OpenGL_EffectRenderData> old = CurrentRenderData();
        const int32_t number = ThreadRenderIndex;
        AESDK_OpenGL_TearDownContexts();
        EXPECT_TRUE(old.expired());
        EXPECT_TRUE(RenderDataTable.empty());
        EXPECT_EQ(CommonData, nullptr);
        EXPECT_EQ(SharedCommonData, nullptr);
        EXPECT_EQ(ThreadRenderIndex, number);

        AESDK_OpenGL_SetUpCommonContext();
        EXPECT_FALSE(AESDK_OpenGL_RenderDataForThread()->contextStarted);
        CurrentRenderData();
        EXPECT_EQ(ThreadRenderIndex, number);
    });
}

// One clear and read-back in a fresh record; true when the pixels are right.
bool DrawsRight(float shade) {
    const AESDK_OpenGL_SavedContext saved;
    AESDK_OpenGL_EffectRenderData record;
    AESDK_OpenGL_StartContext(record, CommonData);
    AESDK_OpenGL_MakeCurrent(record);
    glGenFramebuffers(1, &record.framebuffer);
    record.resultTexture = MakeTexture(2, 1, {{}, {}});
    AESDK_OpenGL_BindTarget(record, record.resultTexture);
    glClearColor(shade, shade, shade, shade);
    glClear(GL_COLOR_BUFFER_BIT);
    const Pixel wanted = {shade, shade, shade, shade};
    return ReadTexture(record.resultTexture) == std::vector<Pixel>{wanted, wanted} &&
           glGetError() == GL_NO_ERROR;
}

TEST(ThreadsTest, ContextsStartAndEndWhileOtherThreadsDraw) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 8;
    std::vector<std::future<int>> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.push_back(std::async(std::launch::async, [thread] {
            int right = 0;
            for (int round = 0; round < kRounds; ++round) {
                right += DrawsRight(static_cast<float>(thread * kRounds + round + 1) / 64.0F) ? 1 : 0;
            }
            return right;
        }));
    }
    for (auto& thread : threads)
        EXPECT_EQ(thread.get(), kRounds);
}

}  // namespace
}  // namespace flumo::tests
