#include "media/output_pattern.h"

#include <gtest/gtest.h>

#include "tests/support/failure_matchers.h"

namespace flumo::media {
namespace {

TEST(OutputPattern, PutsTheFrameNumberWhereItBelongs) {
    const struct {
        const char* pattern;
        int frame;
        const char* path;
    } cases[] = {
        {"out.png", 7, "out.png"},
        {"shot.####.exr", 7, "shot.0007.exr"},
        {"shot.####.exr", 123456, "shot.123456.exr"},
        {"shot.##.exr", -3, "shot.-03.exr"},
        {"a#b/shot_#.png", 12, "a#b/shot_12.png"},
        {"####.png", 1, "0001.png"},
        {"shot.%04d.png", 42, "shot.0042.png"},
        {"shot.%d.png", 42, "shot.42.png"},
        {"100%%.%03d.png", 5, "100%.005.png"},
        {"50%%#.png", 5, "50%5.png"},
        {"50% ##.png", 5, "50% 05.png"},
        // A single # in a word or a folder is a character, as in an escape.
        {"take#3.png", 7, "take#3.png"},
        {"take#.png", 7, "take#.png"},
        {"shot.#/a.png", 7, "shot.#/a.png"},
        {"shot#1/a.####.png", 7, "shot#1/a.0007.png"},
        {"a.%#.png", 7, "a.#.png"},
        {"a.%#%#.##.png", 7, "a.##.07.png"},
        {"a.##.%d.#.png", 7, "a.#.7.#.png"},
        {"a%%d.exr", 5, "a%d.exr"},
    };
    for (const auto& row : cases) {
        const OutputPattern pattern(row.pattern);
        EXPECT_EQ(pattern.path_of(row.frame), row.path);
        EXPECT_EQ(pattern.has_frame_number(), pattern.path_of(1) != pattern.path_of(2)) << row.pattern;
    }
}

TEST(OutputPattern, KnowsKinds) {
    EXPECT_EQ(std::get<PictureFormat>(OutputPattern("a.PNG").kind()), PictureFormat::kPng);
    EXPECT_EQ(std::get<PictureFormat>(OutputPattern("a.exr").kind()), PictureFormat::kExr);
    EXPECT_EQ(std::get<VideoFormat>(OutputPattern("a.Webm").kind()), VideoFormat::kWebm);
    EXPECT_TRUE(OutputPattern("-").is_standard_output());
    EXPECT_TRUE(std::holds_alternative<Nowhere>(OutputPattern("/dev/null").kind()));
}

TEST(OutputPattern, RefusesOtherEndingsAndBrokenPatterns) {
    for (const char* text : {"", "out", "out.jpg", "out.png/"}) {
        EXPECT_FAILURE(OutputPattern(text), FailureKind::kUsage, "one of .png, .exr, .mp4") << text;
    }
    for (const char* text : {"%s.png", "%04x.png", "%.png", "%d.%d.png", "50% a#b.png"}) {
        EXPECT_FAILURE(OutputPattern(text), FailureKind::kUsage, "%04d") << text;
    }
    EXPECT_FAILURE(OutputPattern("%099999999999999d.png"), FailureKind::kUsage, "18 digits");
    EXPECT_FAILURE(OutputPattern("%99999999999999999999999d.png"), FailureKind::kUsage, "18 digits");
}

}  // namespace
}  // namespace flumo::media
