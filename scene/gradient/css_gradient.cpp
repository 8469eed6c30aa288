#include "scene/gradient/css_gradient.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"
#include "scene/gradient/colour_names.h"
#include "scene/gradient/ramp_builder.h"

namespace flumo::scene {
namespace {

constexpr std::string_view kFunction = "linear-gradient(";
constexpr std::string_view kBlank = " \t\r\n";

Failure bad_gradient(const std::string& what) {
    return usage_failure("gradient: " + what);
}

bool is_blank(char c) {
    return kBlank.find(c) != std::string_view::npos;
}

// The pieces between separators that stand outside of brackets, without blanks around them; empty ones are
// left out where `separator` is a blank.
std::vector<std::string_view> split_outside_brackets(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    int depth = 0;
    std::size_t begin = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const char c = i < text.size() ? text[i] : separator;
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        const bool separates = separator == ' ' ? is_blank(c) : c == separator;
        if (i < text.size() && (!separates || depth > 0)) continue;
        const std::string_view piece = without_blanks(text.substr(begin, i - begin));
        if (separator != ' ' || !piece.empty()) pieces.push_back(piece);
        begin = i + 1;
    }
    return pieces;
}

std::optional<float> parse_finite(std::string_view text) {
    const auto number = parse_number<float>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<float> parse_percent(std::string_view text) {
    if (!text.ends_with('%')) return std::nullopt;
    const auto number = parse_finite(text.substr(0, text.size() - 1));
    return number ? std::optional(*number / 100) : std::nullopt;
}

// A number where 1 is `full`, or percent.
std::optional<float> parse_share(std::string_view text, float full) {
    if (text.ends_with('%')) return parse_percent(text);
    const auto number = parse_finite(text);
    return number ? std::optional(*number / full) : std::nullopt;
}

std::optional<float> parse_degrees(std::string_view text) {
    if (text.ends_with("deg")) text.remove_suffix(3);
    return parse_finite(text);
}

// The formula of CSS Color Module Level 4, section 7.
Colour colour_of_hsl(float degrees, float saturation, float lightness, float alpha) {
    const auto channel = [&](float n) {
        const float hue = std::fmod(std::fmod(degrees, 360.0F) + 360.0F, 360.0F);
        const float k = std::fmod(n + hue / 30, 12.0F);
        const float amplitude = saturation * std::min(lightness, 1 - lightness);
        return lightness - amplitude * std::max(-1.0F, std::min({k - 3, 9 - k, 1.0F}));
    };
    return {channel(0), channel(8), channel(4), alpha};
}

// rgb(255 128 0 / 50%), rgba(255, 128, 0, 0.5), and the same with hsl.
std::optional<Colour> colour_from_function(std::string_view text) {
    const std::size_t open = text.find('(');
    if (open == std::string_view::npos || !text.ends_with(')')) return std::nullopt;
    const std::string_view name = text.substr(0, open);
    std::string inner(text.substr(open + 1, text.size() - open - 2));
    std::ranges::replace_if(
        inner, [](char c) { return c == ',' || c == '/'; }, ' ');
    const auto words = split_outside_brackets(inner, ' ');
    if (words.size() != 3 && words.size() != 4) return std::nullopt;
    const auto alpha = words.size() == 4 ? parse_share(words[3], 1) : std::optional(1.0F);
    const bool is_rgb = equal_ignoring_case(name, "rgb") || equal_ignoring_case(name, "rgba");
    const bool is_hsl = equal_ignoring_case(name, "hsl") || equal_ignoring_case(name, "hsla");
    if ((!is_rgb && !is_hsl) || !alpha) return std::nullopt;
    const auto first = is_rgb ? parse_share(words[0], 255) : parse_degrees(words[0]);
    const auto second = is_rgb ? parse_share(words[1], 255) : parse_percent(words[1]);
    const auto third = is_rgb ? parse_share(words[2], 255) : parse_percent(words[2]);
    if (!first || !second || !third) return std::nullopt;
    return is_rgb ? Colour{*first, *second, *third, *alpha} : colour_of_hsl(*first, *second, *third, *alpha);
}

// A colour of the list, whose position may be open.
struct CssStop {
    Colour colour;
    std::optional<float> at;
};

void read_stop(std::string_view text, std::vector<CssStop>& stops) {
    const auto words = split_outside_brackets(text, ' ');
    const auto colour = words.empty() ? std::nullopt : colour_from_css(words[0]);
    if (!colour || words.size() > 3)
        throw bad_gradient("linear-gradient: " + in_quotes(text) +
                           ": expected a colour with up to two percentages, such as gold 50%");
    if (words.size() == 1) stops.push_back({*colour, std::nullopt});
    for (std::size_t i = 1; i < words.size(); ++i) {
        const auto at = parse_percent(words[i]);
        if (!at)
            throw bad_gradient("linear-gradient: " + in_quotes(words[i]) +
                               ": expected a percentage such as 50%");
        stops.push_back({*colour, at});
    }
}

bool is_direction(std::string_view text) {
    for (const char* unit : {"deg", "grad", "rad", "turn"}) {
        const std::string_view name = unit;
        if (text.ends_with(name) && parse_finite(text.substr(0, text.size() - name.size()))) return true;
    }
    return text.starts_with("to ");
}

// Section 3.5.3 of the module: the ends are at 0 and 1, no position lies before an earlier one, and open ones
// are spread evenly.
void place(std::vector<CssStop>& stops) {
    if (!stops.front().at) stops.front().at = 0.0F;
    if (!stops.back().at) stops.back().at = 1.0F;
    float largest = *stops.front().at;
    for (CssStop& stop : stops) {
        if (!stop.at) continue;
        stop.at = largest = std::max(largest, *stop.at);
    }
    for (std::size_t i = 1; i < stops.size(); ++i) {
        if (stops[i].at) continue;
        std::size_t next = i;
        while (!stops[next].at)
            ++next;
        const float step = (*stops[next].at - *stops[i - 1].at) / static_cast<float>(next - i + 1);
        stops[i].at = *stops[i - 1].at + step;
    }
}

}  // namespace

std::optional<Colour> colour_from_css(std::string_view text) {
    if (const auto colour = colour_from_hex(text)) return colour;
    if (const auto colour = colour_from_name(text)) return colour;
    return colour_from_function(text);
}

bool is_css_gradient(std::string_view text) {
    return equal_ignoring_case(text.substr(0, kFunction.size()), kFunction);
}

std::vector<Stop> parse_css_gradient(std::string_view text) {
    if (text.ends_with(';')) text = without_blanks(text.substr(0, text.size() - 1));
    if (!text.ends_with(')')) throw bad_gradient("linear-gradient: expected a ) at its end");
    const std::string_view inner = text.substr(kFunction.size(), text.size() - kFunction.size() - 1);
    auto pieces = split_outside_brackets(inner, ',');
    if (is_direction(pieces.front())) pieces.erase(pieces.begin());
    std::vector<CssStop> read;
    for (const std::string_view piece : pieces)
        read_stop(piece, read);
    if (read.size() < 2) throw bad_gradient("linear-gradient: expected at least two colours");
    place(read);
    std::vector<Stop> stops;
    for (const CssStop& stop : read)
        add_stop(stops, {*stop.at, StopKind::kLinear, stop.colour});
    return stops;
}

}  // namespace flumo::scene
