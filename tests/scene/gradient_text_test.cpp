#include "scene/gradient/gradient_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>

#include "tests/support/failure_matchers.h"
#include "tests/support/scratch_folder.h"

namespace flumo::scene {
namespace {

using testing::ElementsAre;

const Stop kBlack = {0, StopKind::kSin, {0, 0, 0, 1}};
const Stop kOrange = {0.5F, StopKind::kEdge, {1, 136 / 255.0F, 0, 128 / 255.0F}};
const Stop kBright = {1.25F, StopKind::kLinear, {2, -0.5F, 0.25F, 0}};

TEST(GradientText, ReadsEverySpelling) {
    EXPECT_THAT(parse_gradient("0:#000000,0.5:edge:#ff880080,1.25:linear:2/-0.5/0.25/0"),
                ElementsAre(kBlack, kOrange, kBright));
    EXPECT_THAT(parse_gradient("0:#000"), ElementsAre(kBlack));
    EXPECT_THAT(parse_gradient("1:1/1/1"), ElementsAre(Stop{1, StopKind::kSin, {1, 1, 1, 1}}));
    EXPECT_THAT(parse_gradient("Gradient t 0 sin  r 0 g 0 b 0 a 1 t 1.25 linear  r 2 g -0.5 b 0.25 a 0"),
                ElementsAre(kBlack, kBright));
    EXPECT_THAT(parse_gradient("Gradient"), ElementsAre());
    EXPECT_THAT(parse_gradient("00000000"), ElementsAre());
    EXPECT_THAT(parse_gradient("01000000"
                               "0000a03f00000000"
                               "00000040000000bf0000803e00000000"),
                ElementsAre(kBright));
}

// Positions as CSS Images Module Level 3 defines them; a jump keeps both of its colours.
TEST(GradientText, ReadsGradientsOfCss) {
    const Colour gold = {1, 215 / 255.0F, 0, 1};
    const Colour red = {1, 0, 0, 1};
    const float before_half = std::nextafter(0.5F, 0.0F);
    const auto linear = [](float at, const Colour& colour) { return Stop{at, StopKind::kLinear, colour}; };
    EXPECT_THAT(
        parse_gradient(
            "linear-gradient(to right, Gold, #f00 25%, hsl(120 100% 50% / 50%), rgba(0, 0, 255, 0.5));"),
        ElementsAre(linear(0, gold), linear(0.25F, red), linear(0.625F, {0, 1, 0, 0.5F}),
                    linear(1, {0, 0, 1, 0.5F})));
    EXPECT_THAT(parse_gradient("linear-gradient(-45.5deg, gold 50%, red 20% 75%)"),
                ElementsAre(linear(before_half, gold), linear(0.5F, red), linear(0.75F, red)));
    EXPECT_THAT(parse_gradient("0:transparent,1:RebeccaPurple"),
                ElementsAre(Stop{0, StopKind::kSin, {0, 0, 0, 0}},
                            Stop{1, StopKind::kSin, {102 / 255.0F, 51 / 255.0F, 153 / 255.0F, 1}}));
}

// The curves of GIMP at a point where each has a known value.
TEST(GradientText, ReadsGradientsOfGimp) {
    const auto colour_at = [](const std::string& segment, float at) {
        const auto stops = parse_gradient("GIMP Gradient\nName: Test\n1\n" + segment + "\n");
        const auto found =
            std::ranges::find_if(stops, [&](const Stop& stop) { return std::abs(stop.at - at) < 1e-5F; });
        return found == stops.end() ? -1.0F : found->colour.r;
    };
    EXPECT_THAT(
        parse_gradient("GIMP Gradient\nName: Two\n2\n0 0.25 0.5 0 0 0 1 1 0 0 1 0 0 0 0\n"
                       "0.5 0.75 1 0 0 1 1 0 0 0 0 5 0\n"),
        ElementsAre(Stop{0, StopKind::kLinear, {0, 0, 0, 1}},
                    Stop{std::nextafter(0.5F, 0.0F), StopKind::kLinear, {1, 0, 0, 1}},
                    Stop{0.5F, StopKind::kEdge, {0, 0, 1, 1}}, Stop{0.75F, StopKind::kEdge, {0, 0, 0, 0}},
                    Stop{1, StopKind::kEdge, {0, 0, 0, 0}}));
    const std::string ends = " 0 0 0 1 1 1 1 1 ";
    EXPECT_NEAR(colour_at("0 0.25 1" + ends + "0 0", 0.25F), 0.5F, 1e-5F);
    EXPECT_NEAR(colour_at("0 0.25 1" + ends + "1 0", 0.25F), 0.5F, 1e-5F);
    EXPECT_NEAR(colour_at("0 0.5 1" + ends + "2 0", 0.25F), 0.5F - std::sqrt(0.125F), 1e-5F);
    EXPECT_NEAR(colour_at("0 0.5 1" + ends + "3 0", 0.5F), std::sqrt(0.75F), 1e-5F);
    EXPECT_NEAR(colour_at("0 0.5 1" + ends + "4 0", 0.5F), 1 - std::sqrt(0.75F), 1e-5F);
    // From red through green to blue, or straight down from red to blue.
    EXPECT_NEAR(colour_at("0 0.5 1 1 0 0 1 0 0 1 1 0 1", 0.5F), 0.0F, 1e-5F);
    EXPECT_NEAR(colour_at("0 0.5 1 1 0 0 1 0 0 1 1 0 2", 0.5F), 1.0F, 1e-5F);
}

TEST(GradientText, ReadsAFileRelativeToTheGivenFolder) {
    const flumo::test::ScratchFolder folder;
    std::ofstream(folder / "fire.txt") << "0:#000000,\n\n1.25:linear:secret\n";
    EXPECT_FAILURE(parse_gradient("@fire.txt", folder.path()), FailureKind::kUsage,
                   "fire.txt: line 3: expected");
    for (const char* text :
         {" 0:#000000,1.25:linear:2/-0.5/0.25/0\r\n", "0:#000f,\t1.25:linear:2/-0.5/0.25/0",
          "0:black\r\n\r\n1.25:linear:2/-0.5/0.25/0\r\n",
          "\xef\xbb\xbf"
          "0:#000000,\n1.25:linear:2/-0.5/0.25/0"}) {
        std::ofstream(folder / "fire.txt") << text;
        EXPECT_THAT(parse_gradient("@fire.txt", folder.path()), ElementsAre(kBlack, kBright)) << text;
    }
    EXPECT_FAILURE(parse_gradient("@none.txt", folder.path()), FailureKind::kUnreadableInput, "none.txt");
}

TEST(GradientText, SaysWhatIsWrong) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "position[:kind]:colour"},
        {"0:#000,", "position[:kind]:colour"},
        {"x:#000", "\"x\" is not a position"},
        {"nan:#000", "\"nan\" is not a position"},
        {"0:cubic:#000", "linear, sin, edge"},
        {"0:#00000", "#rrggbb"},
        {"0:#00000g", "#rrggbb"},
        {"0:redd", "did you mean red?"},
        {"linear-gradient(red)", "at least two colours"},
        {"linear-gradient(red 10px, blue)", "\"10px\": expected a percentage"},
        {"linear-gradient(red, 50%, blue)", "\"50%\": expected a colour"},
        {"linear-gradient(red, blue", "expected a )"},
        {"GIMP Gradient\nName: A\n2\n0 0.5 1 0 0 0 1 1 1 1 1 0 0", "line 4: expected 2 segments"},
        {"GIMP Gradient\n1\n0 0.5 1 0 0 0 1 1 1 1 1 0 0 1 0", "line 3: its colours follow"},
        {"GIMP Gradient\n1\n0 0.5 1 0 0 0 1 1 1 1 1 6 0", "line 3: \"6\": expected 0 to 5"},
        {"0:1/2", "#rrggbb"},
        {"0:1/2/x", "\"x\" is not a colour channel"},
        {"Gradient t 0 sin r 0 g 0 b 0", "expected \"a\""},
        {"Gradient t 0 r 0", "linear, sin, edge"},
        {"Gradients t 0 sin r 0 g 0 b 0 a 1", "expected \"Gradient\""},
        {"0200000000000000", "24 bytes"},
        {"000000000", "24 bytes"},
    };
    for (const auto& row : cases) {
        EXPECT_FAILURE(parse_gradient(row.first), FailureKind::kUsage, row.second) << row.first;
    }
}

// What the bytes are, the gradients of `flumo panel` show.
TEST(GradientStops, StoredFormIsAscendingAndTheLaterOfEqualStopsWins) {
    const Stop white_at_zero = {0, StopKind::kLinear, {1, 1, 1, 1}};
    EXPECT_EQ(to_stored_form(std::vector{kBright, kBlack, white_at_zero}),
              to_stored_form(std::vector{white_at_zero, kBright}));
}

}  // namespace
}  // namespace flumo::scene
