#include <gmock/gmock.h>

#include <algorithm>

#include "effect/shaders/shader_texts.h"
#include "tests/glsl/comparison.h"
#include "tests/glsl/glsl_bench.h"
#include "tests/glsl/points.h"

namespace flumo::test {
namespace {

using testing::ElementsAre;
using testing::FloatNear;

// The small programs, each over one input texture.
class Utility : public testing::Test {
  protected:
    static Image random_image(int width, int height) {
        Numbers numbers(70);
        Image image = filled_image(width, height, {});
        for (Texel& texel : image.texels) {
            for (float& channel : texel)
                channel = numbers.between(-0.5f, 2);
        }
        return image;
    }

    Image run(const char* fragment_text, const Image& input, int width, int height) {
        const Program program(kUvVertexText, fragment_text);
        const Texture texture(input);
        texture.bind(0);
        program.use();
        program.set("inputTexture", 0);
        program.set("multiplier16bit", multiplier);
        program.set("px", Pair{0.5f / static_cast<float>(width), 0.5f / static_cast<float>(height)});
        return draw_quad(program, width, height);
    }

    Texel converted(const Texel& texel) {
        return run(kOutputFragmentText, filled_image(2, 2, texel), 2, 2).at(1, 1);
    }

    GlslBench& bench = GlslBench::shared();
    float multiplier = 1;
};

TEST_F(Utility, CopyChangesNothing) {
    const Image input = random_image(13, 7);
    const Image got = run(kCopyFragmentText, input, 13, 7);
    Comparison comparison("copy", 1e-5);  // the linear filter's weights at a texel's centre, interpolated
    for (size_t i = 0; i < input.texels.size() * 4; ++i) {
        comparison.add(got.texels[i / 4][i % 4], input.texels[i / 4][i % 4],
                       [&] { return std::to_string(i); });
    }
}

// Five squares of two by two texels: the pixel's own and the four that lie one texel along the diagonals.
// Texels beyond the edge repeat the outermost ones.
TEST_F(Utility, BlurIsFiveTapsOfTheDoubleImage) {
    const int width = 9;
    const int height = 6;
    const Image input = random_image(2 * width, 2 * height);
    const Image got = run(kBlurFragmentText, input, width, height);
    const auto clamped = [&](int x, int y, size_t channel) -> double {
        return input.at(std::clamp(x, 0, input.width - 1), std::clamp(y, 0, input.height - 1))[channel];
    };
    Comparison comparison("blur", 1e-5);
    for (int i = 0; i < width * height * 4; ++i) {
        const auto channel = static_cast<size_t>(i % 4);
        const int x = i / 4 % width;
        const int y = i / 4 / width;
        double sum = 0;
        for (const auto& [dx, dy] : {std::pair(0, 0), {1, 1}, {-1, 1}, {1, -1}, {-1, -1}}) {
            for (int corner = 0; corner < 4; ++corner) {
                sum += clamped(2 * x + dx + corner % 2, 2 * y + dy + corner / 2, channel);
            }
        }
        comparison.add(got.at(x, y)[channel], sum / 20,
                       [&] { return std::to_string(x) + ", " + std::to_string(y); });
    }
}

TEST_F(Utility, OutputIsStraightWithAlphaFirst) {
    EXPECT_THAT(converted({0.1f, 0.2f, 0.3f, 0.5f}),
                ElementsAre(0.5f, FloatNear(0.2f, 1e-6f), FloatNear(0.4f, 1e-6f), FloatNear(0.6f, 1e-6f)));
    // A premultiplied value above its alpha comes out above 1.
    EXPECT_THAT(converted({0.5f, 0, 0, 0.25f}), ElementsAre(0.25f, 2, 0, 0));
    // Below the floor everything goes; the floor itself is divided.
    EXPECT_THAT(converted({0.005f, 0.005f, 0.005f, 0.0099f}), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(converted({0.005f, 0, 0, 0.01f}), ElementsAre(0.01f, FloatNear(0.5f, 1e-6f), 0, 0));
}

TEST_F(Utility, OutputOfSixteenBitsIsHalved) {
    multiplier = 65535.0f / 32768.0f;
    EXPECT_THAT(converted({1, 0.5f, 0, 1}),
                ElementsAre(FloatNear(32768.0f / 65535, 1e-7f), FloatNear(32768.0f / 65535, 1e-7f),
                            FloatNear(16384.0f / 65535, 1e-7f), 0));
}

TEST_F(Utility, ColourPairLinks) {
    EXPECT_EQ(Program(kColorVertexText, kColorFragmentText).attribute("UVs"), -1);
}

}  // namespace
}  // namespace flumo::test
