// The GL work of a frame and nothing else: what the effect's render call is measured against.
#pragma once

#include <vector>

#include "bench/cost.h"
#include "effect/gpu/render_data.h"
#include "effect_api/effect.h"
#include "host/values/world.h"

namespace flumo::bench {

struct BareCost {
    /// The image alone, drawn into the double-size texture.
    Cost main_draw;
    /// The three passes and the read-back.
    Cost all;
    /// The read-back alone.
    Cost read_back;
};

/// An own context beside the effect's, with the same programs, sizes, uniforms and textures. Belongs to the
/// thread that made it; the effect is set up.
class BareGl {
  public:
    /// Throws AESDK_OpenGL_Fault.
    BareGl(int width, int height, host::Depth depth);
    ~BareGl();
    BareGl(const BareGl&) = delete;
    BareGl& operator=(const BareGl&) = delete;

    /// Takes over uniforms, layers and gradients of the frame that a render command is about.
    PF_Err load(PF_InData* in_data);
    BareCost draw();

  private:
    void draw_main() const;
    void draw_reduction() const;
    void draw_output() const;
    void read_back();

    int width_;
    int height_;
    host::Depth depth_;
    AESDK_OpenGL_EffectRenderData objects_;
    std::vector<gl::GLuint> textures_;
    std::vector<std::byte> pixels_;
};

}  // namespace flumo::bench
