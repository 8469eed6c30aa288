#include "media/world_picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace flumo::media {
namespace {

using testing::ElementsAre;

TEST(WorldPicture, SixteenBitsFollowTheHostsScale) {
    host::World world({.width = 1, .height = 1, .depth = host::Depth::k16, .row_padding = 3});
    world.pixels<PF_Pixel16>(0)[0] = {.alpha = 32768, .red = 1, .green = 16384, .blue = 40000};
    EXPECT_THAT(std::get<std::vector<uint16_t>>(picture_of(world).samples),
                ElementsAre(2, 32768, 65535, 65535));
}

// Nothing is lost from the host and back, where the host's own range is not exceeded.
TEST(WorldPicture, EveryValueOfTheHostComesBack) {
    host::World deep({.width = 32769, .height = 1, .depth = host::Depth::k16, .row_padding = 5});
    for (int x = 0; x < deep.width(); ++x) {
        const auto value = static_cast<A_u_short>(x);
        deep.pixels<PF_Pixel16>(0)[static_cast<size_t>(x)] = {value, value, static_cast<A_u_short>(32768 - x),
                                                              7};
    }
    EXPECT_TRUE(world_of(picture_of(deep), host::Depth::k16).same_picture(deep));

    host::World flat({.width = 256, .height = 2, .depth = host::Depth::k8, .row_padding = 5});
    for (int x = 0; x < flat.width(); ++x) {
        flat.pixels<PF_Pixel8>(1)[static_cast<size_t>(x)] = {A_u_char(x), 1, 2, A_u_char(255 - x)};
    }
    EXPECT_TRUE(world_of(picture_of(flat), host::Depth::k8).same_picture(flat));
    EXPECT_TRUE(world_of(to_16_bit(picture_of(flat)), host::Depth::k8).same_picture(flat));
    EXPECT_TRUE(world_of(to_float(picture_of(flat)), host::Depth::k8).same_picture(flat));
}

TEST(WorldPicture, FloatsStayAsTheyAre) {
    host::World world({.width = 1, .height = 2, .depth = host::Depth::k32, .row_padding = 1});
    world.pixels<PF_PixelFloat>(1)[0] = {.alpha = 0.5F, .red = -3, .green = 1e30F, .blue = INFINITY};
    const Picture picture = picture_of(world);
    EXPECT_THAT(std::get<std::vector<float>>(picture.samples),
                ElementsAre(0, 0, 0, 0, -3, 1e30F, INFINITY, 0.5F));
    EXPECT_TRUE(world_of(picture, host::Depth::k32).same_picture(world));
}

}  // namespace
}  // namespace flumo::media
