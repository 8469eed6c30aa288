// `flumo controls`.
#pragma once

#include <string>

#include "job/session.h"

namespace flumo::cli {

/// The controls as the effect registered them, a line each, aligned, with a heading.
std::string controls_as_text(job::Session& session);

/// The same as a JSON array of objects with index, id, diskId, name, kind, group, default and what else
/// the kind has: range, slider, choices, percent; keyframes tells whether it may vary over time.
std::string controls_as_json(job::Session& session);

}  // namespace flumo::cli
