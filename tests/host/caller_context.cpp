#include "tests/host/caller_context.h"

#include <EGL/eglext.h>

#include <stdexcept>

namespace flumo::host::test {

CallerContext::CallerContext()
    : display_(eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr)) {
    // GLES with a surface, so that it differs from whatever the effect makes.
    const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT,
                             EGL_NONE};
    const EGLint size[] = {EGL_WIDTH, 4, EGL_HEIGHT, 4, EGL_NONE};
    const EGLint version[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    if (!eglInitialize(display_, nullptr, nullptr) || !eglBindAPI(EGL_OPENGL_ES_API) ||
        !eglChooseConfig(display_, wanted, &config, 1, &found) || found == 0) {
        throw std::runtime_error("EGL offers no GLES configuration with a surface");
    }
    surface_ = eglCreatePbufferSurface(display_, config, size);
    context_ = eglCreateContext(display_, config, EGL_NO_CONTEXT, version);
    if (!eglMakeCurrent(display_, surface_, surface_, context_)) {
        throw std::runtime_error("the caller's context cannot be made current");
    }
}

CallerContext::~CallerContext() {
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display_, context_);
    eglDestroySurface(display_, surface_);
}

bool CallerContext::is_current() const {
    return eglQueryAPI() == EGL_OPENGL_ES_API && eglGetCurrentContext() == context_ &&
           eglGetCurrentSurface(EGL_DRAW) == surface_ && eglGetCurrentDisplay() == display_;
}

}  // namespace flumo::host::test
