// The effect, linked in, on the stand-in host; and a place from which a bench can look inside a render call.
#pragma once

#include <functional>

#include "bench/cost.h"
#include "bench/scenes.h"
#include "effect_api/smart.h"
#include "host/host.h"
#include "host/instance.h"

namespace flumo::bench {

/// Stands in for the effect's answer to PF_Cmd_SMART_RENDER.
using RenderAnswer = std::function<PF_Err(PF_InData*, PF_OutData*, PF_SmartRenderExtra*)>;

struct RenderCost {
    /// The host's whole render call: pre-render, output world and render.
    Cost call;
    /// PF_Cmd_SMART_RENDER alone.
    Cost command;
};

class Stage {
  public:
    /// Starts the host; the driver's lines that the effect prints go nowhere.
    Stage();

    host::Host& host() { return host_; }
    /// "version | vendor | renderer", as the effect printed them.
    const std::string& driver() const { return driver_; }

    /// One frame by the effect.
    RenderCost render(host::Instance& instance, const host::FrameRequest& request, host::World& output);
    /// One render call in which `answer` takes the place of the effect's own answer to the render command.
    RenderCost render(host::Instance& instance, const host::FrameRequest& request, host::World& output,
                      const RenderAnswer& answer);

  private:
    host::Module module_;
    host::Host host_;
    std::string driver_;
};

/// What the effect asks of the host for a frame, without any drawing: the stub of an effect.
PF_Err ask_host_alone(PF_InData* in_data, PF_OutData* out_data, PF_SmartRenderExtra* extra);

}  // namespace flumo::bench
