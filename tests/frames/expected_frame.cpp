#include "tests/frames/expected_frame.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <numbers>
#include <set>
#include <type_traits>

#include "tests/glsl/comparison.h"

namespace flumo::test {
namespace {

using enum Section;
using U = MainUniforms;

// A uniform bears its control's id, but for these.
std::string uniform_name(Section control) {
    if (control == Speed) return "fluidSpeed";
    if (control == LineWidth) return "linesWidth";
    if (control == AlphaTreshold) return "alphaThreshold";
    if (control == Seed) return "randomSeed";
    std::string name(ControlOf(control).id);
    name[0] = static_cast<char>(std::tolower(name[0]));
    return name;
}

// What a number is multiplied by on its way to a float uniform.
double factor(Section control) {
    static const std::set<Section> plain = {
        NoiseContrast, NoiseBrightness, Evolution,    Layer1Mult, Layer2Mult, LinesAlphaNoiseEvolution,
        LineWidth,     ReflectionScale, LinesVisible, Seed};
    static const std::set<Section> thousandths = {OffsetX, OffsetY, Speed, LinesAlphaNoiseSpeed};
    if (plain.contains(control)) return 1;
    if (thousandths.contains(control)) return 0.001;
    return control == GradientRandomize ? 0.1 : 0.01;
}

struct PairRule {
    Section control;
    void (*apply)(U& uniforms, float value);
};

// The main scale zooms in as it grows, the alpha noise's scale zooms out.
constexpr PairRule kPairRules[] = {
    {Scale,
     [](U& u, float value) {
         u.scale = {u.scale[0] * 100 / value, u.scale[1] * 100 / value};
     }},
    {ScaleX, [](U& u, float value) { u.scale[0] *= 100 / value; }},
    {ScaleY, [](U& u, float value) { u.scale[1] *= 100 / value; }},
    {LinesAlphaNoiseScale,
     [](U& u, float value) {
         u.linesAlphaNoiseScale = {u.linesAlphaNoiseScale[0] * value / 100,
                                   u.linesAlphaNoiseScale[1] * value / 100};
     }},
    {LinesAlphaNoiseScaleX, [](U& u, float value) { u.linesAlphaNoiseScale[0] *= value / 100; }},
    {LinesAlphaNoiseScaleY, [](U& u, float value) { u.linesAlphaNoiseScale[1] *= value / 100; }},
    {LinesAlphaNoiseOffsetX, [](U& u, float value) { u.linesAlphaNoiseOffset[0] = value / 1000; }},
    {LinesAlphaNoiseOffsetY, [](U& u, float value) { u.linesAlphaNoiseOffset[1] = value / 1000; }},
};

void set_number(U& uniforms, Section control, double value) {
    for (const PairRule& rule : kPairRules)
        if (rule.control == control) return rule.apply(uniforms, static_cast<float>(value));
    const std::string wanted = uniform_name(control);
    uniforms.each([&](const char* name, const auto& uniform) {
        using Type = std::remove_cvref_t<decltype(uniform)>;
        if constexpr (!std::is_same_v<Type, Pair>) {
            const double scaled = std::is_same_v<Type, int> ? value : value * factor(control);
            if (name == wanted)
                const_cast<Type&>(uniform) = static_cast<Type>(scaled);  // of a mutable record
        }
    });
}

double eased(double u) {
    return (0.5 - 0.5 * std::cos(std::numbers::pi * u)) * 0.7 + u * 0.3;
}

Texel between(const Stop& left, const Stop& right, double at) {
    double u = (at - left.at) / (right.at - left.at);
    if (left.kind == 1) u = eased(u);
    if (left.kind == 2) u = 0;
    const auto mixed = [u](float from, float to) { return static_cast<float>(from * (1 - u) + to * u); };
    return {mixed(left.r, right.r), mixed(left.g, right.g), mixed(left.b, right.b), 1};
}

Image ramp(const Stops& stops) {
    Image image = filled_image(2048, 1, {});
    for (size_t i = 0; i < 2048; ++i) {
        const double at = static_cast<double>(i) / 2047;
        const auto next =
            std::ranges::find_if(stops, [at](const Stop& stop) { return double{stop.at} > at; });
        const Stop& right = next == stops.end() ? stops.back() : *next;
        const Stop& left = next == stops.begin() ? stops.front() : *(next - 1);
        image.texels[i] = &left == &right ? Texel{left.r, left.g, left.b, 1} : between(left, right, at);
    }
    return image;
}

// What GL reads out of a layer: alpha first, and 16-bit channels as shares of 65535.
Image texture_of(const host::World& world) {
    const float scale = world.depth() == host::Depth::k16 ? 32768.0F / 65535 : 1.0F;
    Image image = filled_image(world.width(), world.height(), {});
    for (int y = 0; y < world.height(); ++y) {
        for (int x = 0; x < world.width(); ++x) {
            const auto [r, g, b, a] = world.rgba(x, y);
            image.texels[static_cast<size_t>(y * world.width() + x)] = {a * scale, r * scale, g * scale,
                                                                        b * scale};
        }
    }
    return image;
}

void set_layer(Scene& scene, Section control, const host::Layer& layer) {
    if (!layer) return;
    Image image = texture_of(*layer);
    if (control == Layer1) scene.layer1 = std::move(image), scene.uniforms.useLayer1 = 1;
    if (control == Layer2) scene.layer2 = std::move(image), scene.uniforms.useLayer2 = 1;
    if (control == Layer3) scene.layer3 = std::move(image), scene.uniforms.useLayer3 = 1;
}

double ratio(const PF_RationalScale& scale) {
    return static_cast<double>(scale.num) / scale.den;
}

void place(Scene& scene, const host::FrameRequest& request, const host::WorldShape& shape) {
    const double width = request.width * ratio(request.downsample_x);
    const double height = request.height * ratio(request.downsample_y);
    scene.uvs = {static_cast<float>(shape.origin_x / width), static_cast<float>(shape.origin_y / height),
                 static_cast<float>((shape.origin_x + shape.width) / width),
                 static_cast<float>((shape.origin_y + shape.height) / height)};
}

Scene scene_of(const Shot& shot, const host::WorldShape& shape) {
    Scene scene;
    scene.layer3 = filled_image(1, 1, {0, 0, 0, 1});  // what GL gives for no texture
    scene.noiseRamp = ramp({{0, 0, 0, 0, 1}, {1, 1, 1, 1, 1}});
    for (const auto& [section, setting] : shot.look) {
        if (const auto* number = std::get_if<double>(&setting.value)) {
            set_number(scene.uniforms, section, *number);
        } else if (const auto* layer = std::get_if<host::Layer>(&setting.value)) {
            set_layer(scene, section, *layer);
        } else {
            (section == Gradient ? scene.noiseRamp : scene.linesRamp) = ramp(std::get<Stops>(setting.value));
        }
    }
    scene.uniforms.linesWidth *= static_cast<float>(ratio(shot.request.downsample_x));
    if (shape.depth == host::Depth::k16) scene.uniforms.multiplier16bit = 65535.0F / 32768;
    place(scene, shot.request, shape);
    return scene;
}

// Single precision and a few steps of arithmetic away from the number that is decided on.
constexpr double kDecisionMargin = 1e-4;

double step(host::Depth depth) {
    return depth == host::Depth::k8 ? 1.0 / 255 : depth == host::Depth::k16 ? 1.0 / 32768 : 0;
}

// A delivered channel ends where the type does.
double ceiling(host::Depth depth) {
    return depth == host::Depth::k8 ? 1 : depth == host::Depth::k16 ? 65535.0 / 32768 : 1e9;
}

}  // namespace

ExpectedFrame::ExpectedFrame(const Shot& shot, const host::WorldShape& shape)
    : shape_(shape),
      scene_(scene_of(shot, shape)),
      twin_(scene_, twin::rand, 2 * shape.width, 2 * shape.height),
      fragments_(static_cast<size_t>(4 * shape.width * shape.height)) {}

const ExpectedFrame::Fragment& ExpectedFrame::fragment(int x, int y) {
    auto& cached = fragments_[static_cast<size_t>(y * 2 * shape_.width + x)];
    if (!cached) {
        const auto [r, g, b, a] = twin_.colour_at(x, y);
        cached = Fragment{{r * a, g * a, b * a, a}, twin_.margin() > kDecisionMargin};
    }
    return *cached;
}

// Five taps, each between four fragments: at the pixel's centre and one fragment away along the diagonals.
std::optional<twin::Colour> ExpectedFrame::at(int x, int y) {
    constexpr std::array<std::array<int, 2>, 5> taps{{{0, 0}, {1, 1}, {-1, 1}, {1, -1}, {-1, -1}}};
    twin::Colour sum{0, 0, 0, 0};
    for (const auto& [dx, dy] : taps) {
        for (int corner = 0; corner < 4; ++corner) {
            const int column = std::clamp(2 * x + dx + corner % 2, 0, 2 * shape_.width - 1);
            const int row = std::clamp(2 * y + dy + corner / 2, 0, 2 * shape_.height - 1);
            const auto& [colour, decided] = fragment(column, row);
            if (!decided) return std::nullopt;
            sum = {sum.r + colour.r / 20, sum.g + colour.g / 20, sum.b + colour.b / 20,
                   sum.a + colour.a / 20};
        }
    }
    if (std::fabs(sum.a - 0.01) < kDecisionMargin) return std::nullopt;
    if (sum.a < 0.01) return twin::Colour{0, 0, 0, 0};
    return twin::Colour{sum.r / sum.a, sum.g / sum.a, sum.b / sum.a, sum.a};
}

void compare_with_expected(const std::string& name, const Shot& shot, const host::World& frame,
                           double tolerance, double allowed_beyond) {
    const int pixels = frame.width() * frame.height();
    // A stride without a common divisor with widths here, so that all columns have their turn.
    const int stride = pixels > kComparedPixels ? 83 : 1;
    const double top = ceiling(frame.depth());
    ExpectedFrame expected(shot, frame.shape());
    Comparison comparison(name, tolerance + 0.501 * step(frame.depth()), allowed_beyond);
    int undecided = 0;
    for (int i = 0; i < pixels; i += stride) {
        const int x = i % frame.width();
        const int y = i / frame.width();
        const auto wanted = expected.at(x, y);
        if (!wanted) {
            ++undecided;
            continue;
        }
        const auto got = frame.rgba(x, y);
        const double channels[] = {wanted->r, wanted->g, wanted->b, wanted->a};
        for (size_t c = 0; c < 4; ++c) {
            const double weight = c < 3 ? std::min(wanted->a, 1.0) : 1.0;
            comparison.add(got[c] * weight, std::min(channels[c], top) * weight, [&] {
                return "channel " + std::to_string(c) + " of " + std::to_string(x) + ", " + std::to_string(y);
            });
        }
    }
    EXPECT_LE(undecided, pixels / stride / 6) << name;
}

}  // namespace flumo::test
