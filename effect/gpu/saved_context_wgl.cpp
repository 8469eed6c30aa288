#include <windows.h>

#include "effect/gpu/saved_context.h"

namespace flumo {

struct AESDK_OpenGL_SavedContext::Handles {
    HGLRC context = wglGetCurrentContext();
    HDC deviceContext = wglGetCurrentDC();
};

AESDK_OpenGL_SavedContext::AESDK_OpenGL_SavedContext() : saved_(std::make_unique<const Handles>()) {}

AESDK_OpenGL_SavedContext::~AESDK_OpenGL_SavedContext() {
    Restore();
}

void AESDK_OpenGL_SavedContext::Restore() {
    if (wglGetCurrentContext() == saved_->context && wglGetCurrentDC() == saved_->deviceContext) return;
    if (wglMakeCurrent(saved_->deviceContext, saved_->context) == FALSE) GetLastError();
}

}  // namespace flumo
