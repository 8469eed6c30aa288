#include "scene/gradient/gradient_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <sstream>

#include "base/failure.h"
#include "base/file_contents.h"
#include "base/parse_number.h"
#include "base/text_list.h"
#include "scene/gradient/colour_names.h"
#include "scene/gradient/css_gradient.h"
#include "scene/gradient/gimp_gradient.h"

namespace flumo::scene {
namespace {

constexpr const char* kTextFormHeader = "Gradient";

Failure bad_gradient(const std::string& what) {
    return usage_failure("gradient: " + what);
}

float parse_finite(std::string_view text, const char* what) {
    const auto number = parse_number<float>(text);
    if (!number || !std::isfinite(*number)) {
        throw bad_gradient(in_quotes(text) + " is not a " + what);
    }
    return *number;
}

StopKind parse_kind(std::string_view word) {
    const auto kind = kind_from_word(word);
    if (!kind) throw bad_gradient("kind " + in_quotes(word) + " is none of linear, sin, edge");
    return *kind;
}

Colour parse_float_colour(std::string_view text) {
    const auto parts = split(text, '/');
    if (parts.size() != 3 && parts.size() != 4) {
        const auto nearest = nearest_colour_name(text);
        throw bad_gradient("colour " + in_quotes(text) +
                           (nearest ? ": did you mean " + *nearest + "?"
                                    : ": expected #rrggbb, #rrggbbaa, r/g/b[/a] or a name of CSS"));
    }
    std::array<float, 4> channels = {0, 0, 0, 1};
    for (std::size_t i = 0; i < parts.size(); ++i)
        channels[i] = parse_finite(parts[i], "colour channel");
    return {channels[0], channels[1], channels[2], channels[3]};
}

Colour parse_colour(std::string_view text) {
    const auto colour = colour_from_css(text);
    return colour ? *colour : parse_float_colour(text);
}

Stop parse_compact_stop(std::string_view text) {
    const auto parts = split(text, ':');
    if (parts.size() != 2 && parts.size() != 3) {
        throw bad_gradient("stop " + in_quotes(text) +
                           ": expected position[:kind]:colour, such as 0.5:sin:#ff8800");
    }
    const StopKind kind = parts.size() == 3 ? parse_kind(parts[1]) : StopKind::kSin;
    return {parse_finite(parts[0], "position"), kind, parse_colour(parts.back())};
}

std::vector<Stop> parse_compact(std::string_view text) {
    std::vector<Stop> stops;
    for (const std::string_view part : split(text, ','))
        stops.push_back(parse_compact_stop(without_blanks(part)));
    return stops;
}

// Stops between commas, line ends or both; lines that are empty are skipped.
std::vector<Stop> parse_compact_lines(std::string_view text) {
    const std::vector<std::string_view> lines = split(text, '\n');
    std::vector<Stop> stops;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool is_last = i + 1 == lines.size();
        std::string_view line = without_blanks(lines[i]);
        if (line.empty() && lines.size() > 1) continue;
        if (!is_last && line.ends_with(',')) line.remove_suffix(1);
        const std::vector<Stop> more = parse_compact(line);
        stops.insert(stops.end(), more.begin(), more.end());
    }
    return stops;
}

// Reads the effect's text form word by word; unlike the effect's own reader it takes text that ends in
// blanks.
class TextFormReader {
  public:
    explicit TextFormReader(std::string_view text) : words_(std::string(text)) {}

    std::vector<Stop> read() {
        std::vector<Stop> stops;
        expect(next(), kTextFormHeader);
        for (std::string word = next(); !word.empty(); word = next()) {
            expect(word, "t");
            stops.push_back(read_stop());
        }
        return stops;
    }

  private:
    std::string next() {
        std::string word;
        words_ >> word;
        return word;
    }

    static void expect(const std::string& word, const char* name) {
        if (word != name)
            throw bad_gradient("text form: expected " + in_quotes(name) + ", found " + in_quotes(word));
    }

    Stop read_stop() {
        Stop stop;
        stop.at = parse_finite(next(), "position");
        stop.kind = parse_kind(next());
        stop.colour = {read_channel("r"), read_channel("g"), read_channel("b"), read_channel("a")};
        return stop;
    }

    float read_channel(const char* name) {
        expect(next(), name);
        return parse_finite(next(), "colour channel");
    }

    std::istringstream words_;
};

std::vector<uint8_t> bytes_from_hex(std::string_view text) {
    std::vector<uint8_t> bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        uint8_t byte = 0;
        std::from_chars(text.data() + i, text.data() + i + 2, byte, 16);
        bytes.push_back(byte);
    }
    return bytes;
}

std::vector<Stop> parse_stored_form(std::string_view text) {
    const std::vector<uint8_t> bytes = bytes_from_hex(text);
    auto stops = stops_from_stored_form(std::as_bytes(std::span(bytes)));
    if (text.size() % 2 != 0 || !stops)
        throw bad_gradient("stored form: expected 4 bytes of count and 24 bytes for each stop");
    return *std::move(stops);
}

bool is_stored_form(std::string_view text) {
    return text.size() >= 8 && text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

std::vector<Stop> parse_spelling(std::string_view text) {
    if (text.starts_with(kTextFormHeader)) return TextFormReader(text).read();
    if (is_stored_form(text)) return parse_stored_form(text);
    if (is_css_gradient(text)) return parse_css_gradient(text);
    if (is_gimp_gradient(text)) return parse_gimp_gradient(text);
    return parse_compact_lines(text);
}

// The number of the first line, from 1, that holds something else than stops.
std::size_t first_wrong_line(std::string_view text) {
    std::size_t number = 0;
    for (const std::string_view line : split(text, '\n')) {
        ++number;
        try {
            parse_compact_lines(std::string(line) + "\n");
        } catch (const Failure&) {
            break;
        }
    }
    return number;
}

// The file may be any, so a message names the place and does not repeat its contents.
std::vector<Stop> read_gradient_file(const std::filesystem::path& path) {
    const std::string text = read_text_file(path);
    const std::string_view contents = without_blanks(text);
    try {
        return parse_spelling(contents);
    } catch (const Failure& failure) {
        if (is_css_gradient(contents) || is_gimp_gradient(contents))
            throw usage_failure(path.string() + ": " + failure.what());
        throw bad_gradient(
            path.string() + ": line " + std::to_string(first_wrong_line(text)) +
            ": expected stops such as 0.5:sin:#ff8800, one a line or with commas between them, "
            "or the effect's text or stored form");
    }
}

}  // namespace

std::vector<Stop> parse_gradient(std::string_view text, const std::filesystem::path& folder) {
    if (text.starts_with('@')) return read_gradient_file(folder / text.substr(1));
    return parse_spelling(without_blanks(text));
}

}  // namespace flumo::scene
