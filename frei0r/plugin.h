// What makes one plug-in differ from the other: a source file for each.
#pragma once

#include "frei0r/parameters.h"

namespace flumo::frei0r {

struct PluginIdentity {
    PluginKind kind;
    const char* name;
    const char* explanation;
};

/// Of the plug-in that this file is.
extern const PluginIdentity kPlugin;

}  // namespace flumo::frei0r
