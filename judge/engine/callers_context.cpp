#include "judge/engine/callers_context.h"

#include <array>

#define EGL_NO_X11
#include <EGL/egl.h>
#include <EGL/eglext.h>

namespace flumo::judge {

namespace {

/// The first display that needs no window system and can be opened; null when there is none.
EGLDisplay open_display() {
    const EGLDisplay displays[] = {eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr),
                                   eglGetDisplay(EGL_DEFAULT_DISPLAY)};
    for (const EGLDisplay display : displays) {
        if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr)) return display;
    }
    return EGL_NO_DISPLAY;
}

}  // namespace

struct CallersContext::Handles {
    EGLDisplay display;
    EGLSurface surface;
    EGLContext context;
};

// OpenGL ES, so that an effect that restores the context but not the interface is found, too.
std::unique_ptr<CallersContext> CallersContext::make() {
    const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT,
                             EGL_NONE};
    const EGLint size[] = {EGL_WIDTH, 4, EGL_HEIGHT, 4, EGL_NONE};
    const EGLint version[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
    const EGLDisplay display = open_display();
    EGLConfig config = nullptr;
    EGLint found = 0;
    if (display == EGL_NO_DISPLAY || !eglBindAPI(EGL_OPENGL_ES_API) ||
        !eglChooseConfig(display, wanted, &config, 1, &found) || found == 0) {
        return nullptr;
    }
    const EGLSurface surface = eglCreatePbufferSurface(display, config, size);
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, version);
    auto made = std::make_unique<const Handles>(Handles{display, surface, context});
    std::unique_ptr<CallersContext> caller(new CallersContext(std::move(made)));
    return eglMakeCurrent(display, surface, surface, context) ? std::move(caller) : nullptr;
}

CallersContext::CallersContext(std::unique_ptr<const Handles> handles) : handles_(std::move(handles)) {}

CallersContext::~CallersContext() {
    eglBindAPI(EGL_OPENGL_ES_API);
    eglMakeCurrent(handles_->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (handles_->context != EGL_NO_CONTEXT) eglDestroyContext(handles_->display, handles_->context);
    if (handles_->surface != EGL_NO_SURFACE) eglDestroySurface(handles_->display, handles_->surface);
}

bool CallersContext::is_current() const {
    return eglQueryAPI() == EGL_OPENGL_ES_API && eglGetCurrentContext() == handles_->context &&
           eglGetCurrentDisplay() == handles_->display &&
           eglGetCurrentSurface(EGL_DRAW) == handles_->surface &&
           eglGetCurrentSurface(EGL_READ) == handles_->surface;
}

bool has_no_context() {
    const EGLenum api = eglQueryAPI();
    bool none = true;
    for (const EGLenum each : std::array<EGLenum, 2>{EGL_OPENGL_API, EGL_OPENGL_ES_API}) {
        if (eglBindAPI(each)) none = none && eglGetCurrentContext() == EGL_NO_CONTEXT;
    }
    eglBindAPI(api);
    return none;
}

}  // namespace flumo::judge
