// `flumo controls`.
#pragma once

#include <string>

#include "cli/session.h"

namespace flumo::cli {

/// The controls as the effect registered them, a line each, aligned, with a heading.
std::string controls_as_text(Session& session);

/// The same as a JSON array of objects with index, id, diskId, name, kind, group, default and what else
/// the kind has: range, slider, choices, percent; keyframes tells whether it may vary over time.
std::string controls_as_json(Session& session);

}  // namespace flumo::cli
