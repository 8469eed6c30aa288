#include "bench/first_frame.h"

namespace flumo::bench {

void draw_first_frame(Image image, const FrameSize& size) {
    constexpr host::Depth depth = host::Depth::k8;
    EffectRunner runner;
    const auto instance = runner.host().new_instance();
    host::World output;
    if (image == Image::kEffect) {
        runner.render(*instance, request_for(size, depth), output);
        return;
    }
    runner.render(*instance, request_for(size, depth), output,
                  [&size](PF_InData* in_data, PF_OutData*, PF_SmartRenderExtra*) {
                      BareGl bare(size.width, size.height, depth, Image::kReference);
                      const PF_Err err = bare.load(in_data);
                      if (err == PF_Err_NONE) bare.draw();
                      return err;
                  });
}

}  // namespace flumo::bench
