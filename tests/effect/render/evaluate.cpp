#include "tests/effect/render/evaluate.h"

#include <glbinding/gl/gl.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "effect/gpu/gl/draw.h"
#include "effect/gpu/gl/fault.h"
#include "effect/gpu/gl/program.h"
#include "effect/gpu/resources.h"
#include "effect/gpu/target.h"
#include "effect/render/uniforms.h"
#include "effect/shaders/shader_texts.h"
#include "tests/effect/render/effect_fixture.h"

using namespace gl;

namespace flumo::test {
namespace {

constexpr int kPointsPerRow = 256;
constexpr int kTexelsPerPoint = 3;
constexpr int kPointsUnit = 5;
constexpr int kCellReach = 40;
constexpr int kLines = 1000;

// The module's text with its main renamed, and a main that evaluates an expression in its place.
std::string text_around(const std::string& expression) {
    const std::string entry = "void main()";
    std::string text = kMainFragmentText;
    text.replace(text.find(entry), entry.size(), "void programMain()");
    return text + R"(
uniform sampler2D pointTexels;
void main() {
    ivec2 texel = ivec2(gl_FragCoord.xy) * ivec2(3, 1);
    vec4 a = texelFetch(pointTexels, texel, 0);
    vec4 b = texelFetch(pointTexels, texel + ivec2(1, 0), 0);
    vec4 c = texelFetch(pointTexels, texel + ivec2(2, 0), 0);
    colourOut = )" +
           expression + ";\n}\n";
}

/// Compiled once; contexts of all threads share them.
GLuint program_of(const std::string& expression) {
    static std::map<std::string, GLuint> programs;
    GLuint& program = programs[expression];
    const std::array<int, 2> attributes = {kAttributePosition, kAttributeUVs};
    try {
        const std::string text = text_around(expression);
        if (program == 0) program = AESDK_OpenGL_BuildProgram(kUvVertexText, text.c_str(), attributes);
    } catch (const AESDK_OpenGL_Fault&) {
        throw std::runtime_error("does not compile: " + expression);
    }
    return program;
}

GLuint points_texture(std::span<const Point> points, int rows) {
    std::vector<Texel> texels(static_cast<size_t>(kPointsPerRow * kTexelsPerPoint * rows));
    for (size_t i = 0; i < points.size() * kTexelsPerPoint; ++i)
        std::copy_n(&points[i / kTexelsPerPoint][i % kTexelsPerPoint * 4], 4, texels[i].begin());
    return make_texture(kPointsPerRow * kTexelsPerPoint, rows, texels);
}

}  // namespace

std::vector<Texel> evaluate(const std::string& expression, std::span<const Point> points,
                            const ParamSnapshot& controls) {
    const GlScope gl;
    const int rows = (static_cast<int>(points.size()) + kPointsPerRow - 1) / kPointsPerRow;
    const GLuint program = program_of(expression);
    const GLuint arguments = points_texture(points, rows);
    AESDK_OpenGL_PrepareResources(*gl, kPointsPerRow, static_cast<uint16_t>(rows), 1);
    AESDK_OpenGL_BindTarget(*gl, gl->resultTexture);
    glViewport(0, 0, kPointsPerRow, rows);
    glUseProgram(program);
    SetFrameUniforms(program, {.snapshot = controls,
                               .width = kPointsPerRow,
                               .height = rows,
                               .downsampleX = 1,
                               .multiplier16bit = 1});
    BindSampler(program, arguments, "pointTexels", kPointsUnit);
    SetBlendMode(BlendMode::kOff);
    glBindVertexArray(gl->quadVertexArray);
    DrawQuad(gl->quadVertexBuffer);
    glBindVertexArray(0);
    glActiveTexture(GL_TEXTURE0);
    glDeleteTextures(1, &arguments);
    std::vector<Texel> results = read_texture(gl->resultTexture);
    results.resize(points.size());
    return results;
}

bool is_software_driver() {
    return driver_lines().find("llvmpipe") != std::string::npos ||
           driver_lines().find("softpipe") != std::string::npos;
}

double driver_rand(int line, float seed) {
    static std::map<float, std::vector<Texel>> by_seed;
    std::vector<Texel>& numbers = by_seed[seed];
    if (numbers.empty()) {
        std::vector<Point> lines;
        for (int i = 0; i <= kLines; ++i)
            lines.push_back({static_cast<float>(i), seed});
        numbers = evaluate("vec4(rand(a.xy))", lines);
    }
    return numbers.at(static_cast<size_t>(line))[0];
}

twin::Vec2 driver_hash2(int x, int y) {
    constexpr int kSide = 2 * kCellReach + 1;
    static std::vector<Texel> hashes;
    if (hashes.empty()) {
        std::vector<Point> cells;
        for (int i = 0; i < kSide * kSide; ++i)
            cells.push_back(
                {static_cast<float>(i % kSide - kCellReach), static_cast<float>(i / kSide - kCellReach)});
        hashes = evaluate("hash2(a.xy).xyxy", cells);
    }
    if (std::max(std::abs(x), std::abs(y)) > kCellReach) throw std::out_of_range("a cell too far out");
    const Texel& hash = hashes.at(static_cast<size_t>((y + kCellReach) * kSide + x + kCellReach));
    return {hash[0], hash[1]};
}

}  // namespace flumo::test
