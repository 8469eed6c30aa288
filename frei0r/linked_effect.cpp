#include "frei0r/linked_effect.h"

#include <ostream>

#include "effect/entry/effect_main.h"
#include "effect/gpu/version_lines.h"

namespace flumo {

// Standard output belongs to the program that has loaded the plug-in, and may carry its video.
std::ostream& AESDK_OpenGL_VersionLines() {
    static std::ostream nowhere(nullptr);
    return nowhere;
}

namespace frei0r {

host::Module linked_effect() {
    return {EffectMain, PluginDataEntryFunction};
}

}  // namespace frei0r
}  // namespace flumo
