#include "base/text_list.h"

#include <algorithm>
#include <numeric>

namespace flumo {
namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Levenshtein's distance over one rolling row.
size_t edit_distance(std::string_view a, std::string_view b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t replaced = diagonal + (lower(a[i]) != lower(b[j]));
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, diagonal + 1, replaced});
        }
    }
    return row.back();
}

}  // namespace

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (size_t end = 0; end != std::string_view::npos; text.remove_prefix(end + 1)) {
        end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) break;
    }
    return pieces;
}

std::string join(std::span<const std::string> words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::string in_quotes(std::string_view text) {
    std::string quoted(1, '"');
    return quoted.append(text).append(1, '"');
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lower, lower);
}

std::optional<std::string> nearest_word(std::string_view word, std::span<const std::string> candidates) {
    const size_t forgiven = std::max<size_t>(2, word.size() / 3);
    const std::string* best = nullptr;
    size_t best_distance = forgiven + 1;
    for (const std::string& candidate : candidates) {
        const size_t distance = edit_distance(word, candidate);
        if (distance >= best_distance) continue;
        best = &candidate;
        best_distance = distance;
    }
    return best ? std::optional(*best) : std::nullopt;
}

}  // namespace flumo
