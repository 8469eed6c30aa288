#include "effect/gpu/target.h"

#include <glbinding/gl33core/gl.h>

#include <string>
#include <string_view>

#include "effect/gpu/gl/fault.h"
#include "effect/gpu/gl/log.h"

using namespace gl33core;

namespace flumo {

void AESDK_OpenGL_BindTarget(const AESDK_OpenGL_EffectRenderData& renderData, GLuint texture) {
    glBindFramebuffer(GL_FRAMEBUFFER, renderData.framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glDrawBuffer(GL_COLOR_ATTACHMENT0);
    const char* status = AESDK_OpenGL_FramebufferStatusText();
    if (status == std::string_view("OK")) return;
    LogMessage(std::string("Flumo: ") + status);
    throw AESDK_OpenGL_Fault{kFaultFramebuffer};
}

const char* FramebufferStatusWords(GLenum status) {
    switch (status) {
        case GL_FRAMEBUFFER_COMPLETE:
            return "OK";
        case GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT:
            return "Framebuffer incomplete, incomplete attachment!";
        case GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT:
            return "Framebuffer incomplete, missing attachment!";
        case GL_FRAMEBUFFER_INCOMPLETE_DRAW_BUFFER:
            return "Framebuffer incomplete, missing draw buffer!";
        case GL_FRAMEBUFFER_INCOMPLETE_READ_BUFFER:
            return "Framebuffer incomplete, missing read buffer!";
        case GL_FRAMEBUFFER_UNSUPPORTED:
            return "Unsupported framebuffer format!";
        default:
            return "Unknown error!";
    }
}

const char* AESDK_OpenGL_FramebufferStatusText() {
    return FramebufferStatusWords(glCheckFramebufferStatus(GL_FRAMEBUFFER));
}

}  // namespace flumo
