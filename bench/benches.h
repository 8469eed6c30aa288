// The benches by subject. Each function registers its cases; the context must outlive the run.
#pragma once

#include "bench/bench_context.h"

namespace flumo::bench {

/// Every standard scene at every depth: the image, the bare GL work and the whole render command.
void register_frames(BenchContext& context);
/// Read-back, the host's share of a render call, a thread's first frame.
void register_parts(BenchContext& context);
/// Cost by frame size, number of lines and number of threads.
void register_scaling(BenchContext& context);

}  // namespace flumo::bench
