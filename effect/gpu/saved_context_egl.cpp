#include <EGL/egl.h>
#include <GL/glx.h>

#include "effect/gpu/saved_context.h"

namespace flumo {

// A host thread may have a context of either kind. With one of GLX current, eglMakeCurrent is refused, so
// that one is not current while the effect works.
struct AESDK_OpenGL_SavedContext::Handles {
    EGLenum api = eglQueryAPI();
    EGLDisplay display = eglGetCurrentDisplay();
    EGLContext context = eglGetCurrentContext();
    EGLSurface draw = eglGetCurrentSurface(EGL_DRAW);
    EGLSurface read = eglGetCurrentSurface(EGL_READ);
    GLXContext glxContext = glXGetCurrentContext();
    Display* glxDisplay = glxContext != nullptr ? glXGetCurrentDisplay() : nullptr;
    GLXDrawable glxDraw = glxContext != nullptr ? glXGetCurrentDrawable() : None;
    GLXDrawable glxRead = glxContext != nullptr ? glXGetCurrentReadDrawable() : None;

    bool EglStillCurrent() const {
        return eglGetCurrentContext() == context && eglGetCurrentDisplay() == display &&
               eglGetCurrentSurface(EGL_DRAW) == draw && eglGetCurrentSurface(EGL_READ) == read;
    }

    void RestoreEgl() const {
        if (context != EGL_NO_CONTEXT) {
            eglMakeCurrent(display, draw, read, context);
        } else {
            eglMakeCurrent(eglGetCurrentDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        }
    }

    void RestoreGlx() const { glXMakeContextCurrent(glxDisplay, glxDraw, glxRead, glxContext); }
};

AESDK_OpenGL_SavedContext::AESDK_OpenGL_SavedContext() : saved_(std::make_unique<const Handles>()) {
    if (saved_->glxContext != nullptr) glXMakeContextCurrent(saved_->glxDisplay, None, None, nullptr);
}

AESDK_OpenGL_SavedContext::~AESDK_OpenGL_SavedContext() {
    Restore();
}

void AESDK_OpenGL_SavedContext::Restore() {
    if (!saved_->EglStillCurrent()) saved_->RestoreEgl();
    if (saved_->glxContext != nullptr && glXGetCurrentContext() != saved_->glxContext) saved_->RestoreGlx();
    eglBindAPI(saved_->api);
}

}  // namespace flumo
