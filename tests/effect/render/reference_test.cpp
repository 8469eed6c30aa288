// Stored pictures, which hold what no second arithmetic here repeats: lines and bumps of curved fields, and
// the look as a whole. With FLUMO_UPDATE_REFERENCES set the pictures are rendered anew instead of compared.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "media/picture_file.h"
#include "media/world_picture.h"
#include "tests/effect/render/comparison.h"
#include "tests/effect/render/looks.h"

namespace flumo::test {
namespace {

using enum Section;
using host::Depth;
using media::Picture;
using Samples = std::vector<uint8_t>;

constexpr int kWidth = 96;
constexpr int kHeight = 54;

// Drivers differ in the last bits of a sine. What a scene makes of that is its own: `tolerance` is in steps
// of 255, and `allowed_beyond` is the share of channels that may lie further away.
struct Reference {
    std::string name;
    Look look;
    int tolerance;
    double allowed_beyond;
};

Look jittered_lines() {
    return with(fluid(), {{LinesVisible, 1},
                          {LinesCount, 9},
                          {LineWidth, 3},
                          {LinesRandomize, 80},
                          {WidthRandomize, 200},
                          {GradientRandomize, 60},
                          {LinesGradient, Stops{{0, 1, 1, 0.4F}, {0.5F, 0.1F, 0.2F, 0.6F}, {1, 1, 1, 1}}},
                          {Seed, 7}});
}

Look masked_lines() {
    return {{NoiseVisible, 0},
            {LinesVisible, 1},
            {LinesGradient, colourful()},
            {LinesCount, 5},
            {LinesAlpha, 70},
            {LinesAlphaNoiseType, 4},
            {LinesAlphaThreshold, 70},
            {LinesAlphaNoiseEvolution, 200},
            {AlphaRandomize, 1}};
}

std::vector<Reference> references() {
    const Look layer = {{Layer3, colourful_layer(48, 27, Depth::k8)}};
    return {
        {"default", {}, 1, 0},
        {"fluid", with(fluid(), look("Complexity=9 Evolution=130 Scale=60")), 1, 0},
        {"voronoi", with(fluid(), look("NoiseType=2 Complexity=12 Evolution=60")), 3, 0.01},
        {"smoke", with(fluid(), look("NoiseType=3 Scale=50 NoiseBrightness=10")), 1, 0},
        {"worley", with(fluid(), look("NoiseType=4 Evolution=75 LoopEvolution=1 Speed=50")), 1, 0},
        {"lines", jittered_lines(), 4, 0.01},
        {"lines-masked", masked_lines(), 4, 0.01},
        {"layers",
         with(fluid(), {{Scale, 30},
                        {Layer1, colourful_layer(20, 20, Depth::k8)},
                        {Layer2, colourful_layer(16, 9, Depth::k16)},
                        {Layer2LightnessInvert, 1},
                        {AlphaTreshold, 40}}),
         1, 0},
        {"layer-gradient",
         with(
             layer,
             look(
                 "NoiseType=4 ColorizeMode=2 NoiseBottomCroppingThreshold=40 NoiseBottomCroppingFeather=30")),
         1, 0},
        {"reflection", with(layer, look("ColorizeMode=3 Complexity=3")), 2, 0},
        {"refraction",
         with(layer, look("ColorizeMode=4 NoiseType=2 NoiseGradientLoop=1 ReflectionScale=0.3")), 8, 0.01},
    };
}

std::filesystem::path reference_file(const std::string& name) {
    return std::filesystem::path(FLUMO_REFERENCES) / (name + ".png");
}

void write_png(const std::filesystem::path& path, const Picture& picture) {
    media::write_picture(path, media::PictureFormat::kPng, picture);
}

// How far apart sample i is, colours weighted by their alpha: those of a nearly empty pixel mean nothing.
int distance(const Samples& a, const Samples& b, size_t i) {
    const auto weighted = [i](const Samples& samples) {
        return i % 4 == 3 ? int{samples[i]} : samples[i] * samples[i / 4 * 4 + 3] / 255;
    };
    return std::abs(weighted(a) - weighted(b));
}

// Eight times the distance of each channel, opaque.
Picture difference(const Picture& a, const Picture& b) {
    const auto& ours = std::get<Samples>(a.samples);
    const auto& theirs = std::get<Samples>(b.samples);
    Samples samples(ours.size());
    for (size_t i = 0; i < samples.size(); ++i) {
        samples[i] = i % 4 == 3 ? 255 : static_cast<uint8_t>(std::min(255, 8 * distance(ours, theirs, i)));
    }
    return {a.width, a.height, std::move(samples)};
}

// The paths of the three pictures that tell more than numbers.
std::string write_difference(const std::string& name, const Picture& got, const Picture& wanted) {
    const std::filesystem::path folder = FLUMO_DIFFERENCES;
    std::filesystem::create_directories(folder);
    const auto file = [&](const char* what) { return folder / (name + "." + what + ".png"); };
    write_png(file("frame"), got);
    write_png(file("reference"), wanted);
    write_png(file("difference"), difference(got, wanted));
    return "see " + file("frame").string() + ", " + file("reference").string() + " and " +
           file("difference").string();
}

void expect_reference(const Reference& reference, const Picture& got) {
    const Picture wanted = media::read_picture(reference_file(reference.name));
    ASSERT_EQ(got.width, wanted.width);
    ASSERT_EQ(got.height, wanted.height);
    const auto& ours = std::get<Samples>(got.samples);
    const auto& theirs = std::get<Samples>(wanted.samples);
    Comparison comparison(reference.name, reference.tolerance, reference.allowed_beyond);
    for (size_t i = 0; i < ours.size(); ++i)
        comparison.add_deviation(distance(ours, theirs, i), [i] { return "sample " + std::to_string(i); });
    if (!comparison.holds()) ADD_FAILURE() << write_difference(reference.name, got, wanted);
}

TEST(ReferenceFrames, LookAsStored) {
    const char* wish = std::getenv("FLUMO_UPDATE_REFERENCES");
    const bool renew = wish && *wish;
    for (const Reference& reference : references()) {
        const Picture frame =
            media::picture_of(render_checked({reference.look, {.width = kWidth, .height = kHeight}}));
        if (renew) {
            write_png(reference_file(reference.name), frame);
        } else {
            expect_reference(reference, frame);
        }
    }
    if (renew) {
        std::ofstream(std::filesystem::path(FLUMO_REFERENCES) / "driver.txt")
            << "The driver that rendered these pictures:\n"
            << driver_lines();
    }
}

}  // namespace
}  // namespace flumo::test
