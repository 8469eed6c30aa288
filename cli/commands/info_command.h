// `flumo info`.
#pragma once

#include <string>

#include "job/session.h"

namespace flumo::cli {

/// Who the effect is, the flags that it set by name, and the driver that it found. `printed` is what the
/// effect wrote on standard output when it was set up.
std::string info_as_text(job::Session& session, const std::string& printed);
std::string info_as_json(job::Session& session, const std::string& printed);

/// Makes a context, compiles and renders a tiny frame: how long that took, in milliseconds. Throws Failure
/// (no OpenGL) when no picture comes out.
double check_rendering(job::Session& session);

}  // namespace flumo::cli
