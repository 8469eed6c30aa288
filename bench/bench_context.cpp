#include "bench/bench_context.h"

namespace flumo::bench {

host::FrameRequest request_for(const FrameSize& size, host::Depth depth) {
    return {.width = size.width, .height = size.height, .depth = depth};
}

BareGl& BenchContext::bare(const FrameSize& size, host::Depth depth) {
    if (bare_ && bare_->size == size && bare_->depth == depth) return bare_->gl;
    bare_.reset();
    bare_.emplace(size, depth);
    const auto instance = runner_.host().new_instance();
    const host::FrameRequest request = request_for(size, depth);
    host::World output;
    runner_.render(*instance, request, output);
    runner_.render(*instance, request, output, [this](PF_InData* in_data, PF_OutData*, PF_SmartRenderExtra*) {
        return bare_->gl.load(in_data);
    });
    bare_->gl.draw();
    return bare_->gl;
}

}  // namespace flumo::bench
