#include "tests/glsl/frame_twin.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace flumo::twin {
namespace {

Vec2 as_vec(const test::Pair& pair) {
    return {pair[0], pair[1]};
}

double lerp(double from, double to, double share) {
    return from + (to - from) * share;
}

// Linear filter between texel centres, clamped at the edges.
std::array<double, 4> sampled(const test::Image& image, Vec2 uv) {
    const double x = std::clamp(uv.x * image.width, 0.5, image.width - 0.5) - 0.5;
    const double y = std::clamp(uv.y * image.height, 0.5, image.height - 0.5) - 0.5;
    const int left = static_cast<int>(x);
    const int top = static_cast<int>(y);
    const int right = std::min(left + 1, image.width - 1);
    const int bottom = std::min(top + 1, image.height - 1);
    std::array<double, 4> result{};
    for (size_t channel = 0; channel < 4; ++channel) {
        const auto texel = [&](int column, int row) -> double { return image.at(column, row)[channel]; };
        result[channel] = lerp(lerp(texel(left, top), texel(right, top), x - left),
                               lerp(texel(left, bottom), texel(right, bottom), x - left), y - top);
    }
    return result;
}

Colour ramp_colour(const test::Image& ramp, double position) {
    const auto texel = sampled(ramp, {position, 0.5});
    return {texel[0], texel[1], texel[2], 1};
}

Colour inverted(Colour colour, bool lightness, bool alpha) {
    if (lightness) colour = {1 - colour.r, 1 - colour.g, 1 - colour.b, colour.a};
    if (alpha) colour.a = 1 - colour.a;
    return colour;
}

double smooth(double low, double high, double value) {
    const double t = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

// 0 on the nearest of the contours ref + whole number, 1 away from it.
double isoline(double value, double slope, double ref, double width) {
    if (slope == 0) return 1;
    const double distance = std::fabs(std::remainder(value - ref, 1.0));
    return smooth(0.2, 0.8, distance / slope - width / 2);
}

}  // namespace

FrameTwin::FrameTwin(const test::Scene& scene, LineRandom random, int width, int height)
    : scene_(scene), u_(scene.uniforms), random_(std::move(random)), width_(width), height_(height) {}

void FrameTwin::decided(double distance) {
    margin_ = std::min(margin_, std::fabs(distance));
}

Vec2 FrameTwin::uv_at(double x, double y) const {
    const auto [u0, v0, u1, v1] = scene_.uvs;
    return {lerp(u0, u1, (x + 0.5) / width_), lerp(v0, v1, (y + 0.5) / height_)};
}

Colour FrameTwin::layer_colour(const test::Image& layer, Vec2 uv) const {
    const auto texel = sampled(layer, uv);
    const double full = u_.multiplier16bit;
    return {texel[1] * full, texel[2] * full, texel[3] * full, texel[0] * full};  // alpha comes first
}

double FrameTwin::noise_height(Vec2 uv) const {
    const NoiseArguments arguments{uv,
                                   u_.noiseType,
                                   u_.evolution,
                                   u_.loopEvolution,
                                   as_vec(u_.scale),
                                   {u_.offsetX, u_.offsetY},
                                   u_.fluidSpeed,
                                   u_.complexity,
                                   u_.complexity};
    return u_.noiseContrast / 100 * noiseWithLoop(arguments, nullptr);
}

double FrameTwin::layer_height(const Colour& layer, double gain) const {
    return gain * (layer.r + layer.g + layer.b) / 3 * layer.a;
}

double FrameTwin::cut_step(double low, double high, double value) {
    if (low < high) return smooth(low, high, value);
    decided(value - high);
    return value >= high ? 1 : 0;
}

double FrameTwin::cropping(double value, bool bottom, double bottom_threshold, double bottom_feather,
                           bool top, double top_threshold, double top_feather) {
    double share = 1;
    if (bottom) share *= cut_step(bottom_threshold, bottom_threshold + bottom_feather, value);
    if (top) share *= 1 - cut_step(top_threshold - top_feather, top_threshold, value);
    return share;
}

Height FrameTwin::height_at(Vec2 uv) {
    margin_ = 1;
    double value = noise_height(uv);
    double coverage = 1;
    if (u_.useLayer1 == 1) {
        const Colour layer = inverted(layer_colour(scene_.layer1, uv), u_.layer1LightnessInvert == 1,
                                      u_.layer1AlphaInvert == 1);
        value *= layer_height(layer, u_.layer1Mult);
        decided(layer.a - u_.alphaThreshold);
        if (layer.a < u_.alphaThreshold) coverage = 0;
    }
    if (u_.useLayer2 == 1) {
        const Colour layer = inverted(layer_colour(scene_.layer2, uv), u_.layer2LightnessInvert == 1,
                                      u_.layer2AlphaInvert == 1);
        value += layer_height(layer, u_.layer2Mult);
    }
    value += u_.noiseBrightness / 100;
    coverage *= cropping(value, u_.noiseBottomCroppingEnabled == 1, u_.noiseBottomCroppingThreshold,
                         u_.noiseBottomCroppingFeather, u_.noiseTopCroppingEnabled == 1,
                         u_.noiseTopCroppingThreshold, u_.noiseTopCroppingFeather);
    return {value, coverage};
}

double FrameTwin::wrapped(double position) {
    decided(position - std::round(position));
    return position - std::floor(position);
}

Colour FrameTwin::noise_colour(Vec2 uv, Vec2 slope, double height) {
    double position = height + u_.noiseGradientOffset;
    position = u_.noiseGradientScaleBase + (position - u_.noiseGradientScaleBase) * u_.noiseGradientScale;
    if (u_.noiseGradientLoop == 1) position = wrapped(position);
    const Vec3 slice{position * u_.gradientRandomizeFrequency * 10, u_.randomSeed + 5.0, 0};
    position += 2 * u_.gradientRandomizeAmplitude * perlinNoise(slice);
    switch (u_.colorizeMode) {
        case 1:
            return ramp_colour(scene_.noiseRamp, position);
        case 2:
            return layer_colour(scene_.layer3, {position, 0.5});
        case 3: {
            const double x = slope.x * u_.reflectionScale;
            const double y = slope.y * u_.reflectionScale;
            const double length = std::sqrt(x * x + y * y + 0.01 * 0.01);
            const Vec3 normal{0.5 - x / length / 2, 0.5 - y / length / 2, 0.5 - 0.01 / length / 2};
            if (u_.useLayer3 == 0) return {normal.x, normal.y, normal.z, 1};
            return layer_colour(scene_.layer3, {normal.x, normal.y});
        }
        case 4: {
            const double shift = (2 * height - 1) * u_.reflectionScale;
            Vec2 at{uv.x + shift, uv.y + shift};
            if (u_.noiseGradientLoop == 1) at = {wrapped(at.x), wrapped(at.y)};
            return layer_colour(scene_.layer3, at);
        }
        default:
            return {0, 0, 0, 1};
    }
}

double FrameTwin::gradient_position(int line) {
    const double lines = u_.linesCount + 1.0;
    double position = line / lines + u_.linesGradientOffset;
    position = u_.linesGradientScaleBase + (position - u_.linesGradientScaleBase) * u_.linesGradientScale;
    position += (random_(static_cast<float>(line), u_.randomSeed + 1) - 0.5) * u_.gradientRandomize / lines;
    return u_.linesGradientLoop == 1 ? wrapped(position) : position;
}

double FrameTwin::line_mask(Vec2 uv, int line) {
    const double share = random_(static_cast<float>(line), u_.randomSeed * 3) - 0.5;
    const double shift = 360 * share * u_.alphaRandomize / (u_.linesCount + 1);
    // Signs of lines 0, 1, 2, 3 and so on in a cycle of four.
    constexpr std::array<int, 4> signs_x{1, 1, -1, -1};
    constexpr std::array<int, 4> signs_y{1, -1, -1, 1};
    const auto turn = static_cast<size_t>(line % 4);
    const Vec2 offset{u_.linesAlphaNoiseOffset[0] + signs_x[turn] * shift,
                      u_.linesAlphaNoiseOffset[1] + signs_y[turn] * shift};
    const double noise =
        noiseWithLoop({uv, u_.linesAlphaNoiseType, u_.linesAlphaNoiseEvolution + shift,
                       u_.linesAlphaNoiseLoopEvolution, as_vec(u_.linesAlphaNoiseScale), offset,
                       u_.linesAlphaNoiseSpeed, u_.linesAlphaNoiseComplexity, u_.complexity},
                      nullptr);
    // A driver knows smoke to about a thousandth only.
    decided((noise - u_.linesAlphaThreshold) * (u_.linesAlphaNoiseType == 3 ? 0.01 : 1));
    return noise >= u_.linesAlphaThreshold ? 1 : 0;
}

Colour FrameTwin::blended(const Colour& under, const Colour& line, double alpha) const {
    const auto each = [&](auto channel) {
        return Colour{channel(under.r, line.r), channel(under.g, line.g), channel(under.b, line.b), 0};
    };
    const auto unit = [](double value) { return std::clamp(value, 0.0, 1.0); };
    Colour result = under;
    if (u_.linesBlendMode == 1) {
        const double below = under.a * (1 - alpha);
        const double sum = alpha + below;
        if (sum == 0) return {0, 0, 0, 0};
        result =
            each([&](double lower, double upper) { return unit((upper * alpha + lower * below) / sum); });
        result.a = sum;
    } else if (u_.linesBlendMode == 2) {
        result = each([&](double lower, double upper) { return unit(lower + alpha * upper); });
        result.a = unit(under.a + alpha);
    } else if (u_.linesBlendMode == 3) {
        result = each([&](double lower, double upper) { return lower * (1 - alpha + alpha * upper); });
        result.a = alpha + under.a * (1 - alpha);
    }
    return result;
}

Colour FrameTwin::lines_over(Colour under, Vec2 uv, Vec2 slope, double height) {
    const double crop = cropping(height, u_.linesBottomCroppingEnabled == 1, u_.linesBottomCroppingThreshold,
                                 u_.linesBottomCroppingFeather, u_.linesTopCroppingEnabled == 1,
                                 u_.linesTopCroppingThreshold, u_.linesTopCroppingFeather);
    double shifted = height + u_.linesOffset;
    double steepness = 2 * std::hypot(slope.x, slope.y);
    if (u_.linesLoop == 0) {
        // Where the clamp sets in, a driver's difference of neighbours sees half of the slope.
        const double reach = std::fabs(slope.x) + std::fabs(slope.y);
        if (std::fabs(shifted) < reach || std::fabs(shifted - 1) < reach) decided(0);
        if (shifted < 0 || shifted > 1) steepness = 0;
        shifted = std::clamp(shifted, 0.0, 1.0);
    }
    const double lines = u_.linesCount + 1.0;
    for (int line = 1; line <= u_.linesCount; ++line) {
        const auto number = static_cast<float>(line);
        const double jitter = (random_(number, u_.randomSeed) - 0.5) * u_.linesRandomize;
        const double width = u_.linesWidth * (1 + random_(number, u_.randomSeed + 2) * u_.widthRandomize);
        const double visible = 1 - isoline(shifted, steepness, (line + jitter) / lines, width);
        const double alpha = u_.linesAlpha * crop * visible * line_mask(uv, line);
        under = blended(under, ramp_colour(scene_.linesRamp, gradient_position(line)), alpha);
    }
    return under;
}

Colour FrameTwin::colour_at(int x, int y) {
    const Vec2 uv = uv_at(x, y);
    const double height = height_at(uv).value;
    // Differences within the block of two by two fragments that a driver shades together.
    const auto across = [&](int column) { return height_at(uv_at(column, y)).value; };
    const auto down = [&](int row) { return height_at(uv_at(x, row)).value; };
    const Vec2 slope{across(x | 1) - across(x & ~1), down(y | 1) - down(y & ~1)};
    const double coverage = height_at(uv).coverage;
    Colour colour{0, 0, 0, 0};
    if (u_.noiseVisible == 1) {
        colour = noise_colour(uv, slope, height);
        colour.a *= coverage;
    }
    if (u_.linesVisible == 1) colour = lines_over(colour, uv, slope, height);
    return colour;
}

}  // namespace flumo::twin
