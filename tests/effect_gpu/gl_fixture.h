// A process with the effect's root context, and a current context with GL debug output for each case.
#pragma once

#include <glbinding/gl/types.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "effect/gpu/render_data.h"
#include "effect/gpu/saved_context.h"

namespace flumo::tests {

/// This thread's record, started on its first use and made current.
std::shared_ptr<AESDK_OpenGL_EffectRenderData> CurrentRenderData();

using Pixel = std::array<float, 4>;

/// Level 0 of a texture, four floats a texel, rows from 0 on.
std::vector<Pixel> ReadTexture(gl::GLuint texture);

/// A float texture with these texels, nearest filter, clamped.
gl::GLuint MakeTexture(gl::GLsizei width, gl::GLsizei height, const std::vector<Pixel>& texels);

/// Counts the GL calls of a scope by name ("glGenTextures").
class CallCounter {
  public:
    CallCounter();
    ~CallCounter();
    CallCounter(const CallCounter&) = delete;
    CallCounter& operator=(const CallCounter&) = delete;

    int Calls(const std::string& name) const;
    /// Calls whose name starts so.
    int CallsLike(const std::string& prefix) const;

  private:
    std::map<std::string, int> calls_;
};

/// Each case runs on this thread's record. Whatever the driver complains about fails the case.
class GlTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    AESDK_OpenGL_EffectRenderData& Record() { return *record_; }
    /// Gives the thread back as it was before the case; complaints are still heard.
    void LeaveContext() { saved_.reset(); }
    /// For a case that has provoked the driver.
    void ForgetComplaints() { complaints_.clear(); }

  private:
    std::optional<AESDK_OpenGL_SavedContext> saved_;
    std::shared_ptr<AESDK_OpenGL_EffectRenderData> record_;
    std::vector<std::string> complaints_;
};

}  // namespace flumo::tests
