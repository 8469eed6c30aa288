// A gradient as the program handles it, between its spellings and the bytes that the effect stores.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace flumo::scene {

/// How colour runs on from a stop to the next one on its right.
enum class StopKind : int32_t {
    kLinear = 0,  ///< straight blend
    kSin = 1,     ///< eased blend
    kEdge = 2,    ///< the stop's colour holds up to the next stop
};

/// Red, green, blue, alpha, nominally 0 to 1, not premultiplied.
struct Colour {
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;

    bool operator==(const Colour&) const = default;
};

/// A stop at a fraction of the ramp, nominally 0 to 1.
struct Stop {
    float at = 0;
    StopKind kind = StopKind::kSin;
    Colour colour;

    bool operator==(const Stop&) const = default;
};

/// "linear", "sin" or "edge", or nothing for another word.
std::optional<StopKind> kind_from_word(std::string_view word);
/// The same the other way, nothing for a number that is no kind.
std::optional<std::string_view> word_of_kind(StopKind kind);

/// `#rgb`, `#rgba`, `#rrggbb` or `#rrggbbaa`, or nothing for another text.
std::optional<Colour> colour_from_hex(std::string_view text);

/// The effect's stored form: a count, then 24 bytes a stop, ascending; of two stops at one position
/// the later one wins, and a stop whose position is NaN is left out.
std::vector<uint8_t> to_stored_form(std::span<const Stop> stops);

/// The stops of a stored form, as they stand, or nothing where count and size do not agree.
std::optional<std::vector<Stop>> stops_from_stored_form(std::span<const std::byte> bytes);

}  // namespace flumo::scene
