// The textures that the image of one frame reads: layers and ramps.
#pragma once

#include <glbinding/gl/types.h>

#include <array>
#include <cstddef>
#include <vector>

#include "effect/params/param_snapshot.h"
#include "host/values/world.h"

namespace flumo::bench {

/// Belongs to the context that was current when load() was called; clear() it while that context is current.
class FrameTextures {
  public:
    /// Copies the snapshot's layers, which have this depth, and its ramps. What the frame leaves out gets no
    /// texture: the code that a driver makes depends on which samplers have one.
    void load(PF_InData* in_data, ParamSnapshot& snapshot, host::Depth depth);
    /// Makes the layers' textures from the same pixels where there are none, as the uploads of a frame do.
    void upload_layers();
    /// Deletes them. The pixels stay.
    void delete_layers();
    void clear();

    /// Sets the texture units and the switches of the layers. The program is in use.
    void set_uniforms(gl::GLuint program) const;
    void bind() const;

  private:
    struct Pixels {
        PF_EffectWorld shape{};
        std::vector<std::byte> bytes;
    };
    static constexpr size_t kLayers = 3;

    gl::GLuint upload(const Pixels& layer) const;

    host::Depth depth_ = host::Depth::k8;
    std::array<Pixels, kLayers> layers_;
    /// For the units 0 to 4: three layers, the ramp of the lines, that of the noise. 0 where there is none.
    std::array<gl::GLuint, kLayers + 2> textures_{};
};

}  // namespace flumo::bench
