#include "effect/gpu/gl/program.h"

#include <glbinding/gl33core/gl.h>

#include <array>

#include "effect/gpu/gl/fault.h"
#include "effect/gpu/gl/log.h"
#include "effect/gpu/gl/shader_log.h"

using namespace gl33core;

namespace flumo {

namespace {

using LogBuffer = std::array<GLchar, 4096>;

/// Logs the driver's log of a shader or a program, and throws.
[[noreturn]] void Fail(const char* failure, const LogBuffer& log, const char* text) {
    LogMessage(ShaderLogMessage(failure, log.data(), text));
    throw AESDK_OpenGL_Fault{kFaultProgram};
}

GLuint CompileShader(GLenum stage, const char* text) {
    const GLuint shader = glCreateShader(stage);
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint status = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &status);
    if (status != 0) return shader;
    LogBuffer log{};
    glGetShaderInfoLog(shader, static_cast<GLsizei>(log.size()), nullptr, log.data());
    Fail(stage == GL_VERTEX_SHADER ? "Flumo: a vertex shader does not compile"
                                   : "Flumo: a fragment shader does not compile",
         log, text);
}

void Link(GLuint program) {
    glLinkProgram(program);
    GLint status = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &status);
    if (status != 0) return;
    LogBuffer log{};
    glGetProgramInfoLog(program, static_cast<GLsizei>(log.size()), nullptr, log.data());
    Fail("Flumo: a program does not link", log, "");
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
    Link(program);
    glDetachShader(program, vertex);
    glDetachShader(program, fragment);
    glDeleteShader(vertex);
    glDeleteShader(fragment);
    return program;
}

}  // namespace flumo
