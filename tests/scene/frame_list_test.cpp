#include "scene/frame_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/failure_matchers.h"

namespace flumo::scene {
namespace {

using testing::ElementsAre;

TEST(FrameList, GivesTheFramesInTheOrderWrittenEachOnce) {
    EXPECT_THAT(parse_frame_list("7"), ElementsAre(7));
    EXPECT_THAT(parse_frame_list("3-6"), ElementsAre(3, 4, 5, 6));
    EXPECT_THAT(parse_frame_list("1-10x4"), ElementsAre(1, 5, 9));
    EXPECT_THAT(parse_frame_list("1-10:4"), ElementsAre(1, 5, 9));
    EXPECT_THAT(parse_frame_list("9,1-3,2-5"), ElementsAre(9, 1, 2, 3, 4, 5));
    EXPECT_THAT(parse_frame_list("-3--1"), ElementsAre(-3, -2, -1));
    EXPECT_THAT(parse_frame_list("-10-20x15"), ElementsAre(-10, 5, 20));
    EXPECT_THAT(parse_frame_list("2147483646-2147483647"), ElementsAre(2147483646, 2147483647));
}

TEST(FrameList, RefusesWhatIsNoList) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "expected N"},          {"a", "expected N"},
        {"1,", "expected N"},        {"1-", "expected N"},
        {"1-2x", "expected N"},      {"1..3", "expected N"},
        {"1-2-3", "expected N"},     {" 1", "expected N"},
        {"10-1", "reversed"},        {"1-5x0", "step"},
        {"1-5x-1", "step"},          {"5x2", "range"},
        {"99999999999", "expected"}, {"0-1000000", "1000000 frames"},
    };
    for (const auto& row : cases) {
        EXPECT_FAILURE(parse_frame_list(row.first), FailureKind::kUsage, row.second) << row.first;
    }
}

}  // namespace
}  // namespace flumo::scene
