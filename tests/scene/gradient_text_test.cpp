#include "scene/gradient_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(GradientText, ReadsAFileRelativeToTheGivenFolder) {
    const flumo::test::ScratchFolder folder;
    std::ofstream(folder / "fire.txt") << "0:#000000,\n\n1.25:linear:secret\n";
    EXPECT_FAILURE(parse_gradient("@fire.txt", folder.path()), FailureKind::kUsage,
                   "fire.txt: line 3: expected");
    for (const char* text :
         {" 0:#000000,1.25:linear:2/-0.5/0.25/0\r\n", "0:#000000,\t1.25:linear:2/-0.5/0.25/0",
          "0:#000000\r\n\r\n1.25:linear:2/-0.5/0.25/0\r\n",
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
        {"0:red", "#rrggbb"},
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
