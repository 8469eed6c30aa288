// The options that say what is rendered, shared by several commands.
#pragma once

#include "job/render_request.h"

namespace CLI {
class App;
}

namespace flumo::cli {

/// Adds the options of frames, look and layers to `command`; parsing fills `request`, which must outlive it.
void add_look_options(CLI::App& command, job::RenderRequest& request);

/// Throws Failure (usage) for options that contradict each other.
void refuse_contradictions(const job::RenderRequest& request);

}  // namespace flumo::cli
