#include "effect/gpu/program.h"

#include <glbinding/gl33core/gl.h>

#include <array>

#include "effect/gpu/fault.h"

using namespace gl33core;

namespace flumo {

namespace {

using LogBuffer = std::array<GLchar, 4096>;

// A log is read into this buffer and goes no further: the host learns of the failure by number alone.
void RequireCompiled(GLuint shader) {
    GLint status = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &status);
    if (status != 0) return;
    LogBuffer log{};
    glGetShaderInfoLog(shader, static_cast<GLsizei>(log.size()), nullptr, log.data());
    throw AESDK_OpenGL_Fault{kFaultProgram};
}

void RequireLinked(GLuint program) {
    GLint status = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &status);
    if (status != 0) return;
    LogBuffer log{};
    glGetProgramInfoLog(program, static_cast<GLsizei>(log.size()), nullptr, log.data());
    throw AESDK_OpenGL_Fault{kFaultProgram};
}

GLuint CompileShader(GLenum stage, const char* text) {
    const GLuint shader = glCreateShader(stage);
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    RequireCompiled(shader);
    return shader;
}

void BindAttributes(GLuint program, std::span<const int> attributes) {
    constexpr std::array<const GLchar*, 3> names = {"Position", "UVs", "Color"};
    for (const int entry : attributes) {
        if (entry < 0 || entry >= static_cast<int>(names.size())) continue;
        glBindAttribLocation(program, static_cast<GLuint>(entry), names[static_cast<size_t>(entry)]);
    }
}

}  // namespace

GLuint AESDK_OpenGL_BuildProgram(const char* vertexText, const char* fragmentText,
                                 std::span<const int> attributes) {
    const GLuint vertex = CompileShader(GL_VERTEX_SHADER, vertexText);
    const GLuint fragment = CompileShader(GL_FRAGMENT_SHADER, fragmentText);
    const GLuint program = glCreateProgram();
    glAttachShader(program, vertex);
    glAttachShader(program, fragment);
    BindAttributes(program, attributes);
    glLinkProgram(program);
    RequireLinked(program);
    glDetachShader(program, vertex);
    glDetachShader(program, fragment);
    glDeleteShader(vertex);
    glDeleteShader(fragment);
    return program;
}

}  // namespace flumo
