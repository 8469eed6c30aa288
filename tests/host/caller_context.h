// A GL context that a host's own thread has current while it calls an effect.
#pragma once

#include <EGL/egl.h>

namespace flumo::host::test {

/// Current on its thread while it lives.
class CallerContext {
  public:
    CallerContext();
    ~CallerContext();
    CallerContext(const CallerContext&) = delete;
    CallerContext& operator=(const CallerContext&) = delete;

    /// Whether this thread has exactly this context, its surface and its API current.
    bool is_current() const;

  private:
    EGLDisplay display_;
    EGLSurface surface_;
    EGLContext context_;
};

}  // namespace flumo::host::test
