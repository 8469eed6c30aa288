#include "studio/preview/frame_renderer.h"

#include "host/module/host_error.h"
#include "job/look.h"
#include "scene/scene_text.h"

namespace flumo::studio {

FrameRenderer::FrameRenderer(const scene::ControlCatalog& catalog, host::Host& host)
    : catalog_(catalog), host_(host) {}

FrameRenderer::~FrameRenderer() = default;

void FrameRenderer::forget_layers() {
    applied_ = nullptr;
}

// Controls that have no track any more get their defaults.
scene::Tracks FrameRenderer::changed_tracks(const SharedState& state) const {
    scene::Tracks tracks;
    for (const int index : changed_controls(*applied_, *state)) {
        const auto found = state->scene.tracks.find(index);
        if (found != state->scene.tracks.end()) {
            tracks.insert(*found);
        } else {
            const scene::Control& control = catalog_.controls().at(static_cast<std::size_t>(index) - 1);
            tracks[index] = {&control, {{0, scene::default_value(control, host_)}}};
        }
    }
    return tracks;
}

// Layers are converted to the frame's depth, so another depth needs all of them again.
void FrameRenderer::apply(const SharedState& state) {
    if (applied_ == state) return;
    const bool anew = !applied_ || applied_->scene.depth != state->scene.depth;
    if (anew) instance_ = host_.new_instance();
    const scene::Tracks tracks = anew ? state->scene.tracks : changed_tracks(state);
    applied_ = nullptr;
    job::apply_tracks(*instance_, tracks, static_cast<host::Depth>(*state->scene.depth));
    applied_ = state;
}

std::shared_ptr<const host::World> FrameRenderer::render(const SharedState& state, const FramePlace& place,
                                                         const std::function<bool()>& abort) {
    apply(state);
    const scene::Scene& scene = state->scene;
    bool aborted = false;
    host::FrameRequest request;
    request.width = scene.size->width;
    request.height = scene.size->height;
    request.depth = static_cast<host::Depth>(*scene.depth);
    request.frame = place.frame;
    request.rate = *scene.rate;
    request.downsample_x = request.downsample_y = {
        scene.resolution->num, static_cast<A_u_long>(scene.resolution->den * place.divisor)};
    request.abort = [&] {
        aborted = aborted || abort();
        return aborted ? PF_Interrupt_CANCEL : PF_Err_NONE;
    };
    try {
        return std::make_shared<const host::World>(instance_->render(request));
    } catch (const host::HostError&) {
        if (aborted) return nullptr;
        throw;
    }
}

}  // namespace flumo::studio
