// One frame of a process that has drawn nothing yet.
#pragma once

#include "bench/bare_gl.h"
#include "bench/theatre.h"

namespace flumo::bench {

/// Starts the effect and draws one frame of the default look at 8 bits: by the effect, or by the same GL work
/// with the reference in the place of its image program.
void draw_first_frame(Image image, const FrameSize& size);

}  // namespace flumo::bench
