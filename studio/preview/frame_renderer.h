// One applied effect that renders any state of the document, for one thread.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "host/instance.h"
#include "scene/control.h"
#include "studio/document/scene_state.h"

namespace flumo::studio {

/// A frame at the scene's resolution (divisor 1), or at one half (2) or one quarter (4) of it.
struct FramePlace {
    int frame = 0;
    int divisor = 1;

    auto operator<=>(const FramePlace&) const = default;
};

class FrameRenderer {
  public:
    /// Both must outlive the renderer. The instance is made with the first frame.
    FrameRenderer(const scene::ControlCatalog& catalog, host::Host& host);
    ~FrameRenderer();
    FrameRenderer(const FrameRenderer&) = delete;
    FrameRenderer& operator=(const FrameRenderer&) = delete;

    /// Renders as `flumo render` does; only what differs from the state of the last call is set anew. Nothing
    /// is returned for a frame that was given up because `abort`, which is asked now and then, told so.
    /// Throws Failure (unreadable input) for a layer and HostError for a frame; the next call begins anew
    /// then.
    std::shared_ptr<const host::World> render(const SharedState& state, const FramePlace& place,
                                              const std::function<bool()>& abort);

    /// Layers are read from their files again with the next frame.
    void forget_layers();

  private:
    void apply(const SharedState& state);
    scene::Tracks changed_tracks(const SharedState& state) const;

    const scene::ControlCatalog& catalog_;
    host::Host& host_;
    std::unique_ptr<host::Instance> instance_;
    SharedState applied_;  ///< null when the instance must be made anew
};

}  // namespace flumo::studio
