// Numbers as people read them.
#pragma once

#include <charconv>
#include <string>

namespace flumo {

/// The shortest decimal that reads back as the same number, without an exponent where that is short:
/// 1000000, 0.5, 1.4.
template <typename Number>
std::string number_text(Number value) {
    char text[64];
    const auto fixed = std::to_chars(text, text + 24, value, std::chars_format::fixed);
    const auto end = fixed.ec == std::errc() ? fixed : std::to_chars(text, text + sizeof text, value);
    return {text, end.ptr};
}

}  // namespace flumo
