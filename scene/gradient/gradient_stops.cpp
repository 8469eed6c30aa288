#include "scene/gradient/gradient_stops.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <map>

namespace flumo::scene {
namespace {

int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

struct StoredStop {
    float position;
    StopKind kind;
    Colour colour;
};
static_assert(sizeof(StoredStop) == 24);

// By the number of the kind.
constexpr std::array<std::string_view, 3> kKindWords = {"linear", "sin", "edge"};

}  // namespace

std::optional<StopKind> kind_from_word(std::string_view word) {
    const auto found = std::ranges::find(kKindWords, word);
    if (found == kKindWords.end()) return std::nullopt;
    return static_cast<StopKind>(found - kKindWords.begin());
}

std::optional<std::string_view> word_of_kind(StopKind kind) {
    const auto row = static_cast<std::size_t>(kind);
    return row < kKindWords.size() ? std::optional(kKindWords[row]) : std::nullopt;
}

std::optional<Colour> colour_from_hex(std::string_view text) {
    if (text.empty() || text[0] != '#') return std::nullopt;
    text.remove_prefix(1);
    const std::size_t digits_each = text.size() <= 4 ? 1 : 2;
    if (text.size() != 3 && text.size() != 4 && text.size() != 6 && text.size() != 8) return std::nullopt;
    std::array<float, 4> channels = {0, 0, 0, 1};
    for (std::size_t i = 0; i < text.size(); i += digits_each) {
        const int high = hex_digit(text[i]);
        const int low = hex_digit(text[i + digits_each - 1]);
        if (high < 0 || low < 0) return std::nullopt;
        channels[i / digits_each] = static_cast<float>(high * 16 + low) / 255.0F;
    }
    return Colour{channels[0], channels[1], channels[2], channels[3]};
}

std::vector<uint8_t> to_stored_form(std::span<const Stop> stops) {
    std::map<float, StoredStop> by_position;
    for (const Stop& stop : stops) {
        // NaN has no place in an order.
        if (!std::isnan(stop.at)) by_position[stop.at] = {stop.at, stop.kind, stop.colour};
    }
    const auto count = static_cast<int32_t>(by_position.size());
    std::vector<uint8_t> bytes(sizeof count + by_position.size() * sizeof(StoredStop));
    std::memcpy(bytes.data(), &count, sizeof count);
    uint8_t* next = bytes.data() + sizeof count;
    for (const auto& [position, stop] : by_position) {
        std::memcpy(next, &stop, sizeof stop);
        next += sizeof stop;
    }
    return bytes;
}

std::optional<std::vector<Stop>> stops_from_stored_form(std::span<const std::byte> bytes) {
    int32_t count = 0;
    if (bytes.size() < sizeof count) return std::nullopt;
    std::memcpy(&count, bytes.data(), sizeof count);
    bytes = bytes.subspan(sizeof count);
    if (count < 0 || bytes.size() != static_cast<std::size_t>(count) * sizeof(StoredStop))
        return std::nullopt;
    std::vector<Stop> stops;
    for (; !bytes.empty(); bytes = bytes.subspan(sizeof(StoredStop))) {
        StoredStop stop{};
        std::memcpy(&stop, bytes.data(), sizeof stop);
        stops.push_back({stop.position, stop.kind, stop.colour});
    }
    return stops;
}

}  // namespace flumo::scene
