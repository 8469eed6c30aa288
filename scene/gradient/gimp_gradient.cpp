#include "scene/gradient/gimp_gradient.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"
#include "scene/gradient/ramp_builder.h"

namespace flumo::scene {
namespace {

constexpr std::string_view kFirstLine = "GIMP Gradient";
constexpr int kPieces = 16;

// As the file numbers them.
enum class Blend { kLinear, kCurved, kSine, kSphereIncreasing, kSphereDecreasing, kStep };
enum class Colouring { kRgb, kHueRising, kHueFalling };

struct Segment {
    float left = 0;
    float middle = 0;
    float right = 0;
    Colour from;
    Colour to;
    Blend blend = Blend::kLinear;
    Colouring colouring = Colouring::kRgb;
};

Failure bad_line(std::size_t line, const std::string& what) {
    return usage_failure("gradient: GIMP gradient: line " + std::to_string(line) + ": " + what);
}

float number_in(const std::vector<std::string_view>& words, std::size_t i, std::size_t line) {
    const auto number = parse_number<float>(words[i]);
    if (!number || !std::isfinite(*number)) throw bad_line(line, in_quotes(words[i]) + ": expected a number");
    return *number;
}

int choice_in(const std::vector<std::string_view>& words, std::size_t i, int most, std::size_t line) {
    const auto number = parse_number<int>(words[i]);
    if (!number || *number < 0 || *number > most)
        throw bad_line(line, in_quotes(words[i]) + ": expected 0 to " + std::to_string(most));
    return *number;
}

// left middle right, red green blue alpha of both ends, blend, colouring, and in newer files where each end
// has its colour from, 0 being the file itself.
Segment read_segment(std::string_view text, std::size_t line) {
    const auto words = words_of(text);
    if (words.size() != 13 && words.size() != 15) throw bad_line(line, "expected 13 or 15 numbers");
    const auto number = [&](std::size_t i) { return number_in(words, i, line); };
    const auto colour = [&](std::size_t i) {
        return Colour{number(i), number(i + 1), number(i + 2), number(i + 3)};
    };
    for (std::size_t i = 13; i < words.size(); ++i) {
        if (words[i] != "0")
            throw bad_line(line, "its colours follow GIMP's foreground or background; expected fixed ones");
    }
    const Segment segment = {number(0),
                             number(1),
                             number(2),
                             colour(3),
                             colour(7),
                             static_cast<Blend>(choice_in(words, 11, 5, line)),
                             static_cast<Colouring>(choice_in(words, 12, 2, line))};
    if (!(segment.left <= segment.middle && segment.middle <= segment.right))
        throw bad_line(line, "expected ascending positions");
    return segment;
}

// How far the blend is at `at`, 0 to 1: the midpoint is half of the way, and the curve is laid over that.
float progress(const Segment& segment, float at) {
    const float length = segment.right - segment.left;
    const float middle = length > 0 ? (segment.middle - segment.left) / length : 0.5F;
    const float x = length > 0 ? (at - segment.left) / length : 0.5F;
    float half = 0.5F;
    if (x <= middle) {
        if (middle > 0) half = x / middle / 2;
    } else {
        half = (x - middle) / (1 - middle) / 2 + 0.5F;
    }
    switch (segment.blend) {
        case Blend::kLinear:
            return half;
        case Blend::kCurved:
            return middle > 0 ? std::pow(x, std::log(0.5F) / std::log(middle)) : 1;
        case Blend::kSine:
            return (std::sin(std::numbers::pi_v<float> * (half - 0.5F)) + 1) / 2;
        case Blend::kSphereIncreasing:
            return std::sqrt(1 - (half - 1) * (half - 1));
        case Blend::kSphereDecreasing:
            return 1 - std::sqrt(1 - half * half);
        case Blend::kStep:
            return x < middle ? 0 : 1;
    }
    return half;
}

struct Hsv {
    float hue, saturation, value;  // hue 0 to 1
};

Hsv hsv_of(const Colour& c) {
    const float most = std::max({c.r, c.g, c.b});
    const float range = most - std::min({c.r, c.g, c.b});
    if (range == 0) return {0, 0, most};
    const float sixth = most == c.r   ? (c.g - c.b) / range
                        : most == c.g ? 2 + (c.b - c.r) / range
                                      : 4 + (c.r - c.g) / range;
    return {sixth < 0 ? sixth / 6 + 1 : sixth / 6, range / most, most};
}

Colour colour_of(const Hsv& hsv, float alpha) {
    const auto channel = [&](float n) {
        const float k = std::fmod(n + hsv.hue * 6, 6.0F);
        return hsv.value - hsv.value * hsv.saturation * std::clamp(std::min(k, 4 - k), 0.0F, 1.0F);
    };
    return {channel(5), channel(3), channel(1), alpha};
}

Colour blended(const Segment& segment, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    const Colour& a = segment.from;
    const Colour& b = segment.to;
    const float alpha = mix(a.a, b.a);
    if (segment.colouring == Colouring::kRgb) return {mix(a.r, b.r), mix(a.g, b.g), mix(a.b, b.b), alpha};
    const Hsv from = hsv_of(a);
    Hsv to = hsv_of(b);
    if (segment.colouring == Colouring::kHueRising && to.hue <= from.hue) to.hue += 1;
    if (segment.colouring == Colouring::kHueFalling && to.hue >= from.hue) to.hue -= 1;
    const float hue = mix(from.hue, to.hue);
    return colour_of({hue - std::floor(hue), mix(from.saturation, to.saturation), mix(from.value, to.value)},
                     alpha);
}

void add_segment(std::vector<Stop>& stops, const Segment& segment) {
    if (segment.blend == Blend::kStep) {
        add_stop(stops, {segment.left, StopKind::kEdge, segment.from});
        add_stop(stops, {segment.middle, StopKind::kEdge, segment.to});
        add_stop(stops, {segment.right, StopKind::kEdge, segment.to});
        return;
    }
    const float centre = (segment.left + segment.right) / 2;
    const bool is_straight = segment.blend == Blend::kLinear && segment.colouring == Colouring::kRgb &&
                             std::abs(segment.middle - centre) < 1e-4F;
    const int pieces = is_straight ? 1 : kPieces;
    for (int i = 0; i <= pieces; ++i) {
        const float share = static_cast<float>(i) / static_cast<float>(pieces);
        const float at = i == pieces ? segment.right : segment.left + (segment.right - segment.left) * share;
        add_stop(stops, {at, StopKind::kLinear,
                         i == 0        ? segment.from
                         : i == pieces ? segment.to
                                       : blended(segment, progress(segment, at))});
    }
}

}  // namespace

bool is_gimp_gradient(std::string_view text) {
    return text.starts_with(kFirstLine);
}

std::vector<Stop> parse_gimp_gradient(std::string_view text) {
    const auto lines = split(text, '\n');
    std::size_t line = 1;
    if (line < lines.size() && lines[line].starts_with("Name:")) ++line;
    const auto count =
        line < lines.size() ? parse_number<std::size_t>(without_blanks(lines[line])) : std::nullopt;
    if (!count || *count == 0) throw bad_line(line + 1, "expected a number of segments");
    if (lines.size() - line - 1 < *count)
        throw bad_line(lines.size(), "expected " + std::to_string(*count) + " segments");
    std::vector<Stop> stops;
    for (std::size_t i = 0; i < *count; ++i) {
        ++line;
        add_segment(stops, read_segment(lines[line], line + 1));
    }
    return stops;
}

}  // namespace flumo::scene
