// Other programs see the colours that were rendered.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <filesystem>

#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::cli {
namespace {

constexpr size_t kWidth = 96;
constexpr size_t kHeight = 54;
constexpr size_t kPixels = kWidth * kHeight;

template <typename Sample>
std::vector<Sample> samples_of(const std::string& bytes) {
    std::vector<Sample> samples(bytes.size() / sizeof(Sample));
    std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(Sample));
    return samples;
}

class Colours : public testing::TestWithParam<std::filesystem::path> {
  protected:
    // A scene of the examples into `output`.
    std::string render(const std::string& output, const std::vector<std::string>& more) const {
        std::vector<std::string> words = {FLUMO_PROGRAM, "render", "--scene", GetParam(), "--size", "96x54",
                                          "--frames",    "7",      "-q",      "-o",       output};
        words.insert(words.end(), more.begin(), more.end());
        const auto result = flumo::test::run_program(words);
        EXPECT_EQ(result.status, 0) << result.errors;
        return result.output;
    }

    static std::string decoded(const std::string& file, const std::string& pixels) {
        const auto result = flumo::test::run_program(
            {"ffmpeg", "-v", "error", "-i", file, "-f", "rawvideo", "-pix_fmt", pixels, "-"});
        EXPECT_EQ(result.errors, "");
        return result.output;
    }

    flumo::test::ScratchFolder folder_;
    const std::vector<float> frame_ =
        samples_of<float>(render("-", {"--depth", "32", "--raw", "rgbaf32"}));  ///< straight alpha
};

// To the bit, with premultiplied alpha.
TEST_P(Colours, OfAnExrInFfmpeg) {
    render(folder_ / "a.exr", {"--depth", "32"});
    const auto planes = samples_of<float>(decoded(folder_ / "a.exr", "gbrapf32le"));
    ASSERT_EQ(planes.size(), kPixels * 4);
    const size_t plane_of_channel[] = {2, 0, 1, 3};
    for (size_t i = 0; i < kPixels * 4; ++i) {
        const float alpha = frame_[i | 3];
        const float expected = i % 4 == 3 ? alpha : frame_[i] * alpha;
        ASSERT_EQ(planes[plane_of_channel[i % 4] * kPixels + i / 4], expected) << i;
    }
}

// The codec loses detail; a wrong matrix or range shifts whole areas by 2 % or more.
TEST_P(Colours, OfProResInFfmpeg) {
    render(folder_ / "a.mov", {"--depth", "16"});
    const auto samples = samples_of<uint16_t>(decoded(folder_ / "a.mov", "rgba64le"));
    ASSERT_EQ(samples.size(), kPixels * 4);
    double error[4] = {};
    for (size_t i = 0; i < kPixels * 4; ++i)
        error[i % 4] += (samples[i] / 65535.0 - std::clamp(frame_[i], 0.0F, 1.0F)) / double{kPixels};
    for (const double mean : error)
        EXPECT_LT(std::abs(mean), 0.002);
}

std::vector<std::filesystem::path> examples() {
    std::vector<std::filesystem::path> scenes;
    for (const auto& entry : std::filesystem::directory_iterator(FLUMO_EXAMPLES)) {
        if (entry.path().extension() == ".json") scenes.push_back(entry.path());
    }
    std::ranges::sort(scenes);
    return scenes;
}

INSTANTIATE_TEST_SUITE_P(Examples, Colours, testing::ValuesIn(examples()), [](const auto& scene) {
    std::string name = scene.param.stem();
    std::ranges::replace(name, '-', '_');
    return name;
});

}  // namespace
}  // namespace flumo::cli
