#include "base/text_list.h"

#include <algorithm>
#include <cstdio>
#include <numeric>

namespace flumo {
namespace {

constexpr std::string_view kBlank = " \t\r\n";

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Levenshtein's distance over one rolling row.
std::size_t edit_distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (lower(a[i]) != lower(b[j]));
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, diagonal + 1, replaced});
        }
    }
    return row.back();
}

// Bytes of the character that `text` starts with, 0 where it is no printable character of UTF-8.
std::size_t printable_length(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80) return byte(0) >= 0x20 && byte(0) != 0x7f ? 1 : 0;
    const std::size_t length = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    if (byte(0) < 0xc2 || byte(0) > 0xf4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0) != 0x80) return 0;
    }
    // U+0080 to U+009F control terminals.
    return byte(0) == 0xc2 && byte(1) < 0xa0 ? 0 : length;
}

}  // namespace

std::string printable(std::string_view text) {
    constexpr std::size_t kLongest = 200;
    std::string shown;
    while (!text.empty()) {
        if (shown.size() >= kLongest) return shown + "...";
        const std::size_t length = printable_length(text);
        if (length > 0) {
            shown += text.substr(0, length);
        } else {
            char escaped[5];
            std::snprintf(escaped, sizeof escaped, "\\x%02x", static_cast<unsigned char>(text[0]));
            shown += escaped;
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return shown;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (std::size_t end = 0; end != std::string_view::npos; text.remove_prefix(end + 1)) {
        end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) break;
    }
    return pieces;
}

std::vector<std::string_view> words_of(std::string_view text) {
    std::vector<std::string_view> words;
    for (text = without_blanks(text); !text.empty(); text = without_blanks(text)) {
        const std::size_t end = std::min(text.find_first_of(kBlank), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return words;
}

std::string_view without_blanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlank);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

std::string join(std::span<const std::string> words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::string in_quotes(std::string_view text) {
    std::string quoted(1, '"');
    return quoted.append(printable(text)).append(1, '"');
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lower, lower);
}

std::optional<std::string> nearest_word(std::string_view word, std::span<const std::string> candidates) {
    const std::size_t forgiven = std::max<std::size_t>(2, word.size() / 3);
    const std::string* best = nullptr;
    std::size_t best_distance = forgiven + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = edit_distance(word, candidate);
        if (distance >= best_distance) continue;
        best = &candidate;
        best_distance = distance;
    }
    return best ? std::optional(*best) : std::nullopt;
}

}  // namespace flumo
