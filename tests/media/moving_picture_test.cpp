#include "media/moving_picture.h"

#include <gtest/gtest.h>

#include "base/child_process.h"
#include "media/picture_file.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/scratch_folder.h"

namespace flumo::media {
namespace {

class MovingPictureFiles : public testing::Test {
  protected:
    // Grey pictures 3 to 6: their number times 40.
    MovingPictureFiles() {
        for (uint8_t number = 3; number <= 6; ++number) {
            const auto grey = static_cast<uint8_t>(number * 40);
            std::vector<uint8_t> samples(16 * 16 * 4, grey);
            write_picture(folder_ / ("plate.000" + std::to_string(number) + ".png"), PictureFormat::kPng,
                          {16, 16, samples});
        }
        // A number without its padding is no frame of the sequence.
        write_picture(folder_ / "plate.9.png", PictureFormat::kPng, {1, 1, std::vector<uint8_t>(4)});
        const auto result = run_child({"ffmpeg", "-v", "error", "-start_number", "3", "-i",
                                       folder_ / "plate.%04d.png", "-c:v", "ffv1", folder_ / "plate.mkv"});
        EXPECT_TRUE(result && result->status == 0) << result->errors;
    }

    // Which of the pictures `text` shows at the frames.
    std::vector<int> shown(const std::string& text, const std::vector<int>& frames) const {
        const auto picture = open_moving_picture(parse_layer_text(folder_ / text));
        std::vector<int> numbers;
        for (const int frame : frames)
            numbers.push_back(std::get<std::vector<uint8_t>>(to_8_bit(picture->at(frame)).samples)[0] / 40);
        return numbers;
    }

    flumo::test::ScratchFolder folder_;
};

TEST_F(MovingPictureFiles, ShowFrameByFrameHoldOrLoop) {
    using Numbers = std::vector<int>;
    for (const char* name : {"plate.####.png", "plate.%04d.png"}) {
        EXPECT_EQ(shown(name, {-1, 3, 5, 7, 100}), (Numbers{3, 3, 5, 6, 6})) << name;
        EXPECT_EQ(shown(std::string(name) + ",offset=2,end=hold", {0, 1, 3}), (Numbers{3, 3, 5})) << name;
        EXPECT_EQ(shown(std::string(name) + ",end=loop", {2, 3, 6, 7, -2}), (Numbers{6, 3, 6, 3, 6})) << name;
    }
    // A video counts from 0; going back starts it again.
    EXPECT_EQ(shown("plate.mkv", {0, 1, 3, 9, 2, 0}), (Numbers{3, 4, 6, 6, 5, 3}));
    EXPECT_EQ(shown("plate.mkv,end=loop,offset=-1", {0, 1, 5}), (Numbers{6, 3, 3}));
}

TEST_F(MovingPictureFiles, AreRefusedWithTheReason) {
    const auto open = [&](const std::string& text) {
        return open_moving_picture(parse_layer_text(folder_ / text));
    };
    EXPECT_EQ(open("plate.0003.png"), nullptr);
    EXPECT_FAILURE(open("plate.0003.png,end=loop"), FailureKind::kUsage, "single picture");
    EXPECT_FAILURE(open("other.####.png"), FailureKind::kUnreadableInput, "no file of that name");
    EXPECT_FAILURE(open("plate.mkv,end=bounce"), FailureKind::kUsage, "hold or loop");
    EXPECT_FAILURE(open("plate.mkv,offset=x"), FailureKind::kUsage, "number of frames");
}

}  // namespace
}  // namespace flumo::media
