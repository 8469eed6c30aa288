#include "host/values/world.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

namespace flumo::host {
namespace {

constexpr Depth kDepths[] = {Depth::k8, Depth::k16, Depth::k32};

TEST(World, StartsTransparentAndDescribesItselfToTheEffect) {
    for (const Depth depth : kDepths) {
        World world(
            {.width = 7, .height = 5, .depth = depth, .row_padding = 3, .origin_x = -2, .origin_y = 4});
        const PF_EffectWorld& record = world.record();
        EXPECT_EQ(record.width, 7);
        EXPECT_EQ(record.height, 5);
        EXPECT_EQ(record.rowbytes, 10 * static_cast<int>(pixel_size(depth)));
        EXPECT_EQ(record.origin_x, -2);
        EXPECT_EQ(record.origin_y, 4);
        EXPECT_EQ((record.world_flags & PF_WorldFlag_DEEP) != 0, depth == Depth::k16);
        EXPECT_EQ(record_depth(PF_EffectWorld(record)), depth) << "a copy of the record keeps the depth";
        EXPECT_EQ(world.rgba(6, 4), (Rgba{0, 0, 0, 0}));
    }
    EXPECT_THROW(record_depth(PF_EffectWorld{}), std::invalid_argument);
    EXPECT_THROW(World(-1, 3, Depth::k8), std::invalid_argument);
}

TEST(World, KeepsChannelsAlphaFirstAtEveryDepth) {
    World bytes(2, 1, Depth::k8);
    bytes.set_rgba(1, 0, {1, 0.2f, 2, -1});
    const PF_Pixel8 b = bytes.pixels<PF_Pixel8>(0)[1];
    EXPECT_EQ((std::array<int, 4>{b.alpha, b.red, b.green, b.blue}), (std::array<int, 4>{0, 255, 51, 255}));
    std::vector<float> row(8);
    bytes.read_row(0, row);
    EXPECT_EQ(row, (std::vector<float>{0, 0, 0, 0, 1, 51 / 255.0f, 1, 0}));

    World shorts(1, 1, Depth::k16);
    shorts.set_rgba(0, 0, {1, 1.5f, 3, 0.25f});
    const PF_Pixel16 s = shorts.pixels<PF_Pixel16>(0)[0];
    EXPECT_EQ((std::array<int, 4>{s.alpha, s.red, s.green, s.blue}),
              (std::array<int, 4>{8192, 32768, 49152, 65535}));

    World floats(1, 1, Depth::k32);
    floats.set_rgba(0, 0, {-1, 7, 0.5f, 2});
    EXPECT_EQ(floats.rgba(0, 0), (Rgba{-1, 7, 0.5f, 2}));
    EXPECT_EQ(floats.pixels<PF_PixelFloat>(0)[0].alpha, 2);
}

TEST(World, FindsWritesOutsideItsPixels) {
    const WorldShape shape{.width = 4, .height = 3, .depth = Depth::k16, .row_padding = 2};
    const std::ptrdiff_t row = 6 * 8;
    const std::ptrdiff_t outside[] = {-1,          -64,     4 * 8,       row - 1, 2 * row + 4 * 8,
                                      3 * row - 1, 3 * row, 3 * row + 63};
    for (const std::ptrdiff_t place : outside) {
        World world(shape);
        auto* first = reinterpret_cast<std::byte*>(world.record().data);
        first[place] ^= std::byte{1};
        EXPECT_FALSE(world.guards_intact()) << place;
    }
    World world(shape);
    world.fill_bytes(std::byte{0x77});
    EXPECT_TRUE(world.guards_intact());
}

TEST(World, CopiesShareNothingAndMovesKeepThePixels) {
    World world({.width = 3, .height = 2, .depth = Depth::k8, .row_padding = 1});
    world.set_rgba(2, 1, {1, 0, 0, 1});
    World copy = world;
    copy.set_rgba(0, 0, {0, 1, 0, 1});
    EXPECT_EQ(world.rgba(0, 0), (Rgba{0, 0, 0, 0}));
    const World moved = std::move(copy);
    EXPECT_EQ(moved.rgba(2, 1), (Rgba{1, 0, 0, 1}));
    EXPECT_EQ(reinterpret_cast<const std::byte*>(moved.record().data), moved.row(0).data());
    EXPECT_FALSE(moved.same_picture(world));
}

}  // namespace
}  // namespace flumo::host
