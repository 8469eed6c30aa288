// The effect, linked in, in the stand-in host, with render calls that can be measured in parts.
#pragma once

#include <functional>

#include "bench/cost.h"
#include "bench/scenes.h"
#include "effect_api/smart.h"
#include "host/host.h"
#include "host/instance.h"

namespace flumo::bench {

/// Replaces the effect's handler of PF_Cmd_SMART_RENDER.
using RenderHandler = std::function<PF_Err(PF_InData*, PF_OutData*, PF_SmartRenderExtra*)>;

struct RenderCost {
    /// The host's whole render call: pre-render, output world and render.
    Cost call;
    /// PF_Cmd_SMART_RENDER alone.
    Cost command;
};

class EffectRunner {
  public:
    /// Starts the host. The lines about the driver that the effect prints are not shown.
    EffectRunner();

    host::Host& host() { return host_; }
    /// "version | vendor | renderer", as the effect printed them.
    const std::string& driver() const { return driver_; }

    /// Renders one frame with the effect.
    RenderCost render(host::Instance& instance, const host::FrameRequest& request, host::World& output);
    /// One render call in which `handler` replaces the effect's own handler of the render command.
    RenderCost render(host::Instance& instance, const host::FrameRequest& request, host::World& output,
                      const RenderHandler& handler);

  private:
    host::Module module_;
    host::Host host_;
    std::string driver_;
};

/// A render handler that makes the same calls of the host as the effect, and draws nothing.
PF_Err call_host_alone(PF_InData* in_data, PF_OutData* out_data, PF_SmartRenderExtra* extra);

}  // namespace flumo::bench
