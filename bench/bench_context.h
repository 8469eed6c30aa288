// What all benches share: one effect, and the bare GL work of one size and depth at a time.
#pragma once

#include <optional>

#include "bench/bare_gl.h"
#include "bench/effect_runner.h"

namespace flumo::bench {

struct FrameSize {
    int width = 1920;
    int height = 1080;
    bool operator==(const FrameSize&) const = default;
};

struct BenchOptions {
    /// Size of the frames of the standard scenes.
    FrameSize size;
    /// How long one case may be repeated. A case of a frame has at least two turns.
    double seconds_per_case = 30;
};

host::FrameRequest request_for(const FrameSize& size, host::Depth depth);

class BenchContext {
  public:
    explicit BenchContext(const BenchOptions& options) : options_(options) {}

    const BenchOptions& options() const { return options_; }
    EffectRunner& runner() { return runner_; }
    /// The bare GL work, warmed up: the driver has compiled its programs and all memory was touched.
    BareGl& bare(const FrameSize& size, host::Depth depth);

  private:
    struct Bare {
        Bare(const FrameSize& its_size, host::Depth its_depth)
            : size(its_size), depth(its_depth), gl(its_size.width, its_size.height, its_depth) {}
        FrameSize size;
        host::Depth depth;
        BareGl gl;
    };

    BenchOptions options_;
    EffectRunner runner_;
    std::optional<Bare> bare_;
};

}  // namespace flumo::bench
