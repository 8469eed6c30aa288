#include "tests/glsl/gl_objects.h"

#include <glbinding/gl33core/gl.h>

#include <sstream>
#include <stdexcept>

using namespace gl33core;

namespace flumo::test {
namespace {

std::string numbered(const std::string& text) {
    std::istringstream lines(text);
    std::ostringstream result;
    int number = 0;
    for (std::string line; std::getline(lines, line);)
        result << ++number << ": " << line << '\n';
    return result.str();
}

GLuint compile(GLenum stage, const std::string& text) {
    const GLuint shader = glCreateShader(stage);
    const char* source = text.c_str();
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint done = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &done);
    if (done == 0) {
        std::string log(4096, '\0');
        glGetShaderInfoLog(shader, 4096, nullptr, log.data());
        throw std::runtime_error("shader does not compile: " + log + "\n" + numbered(text));
    }
    return shader;
}

void attach_target(GLuint texture, int width, int height) {
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(GL_RGBA32F), width, height, 0, GL_RGBA, GL_FLOAT,
                 nullptr);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
        throw std::runtime_error("a float framebuffer is not complete");
    }
    glViewport(0, 0, width, height);
}

// x, y in output pixels, then u, v.
void feed_quad(const Program& program, float width, float height, const std::array<float, 4>& uvs) {
    const auto [u0, v0, u1, v1] = uvs;
    const float vertices[] = {0, 0, u0, v0, width, 0, u1, v0, 0, height, u0, v1, width, height, u1, v1};
    glBufferData(GL_ARRAY_BUFFER, sizeof vertices, vertices, GL_STATIC_DRAW);
    int offset = 0;
    for (const char* name : {"Position", "UVs"}) {
        const int location = program.attribute(name);
        if (location >= 0) {
            const auto index = static_cast<GLuint>(location);
            glEnableVertexAttribArray(index);
            glVertexAttribPointer(index, 2, GL_FLOAT, GL_FALSE, 16, reinterpret_cast<const void*>(offset));
        }
        offset += 8;
    }
}

}  // namespace

Image filled_image(int width, int height, const Texel& texel) {
    return {width, height, std::vector<Texel>(static_cast<size_t>(width * height), texel)};
}

Program::Program(const std::string& vertex_text, const std::string& fragment_text,
                 const std::map<unsigned, const char*>& attributes)
    : id_(glCreateProgram()) {
    for (const GLuint shader :
         {compile(GL_VERTEX_SHADER, vertex_text), compile(GL_FRAGMENT_SHADER, fragment_text)}) {
        glAttachShader(id_, shader);
        glDeleteShader(shader);  // lives on as long as it is attached
    }
    for (const auto& [location, name] : attributes)
        glBindAttribLocation(id_, location, name);
    glLinkProgram(id_);
    GLint done = 0;
    glGetProgramiv(id_, GL_LINK_STATUS, &done);
    if (done == 0) {
        std::string log(4096, '\0');
        glGetProgramInfoLog(id_, 4096, nullptr, log.data());
        throw std::runtime_error("program does not link: " + log);
    }
}

Program::~Program() {
    glDeleteProgram(id_);
}

void Program::use() const {
    glUseProgram(id_);
}

void Program::set(const char* name, int value) const {
    glUniform1i(glGetUniformLocation(id_, name), value);
}

void Program::set(const char* name, float value) const {
    glUniform1f(glGetUniformLocation(id_, name), value);
}

void Program::set(const char* name, const std::array<float, 2>& value) const {
    glUniform2f(glGetUniformLocation(id_, name), value[0], value[1]);
}

void Program::set_matrix(const char* name, const std::array<float, 16>& columns) const {
    glUniformMatrix4fv(glGetUniformLocation(id_, name), 1, GL_FALSE, columns.data());
}

int Program::attribute(const char* name) const {
    return glGetAttribLocation(id_, name);
}

Texture::Texture(const Image& image) {
    if (image.empty()) return;
    glGenTextures(1, &id_);
    glBindTexture(GL_TEXTURE_2D, id_);
    for (const GLenum filter : {GL_TEXTURE_MAG_FILTER, GL_TEXTURE_MIN_FILTER}) {
        glTexParameteri(GL_TEXTURE_2D, filter, static_cast<GLint>(GL_LINEAR));
    }
    for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T}) {
        glTexParameteri(GL_TEXTURE_2D, wrap, static_cast<GLint>(GL_CLAMP_TO_EDGE));
    }
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(GL_RGBA32F), image.width, image.height, 0, GL_RGBA,
                 GL_FLOAT, image.texels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
}

Texture::~Texture() {
    glDeleteTextures(1, &id_);
}

void Texture::bind(int unit) const {
    glActiveTexture(GL_TEXTURE0 + static_cast<unsigned>(unit));
    glBindTexture(GL_TEXTURE_2D, id_);
    glActiveTexture(GL_TEXTURE0);
}

Image draw_quad(const Program& program, int width, int height, const std::array<float, 4>& uvs) {
    const auto w = static_cast<float>(width);
    const auto h = static_cast<float>(height);
    program.set_matrix("ModelviewProjection", {2 / w, 0, 0, 0, 0, 2 / h, 0, 0, 0, 0, 1, 0, -1, -1, 0, 1});
    GLuint target = 0;
    GLuint framebuffer = 0;
    GLuint vertices = 0;
    GLuint array = 0;
    glGenTextures(1, &target);
    glGenFramebuffers(1, &framebuffer);
    glGenBuffers(1, &vertices);
    glGenVertexArrays(1, &array);
    // The target's texture is made on a unit that no program of ours samples.
    glActiveTexture(GL_TEXTURE0 + 15u);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    attach_target(target, width, height);
    glActiveTexture(GL_TEXTURE0);
    glBindVertexArray(array);
    glBindBuffer(GL_ARRAY_BUFFER, vertices);
    feed_quad(program, w, h, uvs);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    Image image = filled_image(width, height, {});
    glReadPixels(0, 0, width, height, GL_RGBA, GL_FLOAT, image.texels.data());
    glDeleteVertexArrays(1, &array);
    glDeleteBuffers(1, &vertices);
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteTextures(1, &target);
    if (glGetError() != GL_NO_ERROR) throw std::runtime_error("a draw left a GL error behind");
    return image;
}

}  // namespace flumo::test
