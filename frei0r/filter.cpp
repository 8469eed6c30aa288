#include "frei0r/plugin.h"

namespace flumo::frei0r {

const PluginIdentity kPlugin = {PluginKind::kFilter, "Flumo Filter",
                                "Animated procedural noise and isolines, over the picture or shaped by it"};

}  // namespace flumo::frei0r
