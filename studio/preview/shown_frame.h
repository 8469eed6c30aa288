// A frame on its way from a render thread to the screen.
#pragma once

#include <QImage>
#include <QMetaType>
#include <cstdint>
#include <memory>

#include "base/frame_size.h"
#include "base/resolution.h"
#include "host/values/world.h"
#include "studio/document/scene_state.h"
#include "studio/preview/display.h"
#include "studio/preview/frame_renderer.h"

namespace flumo::studio {

/// What the render thread is to show: `world` if it is there already, otherwise the frame, first at
/// `coarsest` and then finer by halves up to `finest`.
struct FrameOrder {
    std::uint64_t number = 0;  ///< ascending
    SharedState state;
    int frame = 0;
    int coarsest = 4;
    int finest = 1;
    Channels channels = Channels::kRgb;
    std::shared_ptr<const host::World> world;
};

struct ShownFrame {
    std::uint64_t order = 0;
    SharedState state;
    FramePlace place;
    bool is_finest = false;
    Channels channels = Channels::kRgb;
    std::shared_ptr<const host::World> world;
    QImage image;

    /// Of the finished picture.
    FrameSize full_size() const { return reduced(*state->scene.size, *state->scene.resolution); }
};

}  // namespace flumo::studio

Q_DECLARE_METATYPE(flumo::studio::ShownFrame)
