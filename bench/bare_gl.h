// The GL work of a frame alone, which the effect's render call is compared with.
#pragma once

#include <glbinding/gl/types.h>

#include <vector>

#include "bench/cost.h"
#include "bench/frame_textures.h"
#include "effect/gpu/render_data.h"
#include "effect_api/effect.h"
#include "host/values/world.h"

namespace flumo::bench {

struct BareCost {
    /// The image alone, drawn into the double-size texture.
    Cost main_draw;
    /// The layers' uploads, the three passes, the read-back, the deletion of the layers' textures.
    Cost all;
    /// The read-back alone.
    Cost read_back;
};

/// Which text draws the image.
enum class Image { kEffect, kReference };

/// A context separate from the effect's, with the same programs, sizes, uniforms and textures. Used only on
/// the thread that made it, after the effect's global set-up.
class BareGl {
  public:
    /// `image` selects the image program among the frame's five; the reference is built in any case.
    /// Throws AESDK_OpenGL_Fault.
    BareGl(int width, int height, host::Depth depth, Image image = Image::kEffect);
    ~BareGl();
    BareGl(const BareGl&) = delete;
    BareGl& operator=(const BareGl&) = delete;

    /// Copies uniforms, layers and gradients from the render command that `in_data` belongs to.
    PF_Err load(PF_InData* in_data);
    BareCost draw();

    // With Image::kEffect:

    /// Draws a small image with the effect's program and with the reference, so that the driver compiles
    /// both. Returns the number of pixels that differ in a bit.
    int differing_pixels();
    /// The image alone, as BareCost::main_draw, with the reference.
    Cost draw_reference();

  private:
    struct Size {
        int width;
        int height;
    };

    Size large() const { return {2 * width_, 2 * height_}; }
    void draw_image(gl::GLuint program, Size viewport) const;
    std::vector<float> small_image(gl::GLuint program) const;
    void draw_reduction() const;
    void draw_output() const;
    void read_back();

    int width_;
    int height_;
    host::Depth depth_;
    Image image_;
    AESDK_OpenGL_EffectRenderData objects_;
    /// One of objects_, for the look that was loaded last.
    gl::GLuint program_ = 0;
    /// 0 where the reference is among objects_.
    gl::GLuint reference_ = 0;
    FrameTextures textures_;
    std::vector<std::byte> pixels_;
};

}  // namespace flumo::bench
