#include "tests/effect_gpu/gl_fixture.h"

#include <glbinding/CallbackMask.h>
#include <glbinding/Function.h>
#include <glbinding/FunctionCall.h>
#include <glbinding/callbacks.h>
#include <glbinding/gl/gl.h>

#include "effect/gpu/gl_context.h"
#include "effect/gpu/global_context.h"

using namespace gl;

namespace flumo::tests {

namespace {

void GL_APIENTRY Complain(GLenum, GLenum type, GLuint, GLenum, GLsizei, const GLchar* message,
                          const void* complaints) {
    if (type != GL_DEBUG_TYPE_ERROR && type != GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR &&
        type != GL_DEBUG_TYPE_DEPRECATED_BEHAVIOR) {
        return;
    }
    static_cast<std::vector<std::string>*>(const_cast<void*>(complaints))->emplace_back(message);
}

class RootContext : public testing::Environment {
  public:
    void SetUp() override {
        const AESDK_OpenGL_SavedContext saved;
        AESDK_OpenGL_SetUpCommonContext();
    }
    void TearDown() override {
        const AESDK_OpenGL_SavedContext saved;
        AESDK_OpenGL_TearDownContexts();
    }
};

const auto* const kRootContext = testing::AddGlobalTestEnvironment(new RootContext);

}  // namespace

std::shared_ptr<AESDK_OpenGL_EffectRenderData> CurrentRenderData() {
    auto record = AESDK_OpenGL_RenderDataForThread();
    if (!record->contextStarted) {
        AESDK_OpenGL_StartContext(*record, CommonData);
        record->contextStarted = true;
    }
    AESDK_OpenGL_MakeCurrent(*record);
    return record;
}

std::vector<Pixel> ReadTexture(GLuint texture) {
    GLint width = 0;
    GLint height = 0;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    std::vector<Pixel> texels(static_cast<size_t>(width * height));
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_FLOAT, texels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return texels;
}

GLuint MakeTexture(GLsizei width, GLsizei height, const std::vector<Pixel>& texels) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, static_cast<GLint>(GL_NEAREST));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, static_cast<GLint>(GL_NEAREST));
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(GL_RGBA32F), width, height, 0, GL_RGBA, GL_FLOAT,
                 texels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return texture;
}

CallCounter::CallCounter() {
    glbinding::setBeforeCallback(
        [this](const glbinding::FunctionCall& call) { ++calls_[call.function->name()]; });
    glbinding::setCallbackMask(glbinding::CallbackMask::Before);
}

CallCounter::~CallCounter() {
    glbinding::setCallbackMask(glbinding::CallbackMask::None);
    glbinding::setBeforeCallback({});
}

int CallCounter::Calls(const std::string& name) const {
    const auto found = calls_.find(name);
    return found != calls_.end() ? found->second : 0;
}

int CallCounter::CallsLike(const std::string& prefix) const {
    int sum = 0;
    for (const auto& [name, count] : calls_) {
        if (name.starts_with(prefix)) sum += count;
    }
    return sum;
}

void GlTest::SetUp() {
    saved_.emplace();
    record_ = CurrentRenderData();
    glEnable(GL_DEBUG_OUTPUT);
    glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
    glDebugMessageCallback(Complain, &complaints_);
}

void GlTest::TearDown() {
    if (!saved_) saved_.emplace();
    AESDK_OpenGL_MakeCurrent(*record_);
    EXPECT_EQ(glGetError(), GL_NO_ERROR);
    glDebugMessageCallback(nullptr, nullptr);
    EXPECT_EQ(complaints_, std::vector<std::string>{});
    record_.reset();
    saved_.reset();
}

}  // namespace flumo::tests
