#include "media/picture_file.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfOutputFile.h>
#include <OpenEXR/ImfStringAttribute.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <fstream>
#include <limits>
#include <numeric>
#include <random>

#include "base/child_process.h"
#include "base/file_contents.h"
#include "media/picture/exr_file.h"
#include "media/picture/png_file.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/scratch_folder.h"

namespace flumo::media {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::SizeIs;

// Every value of the type is as likely as any other; odd sides find a wrong stride.
template <typename Sample>
Picture noise_picture(size_t width, size_t height) {
    std::mt19937 random(7);
    std::vector<Sample> samples(width * height * 4);
    for (Sample& sample : samples) {
        if constexpr (std::is_floating_point_v<Sample>) {
            sample = std::bit_cast<float>(static_cast<uint32_t>(random()) & 0x7F7FFFFFU);
        } else {
            sample = static_cast<Sample>(random());
        }
    }
    return {width, height, samples};
}

template <typename Sample>
void make_opaque(std::vector<Sample>& samples, Sample full) {
    for (size_t alpha = 3; alpha < samples.size(); alpha += 4)
        samples[alpha] = full;
}

TEST(PictureFile, EveryFormatOfTheTableKnowsItsOwnFiles) {
    const flumo::test::ScratchFolder folder;
    for (const PictureFormatRow* row : picture_formats()) {
        const std::filesystem::path path = folder / (std::string("a") + row->ending);
        EXPECT_EQ(&row_of(row->format), row) << row->name;
        write_picture(path, row->format, noise_picture<uint8_t>(7, 3));
        const std::vector<uint8_t> start = read_file_start(path, 8);
        for (const PictureFormatRow* other : picture_formats())
            EXPECT_EQ(other->matches(start), other == row) << other->name << " for " << row->name;
        EXPECT_TRUE(is_single_picture(path));
        EXPECT_EQ(read_picture(path).width, 7U);
        EXPECT_TRUE(is_whole_file(path, row->format)) << row->name;
        std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
        EXPECT_FALSE(is_whole_file(path, row->format)) << row->name;
    }
}

TEST(PictureFile, ComesBackExactly) {
    const flumo::test::ScratchFolder folder;
    for (const Picture& picture : {noise_picture<uint8_t>(37, 5), noise_picture<uint16_t>(5, 37)}) {
        write_picture(folder / "a.png", PictureFormat::kPng, picture);
        const Picture back = read_picture(folder / "a.png");
        EXPECT_EQ(back.width, picture.width);
        EXPECT_EQ(back.height, picture.height);
        EXPECT_TRUE(back.samples == picture.samples);
        EXPECT_NE(read_text_file(folder / "a.png").find("sRGB"), std::string::npos);
    }
    EXPECT_EQ(folder.file_count(), 1u);
    Picture floats = noise_picture<float>(37, 5);
    make_opaque(std::get<std::vector<float>>(floats.samples), 1.0F);
    write_picture(folder / "a.exr", PictureFormat::kExr, floats);
    EXPECT_TRUE(read_exr(folder / "a.exr").samples == floats.samples);
}

Picture rows_of(const Picture& picture, size_t top, size_t count) {
    const auto cut = [&](const auto& samples) -> Picture::Samples {
        const auto row = static_cast<std::ptrdiff_t>(picture.width * 4);
        const auto first = samples.begin() + static_cast<std::ptrdiff_t>(top) * row;
        return std::decay_t<decltype(samples)>(first, first + static_cast<std::ptrdiff_t>(count) * row);
    };
    return {picture.width, count, std::visit(cut, picture.samples)};
}

// Every channel has the values 1, 2, 3 ... in its rows.
void write_channels(const std::string& path, Imf::Header header, const std::vector<const char*>& names) {
    std::vector<float> values(64);
    std::iota(values.begin(), values.end(), 1.0F);
    const auto columns = static_cast<size_t>(header.dataWindow().size().x + 1);
    Imf::FrameBuffer buffer;
    for (const char* name : names) {
        header.channels().insert(name, Imf::Channel(Imf::FLOAT));
        buffer.insert(name, Imf::Slice::Make(Imf::FLOAT, values.data(), header.dataWindow(), sizeof(float),
                                             columns * sizeof(float)));
    }
    Imf::OutputFile file(path.c_str(), header);
    file.setFrameBuffer(buffer);
    file.writePixels(header.dataWindow().size().y + 1);
}

// A display window of 3 x 2 at (10, 20); data from (11, 19) to (14, 20): what sticks out is cut, what is
// missing is transparent.
TEST(PictureFile, ExrFillsTheDisplayWindow) {
    const flumo::test::ScratchFolder folder;
    write_channels(folder / "a.exr", Imf::Header({{10, 20}, {12, 21}}, {{11, 19}, {14, 20}}), {"Y"});
    EXPECT_THAT(std::get<std::vector<float>>(read_exr(folder / "a.exr").samples),
                ElementsAre(0, 0, 0, 0, 5, 5, 5, 1, 6, 6, 6, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(PictureFile, ExrOfOddChannels) {
    const flumo::test::ScratchFolder folder;
    const struct {
        std::vector<const char*> names;
        std::vector<float> pixels;
        const char* failure;
    } cases[] = {
        {{"R", "G", "B"}, {1, 1, 1, 1, 2, 2, 2, 1}, nullptr},
        {{"G"}, {0, 1, 0, 1, 0, 2, 0, 1}, nullptr},
        {{"A", "Y", "Z"}, {1, 1, 1, 1, 2, 2, 2, 2}, nullptr},
        {{"A", "R"}, {1, 0, 0, 1, 2, 0, 0, 2}, nullptr},
        {{"BY", "RY", "Y"}, {}, "luminance and chroma"},
        {{"A", "Z", "left.R"}, {}, "none of the channels R, G, B and Y"},
    };
    for (const auto& row : cases) {
        write_channels(folder / "a.exr", Imf::Header(2, 1), row.names);
        if (row.failure) {
            EXPECT_FAILURE(read_picture(folder / "a.exr"), FailureKind::kUnreadableInput, row.failure);
        } else {
            EXPECT_EQ(std::get<std::vector<float>>(read_exr(folder / "a.exr").samples), row.pixels);
        }
    }
}

TEST(PictureFile, ExrHoldsPremultipliedColour) {
    const flumo::test::ScratchFolder folder;
    const Picture straight = {3, 1, std::vector<float>{1, 0.5F, 2, 0.5F, 1, 1, 1, 0, -1, 0, 0.25F, 1}};
    write_picture(folder / "a.exr", PictureFormat::kExr, straight);
    EXPECT_EQ(std::get<std::vector<float>>(read_exr(folder / "a.exr").samples),
              (std::vector<float>{0.5F, 0.25F, 1, 0.5F, 0, 0, 0, 0, -1, 0, 0.25F, 1}));
    EXPECT_EQ(std::get<std::vector<float>>(read_picture(folder / "a.exr").samples),
              (std::vector<float>{1, 0.5F, 2, 0.5F, 0, 0, 0, 0, -1, 0, 0.25F, 1}));
}

TEST(PictureFile, PngOfFloatsIsClampedTo16Bits) {
    const flumo::test::ScratchFolder folder;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const Picture floats = {2, 1, std::vector<float>{0, 0.5F, 1, 2, -1, nan, infinity, 1 / 65535.0F}};
    write_picture(folder / "a.png", PictureFormat::kPng, floats);
    EXPECT_THAT(std::get<std::vector<uint16_t>>(read_picture(folder / "a.png").samples),
                ElementsAre(0, 32768, 65535, 65535, 0, 0, 65535, 1));
}

// 5 x 1, palette of three colours at 2 bits, the first two of them (partly) transparent: 0 1 2 0 1.
constexpr uint8_t kPalettePng[] = {
    0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0x00, 0x00, 0x00, 0x0d, 0x49, 0x48, 0x44,
    0x52, 0x00, 0x00, 0x00, 0x05, 0x00, 0x00, 0x00, 0x01, 0x02, 0x03, 0x00, 0x00, 0x00, 0x6b,
    0x90, 0x8c, 0x60, 0x00, 0x00, 0x00, 0x09, 0x50, 0x4c, 0x54, 0x45, 0x0a, 0x14, 0x1e, 0x28,
    0x32, 0x3c, 0x46, 0x50, 0x5a, 0x16, 0xac, 0x84, 0x74, 0x00, 0x00, 0x00, 0x02, 0x74, 0x52,
    0x4e, 0x53, 0x00, 0x80, 0x9b, 0x2b, 0x4e, 0x18, 0x00, 0x00, 0x00, 0x0b, 0x49, 0x44, 0x41,
    0x54, 0x78, 0xda, 0x63, 0x90, 0x70, 0x00, 0x00, 0x00, 0x73, 0x00, 0x59, 0x82, 0xfd, 0x74,
    0x96, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4e, 0x44, 0xae, 0x42, 0x60, 0x82};
TEST(PictureFile, ReadsPalettes) {
    EXPECT_EQ(std::get<std::vector<uint8_t>>(decode_png(kPalettePng).samples),
              (std::vector<uint8_t>{10, 20,  30, 0,  40, 50, 60, 128, 70, 80,
                                    90, 255, 10, 20, 30, 0,  40, 50,  60, 128}));
}

void convert_with_ffmpeg(const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {"ffmpeg", "-y", "-v", "error"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const auto result = run_child(command);
    ASSERT_TRUE(result && result->status == 0) << result->errors;
}

TEST(PictureFile, ReadsPngsOfAllChannels) {
    const flumo::test::ScratchFolder folder;
    for (const char* format :
         {"monob", "gray", "gray16be", "ya8", "ya16be", "rgb24", "rgb48be", "rgba64be"}) {
        convert_with_ffmpeg({"-f", "lavfi", "-i", "color=white:s=6x4,format=rgb24", "-frames:v", "1",
                             "-pix_fmt", format, folder / "kind.png"});
        const Picture picture = to_8_bit(read_picture(folder / "kind.png"));
        EXPECT_EQ(picture.width, 6u) << format;
        // ffmpeg's white of 16 bits is a step short.
        EXPECT_THAT(std::get<std::vector<uint8_t>>(picture.samples), AllOf(SizeIs(6 * 4 * 4), Each(Ge(254))))
            << format;
    }
}

TEST(PictureFile, ReadsInterlacedPngs) {
    const flumo::test::ScratchFolder folder;
    const Picture picture = noise_picture<uint16_t>(13, 11);
    write_picture(folder / "a.png", PictureFormat::kPng, picture);
    convert_with_ffmpeg({"-i", folder / "a.png", "-flags", "+ildct", folder / "b.png"});
    EXPECT_EQ(read_file(folder / "b.png")[28], 1) << "not interlaced";
    EXPECT_TRUE(read_picture(folder / "b.png").samples == picture.samples);
}

TEST(PictureFile, ReadsOtherFormatsThroughFfmpeg) {
    const flumo::test::ScratchFolder folder;
    Picture opaque = noise_picture<uint8_t>(6, 4);
    make_opaque(std::get<std::vector<uint8_t>>(opaque.samples), uint8_t{255});
    write_picture(folder / "a.png", PictureFormat::kPng, opaque);
    const std::string path = folder / "-a: b.bmp";
    convert_with_ffmpeg({"-i", folder / "a.png", "-pix_fmt", "bgr24", path});
    EXPECT_TRUE(read_picture(path).samples == opaque.samples);
}

// The header of 16384 x 16384 pixels of four bytes, and one byte of them.
constexpr char kHugePng[] =
    "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x40\0\0\0\x40\0\b\x06\0\0\0"
    "\xa9\xc8\x10\x84"
    "\0\0\0\x01IDAT\0";

TEST(PictureFile, NamesTheFileThatCannotBeRead) {
    const flumo::test::ScratchFolder folder;
    write_picture(folder / "whole.png", PictureFormat::kPng, noise_picture<uint8_t>(40, 40));
    write_picture(folder / "whole.exr", PictureFormat::kExr, noise_picture<float>(40, 40));
    for (const char* kind : {"png", "exr"}) {
        const std::string bytes = read_text_file(folder / (std::string("whole.") + kind));
        std::ofstream(folder / (std::string("cut.") + kind)) << bytes.substr(0, bytes.size() / 2);
    }
    std::ofstream(folder / "text.txt") << "no picture at all\n";
    std::ofstream(folder / "empty.png");
    for (const char* name : {"cut.png", "cut.exr", "text.txt", "empty.png", "missing.png"}) {
        EXPECT_FAILURE(read_picture(folder / name), FailureKind::kUnreadableInput, name);
    }
    // Little files that promise much: nothing is taken for pixels that cannot be there.
    std::ofstream(folder / "huge.png").write(kHugePng, sizeof kHugePng - 1);
    write_channels(folder / "huge.exr", Imf::Header({{0, 0}, {16383, 16383}}, {{0, 0}, {0, 0}}), {"R"});
    for (const char* name : {"huge.png", "huge.exr"})
        EXPECT_FAILURE(read_picture(folder / name), FailureKind::kUnreadableInput, "bytes cannot hold");
    EXPECT_FAILURE(read_picture(folder.path()), FailureKind::kUnreadableInput, "cannot read");
}

// Rows in groups make the same bytes as all at once, in every format and with every kind of samples.
TEST(PictureFile, RowsInGroupsMakeTheSameFile) {
    const flumo::test::ScratchFolder folder;
    const FrameNotes notes = {ExrType::kHalf, false, host::FrameRate{24, 1}, std::string(1000, 's')};
    for (const auto* row : picture_formats()) {
        for (const auto& [depth, picture] : {std::pair(host::Depth::k8, noise_picture<uint8_t>(7, 50)),
                                             {host::Depth::k16, noise_picture<uint16_t>(7, 50)},
                                             {host::Depth::k32, noise_picture<float>(7, 50)}}) {
            write_picture(folder / "whole", row->format, picture, {.notes = notes});
            NewPicture parts(folder / "parts", row->format, {7, 50, depth}, {.notes = notes});
            for (size_t top = 0; top < 50; top += 9)
                parts.write_rows(rows_of(picture, top, std::min<size_t>(9, 50 - top)));
            EXPECT_FALSE(std::filesystem::exists(folder / "parts"));
            parts.finish();
            EXPECT_EQ(read_file(folder / "parts"), read_file(folder / "whole")) << row->name;
            EXPECT_EQ(read_notes(folder / "parts").scene, notes.scene) << row->name;
            std::filesystem::remove(folder / "parts");
        }
    }
}

// Resuming must not take a file for done that lost its end, wherever that is.
TEST(PictureFile, AFileThatLostItsEndIsNotWhole) {
    const flumo::test::ScratchFolder folder;
    for (const auto* row : picture_formats()) {
        const std::string path = folder / row->name;
        write_picture(path, row->format, noise_picture<uint8_t>(40, 40));
        EXPECT_TRUE(is_whole_file(path, row->format)) << row->name;
        for (auto size = std::filesystem::file_size(path); size > 0; size = size * 9 / 10) {
            std::filesystem::resize_file(path, size - 1);
            EXPECT_FALSE(is_whole_file(path, row->format)) << row->name << " of " << size - 1;
        }
    }
    for (const auto* row : video_formats()) {
        const std::string path = folder / row->ending;
        convert_with_ffmpeg({"-f", "lavfi", "-i", "testsrc=s=64x36:d=0.2", path});
        EXPECT_TRUE(is_whole_file(path, row->format)) << row->ending;
        for (const auto size : {std::filesystem::file_size(path) - 1, uintmax_t{100}, uintmax_t{0}}) {
            std::filesystem::resize_file(path, size);
            EXPECT_FALSE(is_whole_file(path, row->format)) << row->ending << " of " << size;
        }
    }
}

// The curve of IEC 61966-2-1, and its mirror image below 0; alpha is a share and no light.
TEST(PictureFile, LinearExrSaysSo) {
    const flumo::test::ScratchFolder folder;
    const Picture display = {2, 1, std::vector<float>{0.5F, 1, 0.04F, 0.5F, -0.5F, 2, 0, 1}};
    for (const bool linear : {false, true}) {
        write_picture(folder / "a.exr", PictureFormat::kExr, display, {.notes = {.linear = linear}});
        EXPECT_EQ(read_notes(folder / "a.exr").linear, linear);
        const std::string bytes = read_text_file(folder / "a.exr");
        EXPECT_NE(bytes.find(linear ? "Linear light, Rec. 709" : "sRGB transfer curve"), std::string::npos);
        EXPECT_NE(bytes.find("chromaticities"), std::string::npos);
    }
    EXPECT_THAT(std::get<std::vector<float>>(read_exr(folder / "a.exr").samples),
                testing::Pointwise(testing::FloatNear(1e-6F), {0.2140411F / 2, 0.5F, 0.04F / 12.92F / 2, 0.5F,
                                                               -0.2140411F, 4.9538469F, 0.0F, 1.0F}));
}

// One attribute with the whole scene, as earlier versions wrote it.
TEST(PictureFile, ReadsTheSceneOfAnOldExr) {
    const flumo::test::ScratchFolder folder;
    Imf::Header header(2, 1);
    header.insert("flumoScene", Imf::StringAttribute(std::string(3000, 's')));
    write_channels(folder / "a.exr", header, {"R"});
    EXPECT_EQ(read_notes(folder / "a.exr").scene, std::string(3000, 's'));
}

TEST(PictureFile, TakesUpWhatAKilledProcessLeft) {
    const flumo::test::ScratchFolder folder;
    std::ofstream(folder / ".a.png.part") << std::string(10000, 'x');
    const Picture picture = noise_picture<uint8_t>(4, 4);
    write_picture(folder / "a.png", PictureFormat::kPng, picture);
    EXPECT_LT(std::filesystem::file_size(folder / "a.png"), 1000u);
    EXPECT_EQ(folder.file_count(), 1u);
    // Two at once write into different files, and the last one stays.
    {
        NewFile first(folder / "a.png");
        NewFile second(folder / "a.png");
        EXPECT_NE(first.temporary(), second.temporary());
        std::ofstream(first.temporary()) << "first";
        std::ofstream(second.temporary()) << "second";
        second.commit();
        first.commit();
    }
    EXPECT_EQ(read_text_file(folder / "a.png"), "first");
    EXPECT_EQ(folder.file_count(), 1u);
}

}  // namespace
}  // namespace flumo::media
