#include "tests/glsl/glsl_bench.h"

#include <stdexcept>

#include "effect/shaders/shader_texts.h"

namespace flumo::test {
namespace {

constexpr int kPointsPerRow = 256;
constexpr int kTexelsPerPoint = 3;
constexpr int kPointsUnit = 5;

// The module's text with its main renamed, and a main that evaluates an expression in its place.
std::string text_around(const std::string& expression) {
    const std::string entry = "void main()";
    std::string text = kMainFragmentText;
    const size_t place = text.find(entry);
    if (place == std::string::npos || text.find(entry, place + 1) != std::string::npos) {
        throw std::runtime_error("the main fragment text does not have exactly one \"void main()\"");
    }
    text.replace(place, entry.size(), "void programMain()");
    return text + R"(
uniform sampler2D benchPoints;
void main() {
    ivec2 texel = ivec2(gl_FragCoord.xy) * ivec2(3, 1);
    vec4 a = texelFetch(benchPoints, texel, 0);
    vec4 b = texelFetch(benchPoints, texel + ivec2(1, 0), 0);
    vec4 c = texelFetch(benchPoints, texel + ivec2(2, 0), 0);
    colourOut = )" +
           expression + ";\n}\n";
}

Image points_image(std::span<const Point> points) {
    const int rows = (static_cast<int>(points.size()) + kPointsPerRow - 1) / kPointsPerRow;
    Image image = filled_image(kPointsPerRow * kTexelsPerPoint, rows, {});
    for (size_t i = 0; i < points.size() * kTexelsPerPoint; ++i) {
        const float* from = points[i / kTexelsPerPoint].data() + i % kTexelsPerPoint * 4;
        std::copy(from, from + 4, image.texels[i].begin());
    }
    return image;
}

void set_uniforms(const Program& program, const MainUniforms& uniforms) {
    uniforms.each([&](const char* name, const auto& value) { program.set(name, value); });
}

}  // namespace

GlslBench& GlslBench::shared() {
    static GlslBench bench;
    return bench;
}

bool GlslBench::is_software() const {
    return renderer().find("llvmpipe") != std::string::npos ||
           renderer().find("softpipe") != std::string::npos;
}

const Program& GlslBench::program(const std::string& expression) {
    auto& slot = programs_[expression];
    if (!slot) {
        const std::string text = expression.empty() ? kMainFragmentText : text_around(expression);
        slot = std::make_unique<Program>(kUvVertexText, text);
    }
    slot->use();
    return *slot;
}

std::vector<Texel> GlslBench::evaluate(const std::string& expression, std::span<const Point> points,
                                       const MainUniforms& uniforms) {
    const Program& used = program(expression);
    const Image arguments = points_image(points);
    const Texture texture(arguments);
    texture.bind(kPointsUnit);
    used.set("benchPoints", kPointsUnit);
    set_uniforms(used, uniforms);
    std::vector<Texel> results = draw_quad(used, kPointsPerRow, arguments.height).texels;
    results.resize(points.size());
    return results;
}

Image GlslBench::draw(const Scene& scene, int width, int height, const std::string& expression) {
    const Program& used = program(expression);
    const Texture layer1(scene.layer1), layer2(scene.layer2), layer3(scene.layer3);
    const Texture linesRamp(scene.linesRamp), noiseRamp(scene.noiseRamp);
    const Texture* textures[] = {&layer1, &layer2, &layer3, &linesRamp, &noiseRamp};
    const char* samplers[] = {"inputTexture1", "inputTexture2", "inputTexture3", "linesGradientTexture",
                              "noiseGradientTexture"};
    for (int unit = 0; unit < 5; ++unit) {
        textures[unit]->bind(unit);
        used.set(samplers[unit], unit);
    }
    set_uniforms(used, scene.uniforms);
    return draw_quad(used, width, height, scene.uvs);
}

}  // namespace flumo::test
