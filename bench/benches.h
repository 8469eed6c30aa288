// The benches by subject. Each function registers its cases; the theatre must outlive the run.
#pragma once

#include "bench/theatre.h"

namespace flumo::bench {

/// Every standard scene at every depth: the image alone, the bare GL work and the whole render command.
void register_frames(Theatre& theatre);
/// Read-back, the host's share of a render call, a thread's first frame.
void register_parts(Theatre& theatre);
/// Frame size, number of lines, number of threads.
void register_scaling(Theatre& theatre);

}  // namespace flumo::bench
