// The scene that a request describes.
#pragma once

#include "job/render_request.h"
#include "media/picture/frame_notes.h"
#include "scene/control.h"
#include "scene/scene.h"

namespace flumo::job {

/// What the request asks for over its scene, preset or picture. What neither says is empty, except that a
/// duration gives frames. `notes` becomes what the picture or video says that the scene comes from. Throws
/// Failure: (usage) for values that do not fit, (unreadable input) for a file.
scene::Scene scene_of_request(const RenderRequest& request, const scene::ControlCatalog& catalog,
                              media::FrameNotes& notes);

}  // namespace flumo::job
