// Where the driver's version lines go.
#pragma once

#include <iosfwd>

namespace flumo {

/// Standard output, in the effect's library. A program that links the effect and wants its standard output
/// for itself defines the function anew: the linker then leaves the library's out.
std::ostream& AESDK_OpenGL_VersionLines();

}  // namespace flumo
