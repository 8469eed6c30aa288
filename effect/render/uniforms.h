// From control values to the uniforms of the main program.
#pragma once

#include <glbinding/gl/types.h>

#include "effect/params/param_snapshot.h"

namespace flumo {

/// What a frame's uniforms are made of.
struct FrameUniforms {
    const ParamSnapshot& snapshot;
    /// Frame size in pixels.
    A_long width;
    A_long height;
    /// The host's horizontal resolution, 1 for full and 0.5 for half.
    float downsampleX;
    float multiplier16bit;
};

/// Sets all uniforms but samplers and layer switches. The program is in use; a uniform that its compiler
/// has dropped is skipped.
void SetFrameUniforms(gl::GLuint program, const FrameUniforms& frame);

}  // namespace flumo
