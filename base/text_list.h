// Small work on lists of words.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace flumo {

/// The pieces of `text` between the separators; one empty piece for an empty text.
std::vector<std::string_view> split(std::string_view text, char separator);

/// The words between blanks (spaces, tabs, line ends).
std::vector<std::string_view> words_of(std::string_view text);

/// The text without the blanks at its ends.
std::string_view without_blanks(std::string_view text);

/// The words with ", " between them.
std::string join(std::span<const std::string> words);

/// The text as one line for a message: a byte that is no printable character of UTF-8 becomes \xNN, and what
/// is longer than 200 bytes ends in "...".
std::string printable(std::string_view text);

/// The printable text between double quotes, as messages show what somebody wrote.
std::string in_quotes(std::string_view text);

/// Equality that takes A to Z for a to z.
bool equal_ignoring_case(std::string_view a, std::string_view b);

/// The candidate nearest to `word` by edit distance without regard to case, if it is near enough
/// to be a typing error: at most a third of the word's length, at least 2 edits are forgiven.
std::optional<std::string> nearest_word(std::string_view word, std::span<const std::string> candidates);

}  // namespace flumo
