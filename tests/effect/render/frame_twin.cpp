#include "tests/effect/render/frame_twin.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "tests/effect/render/evaluate.h"

namespace flumo::twin {
namespace {

using enum Section;
using test::Stop;
using test::Stops;

/// Single precision and a few steps of arithmetic away from the number that is decided on.
constexpr double kDecisionMargin = 1e-4;

Colour lerp(const Colour& from, const Colour& to, double share) {
    return {std::lerp(from.r, to.r, share), std::lerp(from.g, to.g, share), std::lerp(from.b, to.b, share),
            std::lerp(from.a, to.a, share)};
}

double unit(double value) {
    return std::clamp(value, 0.0, 1.0);
}

double smooth(double low, double high, double value) {
    const double t = unit((value - low) / (high - low));
    return t * t * (3 - 2 * t);
}

// Linear filter between texel centres, clamped at the edges.
Colour sampled(const Image& image, Vec2 uv) {
    const int height = static_cast<int>(image.texels.size()) / image.width;
    const double x = std::clamp(uv.x * image.width, 0.5, image.width - 0.5) - 0.5;
    const double y = std::clamp(uv.y * height, 0.5, height - 0.5) - 0.5;
    const int left = static_cast<int>(x);
    const int top = static_cast<int>(y);
    const auto row = [&](int number) {
        const Colour* first = &image.texels[static_cast<size_t>(std::min(number, height - 1) * image.width)];
        return lerp(first[left], first[std::min(left + 1, image.width - 1)], x - left);
    };
    return lerp(row(top), row(top + 1), y - top);
}

Colour between(const Stop& left, const Stop& right, double at) {
    double u = (at - left.at) / (right.at - left.at);
    if (left.kind == 1) u = (0.5 - 0.5 * std::cos(std::numbers::pi * u)) * 0.7 + u * 0.3;
    if (left.kind == 2) u = 0;
    return lerp({left.r, left.g, left.b, 1}, {right.r, right.g, right.b, 1}, u);
}

// 2048 texels, the first at 0 and the last at 1.
Image ramp(const Stops& stops) {
    Image image{.width = 2048};
    for (int i = 0; i < 2048; ++i) {
        const double at = i / 2047.0;
        const auto next =
            std::ranges::find_if(stops, [at](const Stop& stop) { return double{stop.at} > at; });
        const Stop& right = next == stops.end() ? stops.back() : *next;
        const Stop& left = next == stops.begin() ? stops.front() : *(next - 1);
        image.texels.push_back(&left == &right ? Colour{left.r, left.g, left.b, 1}
                                               : between(left, right, at));
    }
    return image;
}

// What GL makes of a 16-bit channel, full scale 32768, and what the program multiplies every layer by in a
// 16-bit frame.
constexpr double kSixteenBits = 65535.0 / 32768;

Image as_sampled(const host::World& world, bool deep_frame) {
    const double scale =
        (world.depth() == host::Depth::k16 ? 1 / kSixteenBits : 1) * (deep_frame ? kSixteenBits : 1);
    Image image{.width = world.width()};
    for (int i = 0; i < world.width() * world.height(); ++i) {
        const auto [r, g, b, a] = world.rgba(i % world.width(), i / world.width());
        image.texels.push_back({r * scale, g * scale, b * scale, a * scale});
    }
    return image;
}

double ratio(const PF_RationalScale& scale) {
    return static_cast<double>(scale.num) / scale.den;
}

double cut_step(double low, double high, double value, Margin& margin) {
    if (low < high) return smooth(low, high, value);
    margin.decided(value - high);
    return value >= high ? 1 : 0;
}

double cropping(const Cuts& cuts, double height, Margin& margin) {
    double share = 1;
    if (const auto& cut = cuts.bottom)
        share *= cut_step(cut->threshold, cut->threshold + cut->feather, height, margin);
    if (const auto& cut = cuts.top)
        share *= 1 - cut_step(cut->threshold - cut->feather, cut->threshold, height, margin);
    return share;
}

double wrapped(double position, Margin& margin) {
    margin.decided(position - std::round(position));
    return position - std::floor(position);
}

/// A line over a colour; mode 1 normal, 2 add, 3 multiply.
Colour blended(int mode, const Colour& under, const Colour& line, double alpha) {
    const auto each = [&](auto channel, double result_alpha) {
        return Colour{channel(under.r, line.r), channel(under.g, line.g), channel(under.b, line.b),
                      result_alpha};
    };
    const double below = under.a * (1 - alpha);
    if (mode == 1) {
        if (alpha + below == 0) return {0, 0, 0, 0};
        return each([&](double lower,
                        double upper) { return unit((upper * alpha + lower * below) / (alpha + below)); },
                    alpha + below);
    }
    if (mode == 2)
        return each([&](double lower, double upper) { return unit(lower + alpha * upper); },
                    unit(under.a + alpha));
    if (mode == 3)
        return each([&](double lower, double upper) { return lower * (1 - alpha + alpha * upper); },
                    alpha + below);
    return under;
}

}  // namespace

void Margin::decided(double distance) {
    nearest = std::min(nearest, std::fabs(distance));
}

double isoline(double value, double slope, double ref, double width) {
    if (slope == 0) return 1;
    const double distance = std::fabs(std::remainder(value - ref, 1.0));
    return smooth(0.2, 0.8, distance / slope - width / 2);
}

FrameTwin::FrameTwin(const test::FrameCase& frame_case, const host::WorldShape& shape)
    : layer3_{1,
              {{0, 0, shape.depth == host::Depth::k16 ? kSixteenBits : 1,
                0}}},  // no texture: the last channel is 1
      noise_ramp_(ramp({{0, 0, 0, 0, 1}, {1, 1, 1, 1, 1}})),
      lines_ramp_(ramp({{0, 1, 1, 1}, {1, 1, 1, 1}})),
      shape_(shape),
      full_{frame_case.request.width * ratio(frame_case.request.downsample_x),
            frame_case.request.height * ratio(frame_case.request.downsample_y)},
      downsample_x_(ratio(frame_case.request.downsample_x)),
      heights_(static_cast<size_t>(4 * shape.width * shape.height)),
      fragments_(heights_.size()) {
    for (const Control& control : kControls)
        numbers_.push_back(control.defaultValue);
    take(frame_case.look);
}

void FrameTwin::take(const test::Look& look) {
    const std::map<Section, Image*> images = {{Layer1, &layer1_},
                                              {Layer2, &layer2_},
                                              {Layer3, &layer3_},
                                              {Gradient, &noise_ramp_},
                                              {LinesGradient, &lines_ramp_}};
    for (const auto& [control, setting] : look) {
        if (const auto* value = std::get_if<double>(&setting.value)) {
            numbers_[static_cast<size_t>(control)] = *value;
        } else if (const auto* layer = std::get_if<host::Layer>(&setting.value)) {
            numbers_[static_cast<size_t>(control)] = *layer != nullptr;
            if (*layer) *images.at(control) = as_sampled(**layer, shape_.depth == host::Depth::k16);
        } else {
            *images.at(control) = ramp(std::get<Stops>(setting.value));
        }
    }
}

// Fragments are those of the double-size image.
Vec2 FrameTwin::uv_at(int x, int y) const {
    return {(shape_.origin_x + (x + 0.5) / 2) / full_.x, (shape_.origin_y + (y + 0.5) / 2) / full_.y};
}

Colour FrameTwin::layer_colour(const Image& layer, Vec2 uv, Section lightness, Section alpha) const {
    Colour colour = sampled(layer, uv);
    if (on(lightness)) colour = {1 - colour.r, 1 - colour.g, 1 - colour.b, colour.a};
    if (on(alpha)) colour.a = 1 - colour.a;
    return colour;
}

// A larger scale zooms in. Offsets and speeds are thousandths, angles degrees.
double FrameTwin::noise_height(Vec2 uv) const {
    return share(NoiseContrast) * noiseWithLoop({.p = uv,
                                                 .noiseType = whole(NoiseType),
                                                 .evolution = number(Evolution),
                                                 .loopEvolution = byte_on(LoopEvolution),
                                                 .scale = {1e4 / (number(Scale) * number(ScaleX)),
                                                           1e4 / (number(Scale) * number(ScaleY))},
                                                 .offset = {number(OffsetX) / 1000, number(OffsetY) / 1000},
                                                 .speed = number(Speed) / 1000,
                                                 .complexity = whole(Complexity),
                                                 .mainComplexity = whole(Complexity)},
                                                test::driver_hash2);
}

// The enabling switch is followed by its threshold and its feather.
Cuts FrameTwin::cuts(Section bottom, Section top) const {
    const auto cut = [&](Section enabled) -> std::optional<Cut> {
        const size_t first = static_cast<size_t>(enabled);
        if (!byte_on(enabled)) return {};
        return Cut{numbers_[first + 1] / 100, numbers_[first + 2] / 100};
    };
    return {cut(bottom), cut(top)};
}

FrameTwin::Height FrameTwin::new_height(Vec2 uv) const {
    Height height{noise_height(uv), 1, {}};
    const auto weight = [](const Colour& layer) { return (layer.r + layer.g + layer.b) / 3 * layer.a; };
    if (on(Layer1)) {
        const Colour layer = layer_colour(layer1_, uv, Layer1LightnessInvert, Layer1AlphaInvert);
        height.value *= number(Layer1Mult) * weight(layer);
        height.margin.decided(layer.a - share(AlphaTreshold));
        if (layer.a < share(AlphaTreshold)) height.coverage = 0;
    }
    if (on(Layer2)) {
        const Colour layer = layer_colour(layer2_, uv, Layer2LightnessInvert, Layer2AlphaInvert);
        height.value += number(Layer2Mult) * weight(layer);
    }
    height.value += share(NoiseBrightness);
    height.coverage *=
        cropping(cuts(NoiseBottomCroppingEnabled, NoiseTopCroppingEnabled), height.value, height.margin);
    return height;
}

const FrameTwin::Height& FrameTwin::height_at(int x, int y) {
    auto& height = heights_[static_cast<size_t>(y * 2 * shape_.width + x)];
    if (!height) height = new_height(uv_at(x, y));
    return *height;
}

Colour FrameTwin::noise_colour(Vec2 uv, Vec2 slope, double height, Margin& margin) const {
    const double base = share(NoiseGradientScaleBase);
    double position = base + (height + share(NoiseGradientOffset) - base) * share(NoiseGradientScale);
    const bool loops = number(NoiseGradientLoop) == 1;
    if (loops) position = wrapped(position, margin);
    const Vec3 slice{position * share(GradientRandomizeFrequency) * 10, number(Seed) + 5, 0};
    position += 2 * share(GradientRandomizeAmplitude) * perlinNoise(slice);
    switch (whole(ColorizeMode)) {
        case 1:
            return sampled(noise_ramp_, {position, 0.5});
        case 2:
            return sampled(layer3_, {position, 0.5});
        case 3: {
            const double x = slope.x * number(ReflectionScale);
            const double y = slope.y * number(ReflectionScale);
            const double length = std::sqrt(x * x + y * y + 0.01 * 0.01);
            const Vec3 normal{0.5 - x / length / 2, 0.5 - y / length / 2, 0.5 - 0.01 / length / 2};
            if (!on(Layer3)) return {normal.x, normal.y, normal.z, 1};
            return sampled(layer3_, {normal.x, normal.y});
        }
        case 4: {
            const double shift = (2 * height - 1) * number(ReflectionScale);
            Vec2 at{uv.x + shift, uv.y + shift};
            if (loops) at = {wrapped(at.x, margin), wrapped(at.y, margin)};
            return sampled(layer3_, at);
        }
        default:
            return {0, 0, 0, 1};
    }
}

// -0.5 to 0.5.
double FrameTwin::jitter(int line, double seed) const {
    return test::driver_rand(line, static_cast<float>(seed)) - 0.5;
}

double FrameTwin::gradient_position(int line, Margin& margin) const {
    const double lines = number(LinesCount) + 1;
    const double base = share(LinesGradientScaleBase);
    double position = base + (line / lines + share(LinesGradientOffset) - base) * share(LinesGradientScale);
    position += jitter(line, number(Seed) + 1) * 10 * share(GradientRandomize) / lines;
    return number(LinesGradientLoop) == 1 ? wrapped(position, margin) : position;
}

// A larger scale of this noise zooms out. Smoke and cells follow the main noise's complexity.
double FrameTwin::line_mask(Vec2 uv, int line, Margin& margin) const {
    const double shift =
        360 * jitter(line, number(Seed) * 3) * share(AlphaRandomize) / (number(LinesCount) + 1);
    // Signs of lines 0, 1, 2, 3 and so on in a cycle of four.
    constexpr std::array<int, 4> signs_x{1, 1, -1, -1};
    constexpr std::array<int, 4> signs_y{1, -1, -1, 1};
    const auto turn = static_cast<size_t>(line % 4);
    const double scale = share(LinesAlphaNoiseScale);
    const double noise =
        noiseWithLoop({.p = uv,
                       .noiseType = whole(LinesAlphaNoiseType),
                       .evolution = number(LinesAlphaNoiseEvolution) + shift,
                       .loopEvolution = byte_on(LinesAlphaNoiseLoopEvolution),
                       .scale = {scale * share(LinesAlphaNoiseScaleX), scale * share(LinesAlphaNoiseScaleY)},
                       .offset = {number(LinesAlphaNoiseOffsetX) / 1000 + signs_x[turn] * shift,
                                  number(LinesAlphaNoiseOffsetY) / 1000 + signs_y[turn] * shift},
                       .speed = number(LinesAlphaNoiseSpeed) / 1000,
                       .complexity = whole(LinesAlphaNoiseComplexity),
                       .mainComplexity = whole(Complexity)},
                      test::driver_hash2);
    // A driver knows smoke to a few thousandths only.
    margin.decided((noise - share(LinesAlphaThreshold)) * (whole(LinesAlphaNoiseType) == 3 ? 0.03 : 1));
    return noise >= share(LinesAlphaThreshold) ? 1 : 0;
}

// The cuts see the height before its offset.
Colour FrameTwin::lines_over(Colour under, Vec2 uv, Vec2 slope, double height, Margin& margin) const {
    const double crop = cropping(cuts(LinesBottomCroppingEnabled, LinesTopCroppingEnabled), height, margin);
    double shifted = height + share(LinesOffset);
    double steepness = 2 * std::hypot(slope.x, slope.y);
    if (!on(LinesLoop)) {
        // Where the clamp sets in, a driver's difference of neighbours sees half of the slope.
        const double reach = std::fabs(slope.x) + std::fabs(slope.y);
        if (std::fabs(shifted) < reach || std::fabs(shifted - 1) < reach) margin.decided(0);
        if (shifted < 0 || shifted > 1) steepness = 0;
        shifted = unit(shifted);
    }
    for (int line = 1; line <= whole(LinesCount); ++line) {
        const double place =
            (line + jitter(line, number(Seed)) * share(LinesRandomize)) / (number(LinesCount) + 1);
        const double widening = (jitter(line, number(Seed) + 2) + 0.5) * share(WidthRandomize);
        const double width = downsample_x_ * number(LineWidth) * (1 + widening);
        const double visible = 1 - isoline(shifted, steepness, place, width);
        const double alpha = share(LinesAlpha) * crop * visible * line_mask(uv, line, margin);
        const Colour colour = sampled(lines_ramp_, {gradient_position(line, margin), 0.5});
        under = blended(whole(LinesBlendMode), under, colour, alpha);
    }
    return under;
}

const FrameTwin::Fragment& FrameTwin::fragment(int x, int y) {
    auto& cached = fragments_[static_cast<size_t>(y * 2 * shape_.width + x)];
    if (cached) return *cached;
    const auto [height, coverage, margin_so_far] = height_at(x, y);
    Margin margin = margin_so_far;
    // Differences within the block of two by two fragments that a driver shades together.
    const Vec2 slope{height_at(x | 1, y).value - height_at(x & ~1, y).value,
                     height_at(x, y | 1).value - height_at(x, y & ~1).value};
    const Vec2 uv = uv_at(x, y);
    Colour colour{0, 0, 0, 0};
    if (on(NoiseVisible)) {
        colour = noise_colour(uv, slope, height, margin);
        colour.a *= coverage;
    }
    if (on(LinesVisible)) colour = lines_over(colour, uv, slope, height, margin);
    const auto [r, g, b, a] = colour;
    cached = Fragment{{r * a, g * a, b * a, a}, margin.nearest > kDecisionMargin};
    return *cached;
}

// Five taps, each between four fragments: at the pixel's centre and one fragment away along the diagonals.
std::optional<Colour> FrameTwin::pixel(int x, int y) {
    constexpr std::array<std::array<int, 2>, 5> taps{{{0, 0}, {1, 1}, {-1, 1}, {1, -1}, {-1, -1}}};
    Colour sum{0, 0, 0, 0};
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
    if (sum.a < 0.01) return Colour{0, 0, 0, 0};
    return Colour{sum.r / sum.a, sum.g / sum.a, sum.b / sum.a, sum.a};
}

}  // namespace flumo::twin
