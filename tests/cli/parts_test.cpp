// Frames in parts, and frames at a smaller resolution.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "media/picture_file.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::cli {
namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 225;
constexpr int kPart = 96;

class Parts : public testing::Test {
  protected:
    media::Picture render(const std::vector<std::string>& more) const {
        std::vector<std::string> words = {FLUMO_PROGRAM, "render", "-q", "-o", folder_ / "a.exr"};
        words.insert(words.end(), more.begin(), more.end());
        const auto result = flumo::test::run_program(words);
        EXPECT_EQ(result.status, 0) << result.errors;
        return media::read_picture(folder_ / "a.exr");
    }

    flumo::test::ScratchFolder folder_;
};

const std::vector<float>& floats(const media::Picture& picture) {
    return std::get<std::vector<float>>(picture.samples);
}

// Mean and largest difference of the samples in the given columns.
struct Difference {
    double mean = 0;
    double largest = 0;
};

template <typename Columns>
Difference difference(const media::Picture& a, const media::Picture& b, const Columns& counts) {
    Difference result;
    size_t samples = 0;
    for (size_t i = 0; i < floats(a).size(); ++i) {
        const int pixel = static_cast<int>(i / 4);
        if (!counts(pixel % kWidth, pixel / kWidth)) continue;
        const double distance = std::abs(double(floats(a)[i]) - floats(b)[i]);
        result.mean += distance;
        result.largest = std::max(result.largest, distance);
        ++samples;
    }
    result.mean /= static_cast<double>(std::max<size_t>(samples, 1));
    return result;
}

// Whether the pixel touches a border between two parts; bands are a quarter of a part high.
bool at_seam(int x, int y) {
    const auto near = [](int place, int step) {
        return place >= step - 1 && (place % step <= 0 || place % step == step - 1);
    };
    return near(x, kPart) || near(y, kPart / 4);
}

// Lines lie across the borders, where a missing neighbour of the last pass or a wrong origin shows.
TEST_F(Parts, MakeTheSamePictureWithoutSeams) {
    for (const char* look : {"isolines", "lines-over-noise", "worley", "layers", "reflection"}) {
        const std::vector<std::string> scene = {"--scene",  std::string(FLUMO_EXAMPLES "/") + look + ".json",
                                                "--size",   "400x225",
                                                "--frames", "3"};
        auto cut = scene;
        cut.insert(cut.end(), {"--part-size", std::to_string(kPart)});
        const media::Picture whole = render(scene);
        const media::Picture parts = render(cut);
        ASSERT_EQ(floats(parts).size(), floats(whole).size());
        const Difference seams = difference(whole, parts, at_seam);
        const Difference elsewhere = difference(whole, parts, [](int x, int y) { return !at_seam(x, y); });
        EXPECT_LT(elsewhere.mean, 1e-3) << look;
        EXPECT_LT(seams.mean, 2 * elsewhere.mean + 1e-5) << look << ": a seam";
    }
}

// Mean difference of the samples of a picture of 200x113 from the means of the whole frame's pixels.
double distance_to_reduced(const media::Picture& small, const media::Picture& whole) {
    constexpr std::size_t kAcross = kWidth / 2;
    constexpr std::size_t kDown = kHeight / 2;
    double distance = 0;
    for (std::size_t i = 0; i < kAcross * kDown * 4; ++i) {
        const std::size_t x = i / 4 % kAcross * 2;
        const std::size_t y = i / 4 / kAcross * 2;
        const auto at = [&](std::size_t right, std::size_t down) {
            return double(floats(whole)[((y + down) * kWidth + x + right) * 4 + i % 4]);
        };
        distance += std::abs((at(0, 0) + at(1, 0) + at(0, 1) + at(1, 1)) / 4 - floats(small)[i]);
    }
    return distance / (kAcross * kDown * 4);
}

// The same look with fewer pixels: lines get thinner, which they do not in a frame of a smaller size.
TEST_F(Parts, ASmallerResolutionKeepsTheLook) {
    const auto render_at = [&](const char* size, const char* resolution) {
        return render(
            {"--scene", FLUMO_EXAMPLES "/isolines.json", "--size", size, "--resolution", resolution});
    };
    const media::Picture whole = render_at("400x225", "full");
    const media::Picture other = render_at("200x113", "full");
    const media::Picture small = render_at("400x225", "half");
    ASSERT_EQ(small.width, 200U);
    ASSERT_EQ(small.height, 113U);
    EXPECT_LT(distance_to_reduced(small, whole), 0.4 * distance_to_reduced(other, whole));
    // And a file renders itself again at its own resolution.
    const auto again = flumo::test::run_program(
        {FLUMO_PROGRAM, "render", "-q", "--from", folder_ / "a.exr", "-o", folder_ / "b.exr"});
    EXPECT_EQ(again.status, 0) << again.errors;
    EXPECT_EQ(floats(media::read_picture(folder_ / "b.exr")), floats(small));
}

}  // namespace
}  // namespace flumo::cli
