// Compiling and linking programs.
#pragma once

#include <glbinding/gl/types.h>

#include <span>

namespace flumo {

/// Entries of a program's attribute list: which names get a location of their own before linking.
enum AttributeEntry : int { kAttributePosition = 0, kAttributeUVs = 1, kAttributeColor = 2 };

/// Compiles both texts and links them. Entry n of the list binds "Position", "UVs" or "Color" to location
/// 0, 1 or 2; other numbers are skipped. The caller owns the program. When a text does not compile or the
/// program does not link, writes the driver's log through LogMessage and throws AESDK_OpenGL_Fault with
/// kFaultProgram; the objects made before stay in the context.
gl::GLuint AESDK_OpenGL_BuildProgram(const char* vertexText, const char* fragmentText,
                                     std::span<const int> attributes);

}  // namespace flumo
