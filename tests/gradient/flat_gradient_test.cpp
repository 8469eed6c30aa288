#include "effect/gradient/flat_gradient.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

#include "tests/gradient/random_gradients.h"

namespace flumo::test {
namespace {

using Bytes = std::vector<std::byte>;

// One value of the stored form; a stored gradient is a row of them.
template <typename T>
void Append(Bytes& bytes, T value) {
    static_assert(sizeof value == 4);
    bytes.resize(bytes.size() + sizeof value);
    std::memcpy(&bytes[bytes.size() - sizeof value], &value, sizeof value);
}

Bytes Stored(int32_t count, const std::vector<std::pair<float, GradientStop>>& stops) {
    Bytes bytes;
    Append(bytes, count);
    for (const auto& [position, stop] : stops) {
        Append(bytes, position);
        Append(bytes, stop.kind);
        for (const float channel : {stop.r, stop.g, stop.b, stop.a})
            Append(bytes, channel);
    }
    return bytes;
}

Bytes Flat(const GradientStopMap& stops) {
    Bytes bytes(FlatGradientSize(stops));
    FlattenGradient(stops, bytes.data());
    return bytes;
}

// Reads the first `size` bytes, on top of a white gradient as the host's new value is.
GradientStopMap Unflat(Bytes bytes, std::size_t size) {
    bytes.resize(std::max(bytes.size(), size) + kFlatOverread);
    GradientStopMap stops = WhiteGradient();
    UnflattenGradient(bytes.data(), static_cast<A_u_long>(size), stops);
    return stops;
}

const GradientStop kRed{kStopEdge, 1, 0, 0, 0.5F};
const GradientStop kBlue{7, 0, 0, 2, 1};

TEST(FlatGradient, LiesInMemoryOrderWithoutHeaderOrTrailer) {
    EXPECT_EQ(Flat({}), Bytes(4));
    EXPECT_EQ(FlatGradientSize(WhiteGradient()), 52U);
    EXPECT_EQ(Flat({{1.5F, kBlue}, {-0.25F, kRed}}), Stored(2, {{-0.25F, kRed}, {1.5F, kBlue}}));
}

TEST(FlatGradient, ComesBackBitForBit) {
    ForRandomGradients([](const GradientStopMap& stops, std::mt19937&) {
        const Bytes flat = Flat(stops);
        EXPECT_EQ(Unflat(flat, flat.size()), stops);
    });
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const Bytes strange = Flat({{nan, kRed}, {-inf, kBlue}, {1e-45F, {3, nan, inf, -0.0F, 1}}});
    EXPECT_EQ(Flat(Unflat(strange, strange.size())), strange);
    EXPECT_EQ(strange.size(), 4 + 3 * 24U);
}

TEST(FlatGradient, ReadsWhatTheSizeReaches) {
    const Bytes two = Stored(2, {{0.25F, kRed}, {0.5F, kBlue}});
    const GradientStopMap both = {{0.25F, kRed}, {0.5F, kBlue}};
    const GradientStopMap first = {{0.25F, kRed}};
    struct Case {
        const char* promise;
        Bytes bytes;
        std::size_t size;
        GradientStopMap stops;
    };
    const Case cases[] = {
        {"no count: the white gradient stays", two, 3, WhiteGradient()},
        {"only a count", two, 4, {}},
        {"a count of none", Stored(0, {{0.25F, kRed}}), 28, {}},
        {"a negative count", Stored(-1, {{0.25F, kRed}}), 28, {}},
        {"fewer counted than stored", Stored(1, {{0.25F, kRed}, {0.5F, kBlue}}), 52, first},
        {"more counted than stored", Stored(2, {{0.25F, kRed}}), 28, first},
        {"a huge count", Stored(std::numeric_limits<int32_t>::max(), {{0.25F, kRed}}), 28, first},
        {"a cut position is not read", two, 31, first},
        {"a stop cut behind its position is stored whole", two, 32, both},
        {"a stop cut at its last byte", two, 51, both},
        {"the later of two at one position stays",
         Stored(2, {{0.5F, kRed}, {0.5F, kBlue}}),
         52,
         {{0.5F, kBlue}}},
        {"the last bit of a position counts",
         Stored(2, {{0.5F, kRed}, {0.50000006F, kBlue}}),
         52,
         {{0.5F, kRed}, {0.50000006F, kBlue}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.promise);
        EXPECT_EQ(Unflat(c.bytes, c.size), c.stops);
    }
}

}  // namespace
}  // namespace flumo::test
