// Saving the caller's GL context and making it current again.
#pragma once

#include <memory>

namespace flumo {

/// Records the GL context that is current on the calling thread and restores it at scope end, on success
/// and on an exception alike. Made and ended on the same thread.
class AESDK_OpenGL_SavedContext {
  public:
    AESDK_OpenGL_SavedContext();
    ~AESDK_OpenGL_SavedContext();
    AESDK_OpenGL_SavedContext(const AESDK_OpenGL_SavedContext&) = delete;
    AESDK_OpenGL_SavedContext& operator=(const AESDK_OpenGL_SavedContext&) = delete;

    /// Makes the recorded context current again, unless it still is. Failures are ignored.
    void Restore();

  private:
    struct Handles;
    std::unique_ptr<const Handles> saved_;
};

}  // namespace flumo
