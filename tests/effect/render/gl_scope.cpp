#include "tests/effect/render/gl_scope.h"

#include <glbinding/CallbackMask.h>
#include <glbinding/Function.h>
#include <glbinding/FunctionCall.h>
#include <glbinding/callbacks.h>
#include <glbinding/gl/gl.h>

#include "effect/gpu/gl/texture.h"
#include "effect/gpu/gl_context.h"

using namespace gl;

namespace flumo::test {

GlScope::GlScope() : record_(AESDK_OpenGL_RenderDataForThread()) {
    if (!record_->contextStarted) AESDK_OpenGL_StartContext(*record_, CommonData);
    record_->contextStarted = true;
    AESDK_OpenGL_MakeCurrent(*record_);
}

std::vector<Texel> read_texture(GLuint texture) {
    GLint width = 0, height = 0;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    std::vector<Texel> texels(static_cast<size_t>(width * height));
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_FLOAT, texels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return texels;
}

GLuint make_texture(GLsizei width, GLsizei height, const std::vector<Texel>& texels) {
    const GLuint texture = MakeFloatTexture(width, height, kWrapClamp, GL_FLOAT);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_RGBA, GL_FLOAT, texels.data());
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

int CallCounter::calls(const std::string& prefix) const {
    int sum = 0;
    for (const auto& [name, count] : calls_)
        sum += name.starts_with(prefix) ? count : 0;
    return sum;
}

}  // namespace flumo::test
