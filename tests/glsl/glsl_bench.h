#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "tests/glsl/gl_objects.h"
#include "tests/glsl/headless_context.h"
#include "tests/glsl/main_uniforms.h"

namespace flumo::test {

// Arguments of one evaluation: in the expression they are the vec4s a (0 to 3), b (4 to 7) and c (8 to 11).
using Point = std::array<float, 12>;

// All that the main program reads. Layers are in the host's channel order, alpha first; ramps are red first.
// An empty image leaves its sampler without a texture, which costs the driver one more compile.
struct Scene {
    MainUniforms uniforms;
    Image layer1 = filled_image(3, 3, {1, 1, 1, 1});
    Image layer2 = filled_image(3, 3, {1, 1, 1, 1});
    Image layer3 = filled_image(3, 3, {1, 1, 1, 1});
    Image linesRamp = filled_image(3, 3, {1, 1, 1, 1});
    Image noiseRamp = filled_image(3, 3, {1, 1, 1, 1});
    std::array<float, 4> uvs{0, 0, 1, 1};  // texture coordinates of the first and the last corner
};

// Runs the module's main fragment text, or single functions of it, on the driver at hand:
//     bench.evaluate("vec4(rand(a.xy))", points)[i][0]
class GlslBench {
  public:
    // One bench a process, so that programs are compiled once. Throws std::runtime_error without a driver.
    static GlslBench& shared();

    std::string renderer() const { return context_.renderer(); }
    // llvmpipe and softpipe: sines good to the last bits, no fused multiply-add in sums.
    bool is_software() const;

    // The value of a vec4 expression at each point; it may call every function and read every uniform.
    std::vector<Texel> evaluate(const std::string& expression, std::span<const Point> points,
                                const MainUniforms& uniforms = {});

    // A frame of the main program as it stands, or of an expression in its place that may read out_uvs.
    Image draw(const Scene& scene, int width, int height, const std::string& expression = "");

  private:
    const Program& program(const std::string& expression);

    HeadlessContext context_;
    std::map<std::string, std::unique_ptr<Program>> programs_;
};

}  // namespace flumo::test
