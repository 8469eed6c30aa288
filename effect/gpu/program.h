// Compiling and linking.
#pragma once

#include <glbinding/gl/types.h>

#include <span>

namespace flumo {

/// Entries of a program's attribute list: which names get a location of their own before linking.
enum AttributeEntry : int { kAttributePosition = 0, kAttributeUVs = 1, kAttributeColor = 2 };

/// Compiles both texts and links them. Entry n of the list binds "Position", "UVs" or "Color" to location
/// 0, 1 or 2; other numbers are skipped. Throws AESDK_OpenGL_Fault 6; the log is dropped, and what was
/// made so far stays in the context. The caller owns the program.
gl::GLuint AESDK_OpenGL_BuildProgram(const char* vertexText, const char* fragmentText,
                                     std::span<const int> attributes);

}  // namespace flumo
