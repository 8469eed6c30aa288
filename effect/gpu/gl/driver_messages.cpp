#include "effect/gpu/gl/driver_messages.h"

#include <glbinding/gl/gl.h>

#include <string>

#include "effect/gpu/gl/log.h"

using namespace gl;

namespace flumo {

namespace {

#ifdef NDEBUG
constexpr bool kIsDebugBuild = false;
#else
constexpr bool kIsDebugBuild = true;
#endif

const char* TypeWord(GLenum type) {
    switch (type) {
        case GL_DEBUG_TYPE_ERROR:
            return "error";
        case GL_DEBUG_TYPE_PERFORMANCE:
            return "performance";
        default:
            return "message";
    }
}

// Called on the thread of the GL call. Notifications describe how the driver works and are no faults.
void GL_APIENTRY LogDriverMessage(GLenum, GLenum type, GLuint, GLenum severity, GLsizei, const GLchar* text,
                                  const void*) {
    if (severity == GL_DEBUG_SEVERITY_NOTIFICATION) return;
    LogMessage(std::string("Flumo: OpenGL ") + TypeWord(type) + ": " + text);
}

}  // namespace

void LogDriverMessages(const std::set<GLextension>& extensions) {
    if (!kIsDebugBuild || !extensions.contains(GLextension::GL_KHR_debug)) return;
    glEnable(GL_DEBUG_OUTPUT);
    glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
    glDebugMessageCallback(LogDriverMessage, nullptr);
}

}  // namespace flumo
