#include "effect/gradient/value/flat_gradient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <span>
#include <vector>

#include "tests/effect/gradient/random_gradients.h"

namespace flumo::test {
namespace {

using Bytes = std::vector<std::byte>;

Bytes Flat(const GradientStopMap& stops) {
    Bytes bytes(FlatGradientSize(stops));
    FlattenGradient(stops, bytes.data());
    return bytes;
}

Bytes WithCount(int32_t count, Bytes bytes) {
    std::memcpy(bytes.data(), &count, sizeof count);
    return bytes;
}

// Reads the first `size` bytes, on top of a white gradient as the host's new value is.
GradientStopMap Unflat(Bytes bytes, size_t size) {
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
    // Count, then position, kind, r, g, b, a of each stop.
    const std::array<uint32_t, 13> words = {
        2, 0xBE800000, 2, 0x3F800000, 0, 0, 0x3F000000, 0x3FC00000, 7, 0, 0, 0x40000000, 0x3F800000};
    const auto bytes = std::as_bytes(std::span(words));
    EXPECT_EQ(Flat({{1.5F, kBlue}, {-0.25F, kRed}}), Bytes(bytes.begin(), bytes.end()));
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
    const GradientStopMap both = {{0.25F, kRed}, {0.5F, kBlue}}, first = {{0.25F, kRed}};
    const Bytes two = Flat(both), one = Flat(first);
    Bytes equal = two;
    std::copy_n(two.begin() + 4, 4, equal.begin() + 28);
    struct Case {
        const char* promise;
        Bytes bytes;
        size_t size;
        GradientStopMap stops;
    };
    const Case cases[] = {
        {"no count: the white gradient stays", two, 3, WhiteGradient()},
        {"only a count", two, 4, {}},
        {"a count of none", WithCount(0, one), 28, {}},
        {"a negative count", WithCount(-1, one), 28, {}},
        {"fewer counted than stored", WithCount(1, two), 52, first},
        {"more counted than stored", WithCount(std::numeric_limits<int32_t>::max(), one), 28, first},
        {"a cut position is not read", two, 31, first},
        {"a stop cut after its position is stored whole", two, 32, both},
        {"a stop cut at its last byte", two, 51, both},
        {"the later of two at one position", equal, 52, {{0.25F, kBlue}}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Unflat(c.bytes, c.size), c.stops) << c.promise;
}

}  // namespace
}  // namespace flumo::test
