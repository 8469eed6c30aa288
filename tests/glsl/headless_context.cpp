#include "tests/glsl/headless_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <glbinding/Binding.h>
#include <glbinding/gl33core/gl.h>

#include <stdexcept>

namespace flumo::test {
namespace {

constexpr glbinding::ContextHandle kBinding = 1;

EGLDisplay open_display() {
    for (EGLDisplay display : {eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr),
                               eglGetDisplay(EGL_DEFAULT_DISPLAY)}) {
        if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr)) return display;
    }
    throw std::runtime_error("no EGL display opens without a screen");
}

EGLContext create_context(EGLDisplay display) {
    // A surface type of 0: the default asks for windows, which such displays do not have.
    const EGLint wanted[] = {EGL_SURFACE_TYPE, 0, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 3, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    eglBindAPI(EGL_OPENGL_API);
    if (!eglChooseConfig(display, wanted, &config, 1, &found) || found == 0) {
        throw std::runtime_error("EGL has no configuration for OpenGL");
    }
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, version);
    if (context == EGL_NO_CONTEXT) throw std::runtime_error("EGL makes no OpenGL 3.3 context");
    return context;
}

}  // namespace

HeadlessContext::HeadlessContext() : display_(open_display()), context_(create_context(display_)) {
    if (!eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_)) {
        throw std::runtime_error("the OpenGL context cannot be made current without a surface");
    }
    glbinding::Binding::initialize(kBinding, true, false);
    glbinding::Binding::useContext(kBinding);
}

HeadlessContext::~HeadlessContext() {
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display_, context_);  // the display stays open: it is shared by the whole process
}

std::string HeadlessContext::renderer() const {
    return reinterpret_cast<const char*>(gl33core::glGetString(gl33core::GL_RENDERER));
}

}  // namespace flumo::test
