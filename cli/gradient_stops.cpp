#include "cli/gradient_stops.h"

#include <array>
#include <cstring>
#include <map>

namespace flumo::cli {
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

}  // namespace

std::optional<StopKind> kind_from_word(std::string_view word) {
    if (word == "linear") return StopKind::kLinear;
    if (word == "sin") return StopKind::kSin;
    if (word == "edge") return StopKind::kEdge;
    return std::nullopt;
}

std::optional<Colour> colour_from_hex(std::string_view text) {
    if (text.empty() || text[0] != '#') return std::nullopt;
    text.remove_prefix(1);
    const size_t digits_each = text.size() == 3 ? 1 : 2;
    if (text.size() != 3 && text.size() != 6 && text.size() != 8) return std::nullopt;
    std::array<float, 4> channels = {0, 0, 0, 1};
    for (size_t i = 0; i < text.size(); i += digits_each) {
        const int high = hex_digit(text[i]);
        const int low = hex_digit(text[i + digits_each - 1]);
        if (high < 0 || low < 0) return std::nullopt;
        channels[i / digits_each] = static_cast<float>(high * 16 + low) / 255.0F;
    }
    return Colour{channels[0], channels[1], channels[2], channels[3]};
}

std::vector<uint8_t> to_stored_form(std::span<const Stop> stops) {
    std::map<float, StoredStop> by_position;
    for (const Stop& stop : stops)
        by_position[stop.at] = {stop.at, stop.kind, stop.colour};
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

}  // namespace flumo::cli
