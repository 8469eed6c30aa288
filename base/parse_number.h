// Text to number, whole text or nothing, whatever the locale.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace flumo {

/// The number that `text` spells, or nothing when any character is left over, the text is empty or
/// the number does not fit. A leading plus sign is allowed. Infinities and NaN are spelled "inf" and
/// "nan"; callers that cannot use them must test.
template <typename Number>
std::optional<Number> parse_number(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stopped != end) return std::nullopt;
    return value;
}

}  // namespace flumo
