#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

namespace flumo::test {

using Texel = std::array<float, 4>;

// Floats in four channels, row 0 first.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<Texel> texels;

    const Texel& at(int x, int y) const { return texels[static_cast<size_t>(y * width + x)]; }
    bool empty() const { return texels.empty(); }
};

Image filled_image(int width, int height, const Texel& texel);

// The GL objects below belong to the current context and die with their owner.

// A linked program, its attributes bound to locations where a name is given. Throws std::runtime_error with
// the driver's log and the numbered text where it fails.
class Program {
  public:
    Program(const std::string& vertex_text, const std::string& fragment_text,
            const std::map<unsigned, const char*>& attributes = {});
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void use() const;
    // Unknown names are ignored, as GL does it. The program must be in use.
    void set(const char* name, int value) const;
    void set(const char* name, float value) const;
    void set(const char* name, const std::array<float, 2>& value) const;
    void set_matrix(const char* name, const std::array<float, 16>& columns) const;
    int attribute(const char* name) const;  // location, or -1

  private:
    unsigned id_ = 0;
};

// GL_RGBA32F, linear filter, clamped at its edges. An empty image makes no texture: binding it binds 0.
class Texture {
  public:
    explicit Texture(const Image& image);
    ~Texture();
    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;

    void bind(int unit) const;

  private:
    unsigned id_ = 0;
};

// Draws one quad over a GL_RGBA32F target of this size with the program in use, without blending, and reads
// it back. The texture coordinates (attribute `UVs`) run from (u0, v0) in the first row to (u1, v1) in the
// last.
Image draw_quad(const Program& program, int width, int height,
                const std::array<float, 4>& uvs = {0, 0, 1, 1});

}  // namespace flumo::test
