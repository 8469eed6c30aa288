// The effect's GL context of this thread, for tests that look into it or draw in it.
#pragma once

#include <glbinding/gl/types.h>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "effect/gpu/render_data.h"
#include "effect/gpu/saved_context.h"

namespace flumo::test {

using Texel = std::array<float, 4>;

/// This thread's record, started if need be, and its context current as long as this lives.
class GlScope {
  public:
    GlScope();

    AESDK_OpenGL_EffectRenderData& operator*() const { return *record_; }
    AESDK_OpenGL_EffectRenderData* operator->() const { return record_.get(); }

  private:
    AESDK_OpenGL_SavedContext saved_;
    std::shared_ptr<AESDK_OpenGL_EffectRenderData> record_;
};

/// As long as this lives, this thread's frames are drawn by the main program, as on a hardware driver.
class MainProgramScope {
  public:
    MainProgramScope() : software_(std::exchange(GlScope()->softwareDriver, false)) {}
    ~MainProgramScope() { AESDK_OpenGL_RenderDataForThread()->softwareDriver = software_; }
    MainProgramScope(const MainProgramScope&) = delete;
    MainProgramScope& operator=(const MainProgramScope&) = delete;

  private:
    bool software_;
};

/// Level 0 of a texture, rows from 0 on.
std::vector<Texel> read_texture(gl::GLuint texture);
/// A float texture of these texels, as layers have it; the caller deletes it.
gl::GLuint make_texture(gl::GLsizei width, gl::GLsizei height, const std::vector<Texel>& texels);

/// Counts the GL calls of a scope whose names begin so ("glGenTextures", "glDelete").
class CallCounter {
  public:
    CallCounter();
    ~CallCounter();
    CallCounter(const CallCounter&) = delete;
    CallCounter& operator=(const CallCounter&) = delete;

    int calls(const std::string& prefix) const;

  private:
    std::map<std::string, int> calls_;
};

}  // namespace flumo::test
