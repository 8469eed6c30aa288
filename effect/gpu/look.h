// A look: values that the main program's text can have as constants when it is compiled.
#pragma once

#include <glbinding/gl/types.h>

#include <string_view>
#include <vector>

namespace flumo {

/// One switch of the main text and its value in a look. The text declares it as a uniform, or as a global
/// computed from uniforms.
struct LookConstant {
    /// GLSL type: "int", "float" or "bool".
    std::string_view type;
    std::string_view name;
    int value;

    bool operator==(const LookConstant&) const = default;
};

/// Frames of equal looks, with equal order of the switches, can be drawn with one program. Switches that a
/// look leaves out stay as the text declares them.
using Look = std::vector<LookConstant>;

/// The main program for one look.
struct LookProgram {
    Look look;
    gl::GLuint program;  // 0 when it could not be built
};

}  // namespace flumo
