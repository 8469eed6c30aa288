// One frame of a process that has drawn nothing yet.
#pragma once

#include "bench/bare_gl.h"
#include "bench/bench_context.h"

namespace flumo::bench {

/// Starts the effect and draws one frame of the default look at 8 bits: with the effect, or with the same GL
/// work and the reference instead of its image program.
void draw_first_frame(Image image, const FrameSize& size);

}  // namespace flumo::bench
