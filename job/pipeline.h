// Frames through render threads, a bounded store of worlds, and encoder threads.
#pragma once

#include <cstddef>
#include <functional>

#include "host/values/world.h"

namespace flumo::job {

struct PipelineShape {
    std::size_t render_threads = 1;
    std::size_t encoder_threads = 1;
    /// Worlds that exist at any time, whatever the number of frames: being rendered, waiting, being encoded.
    std::size_t worlds = 3;
    /// Encode in the order of positions, as a stream needs it; takes one encoder thread.
    bool in_order = false;
};

/// What is done with each position 0 to count - 1. Every function is called from several threads.
struct PipelineWork {
    std::size_t count = 0;
    /// Asked before each position; true begins no more.
    std::function<bool()> stop;
    /// Fills the world, which keeps its memory from frame to frame; false when there is nothing to encode.
    std::function<bool(std::size_t, host::World&)> render;
    std::function<void(std::size_t, const host::World&)> encode;
};

/// Returns when every position that was started is finished; the first render thread is the caller's own.
/// After an exception of `render` or `encode` no more is started, what was rendered before is still encoded
/// (in order: up to the gap), and the first exception is thrown again.
void run_pipeline(const PipelineShape& shape, const PipelineWork& work);

}  // namespace flumo::job
