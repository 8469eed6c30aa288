#include "frei0r/plugin.h"

namespace flumo::frei0r {

const PluginIdentity kPlugin = {PluginKind::kSource, "Flumo", "Animated procedural noise and isolines"};

}  // namespace flumo::frei0r
