#include "effect/gpu/version_lines.h"

#include <iostream>

namespace flumo {

std::ostream& AESDK_OpenGL_VersionLines() {
    return std::cout;
}

}  // namespace flumo
