#include "cli/render_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/cli/failure_matchers.h"
#include "tests/cli/sample_catalog.h"
#include "tests/cli/scratch_folder.h"

namespace flumo::cli {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class RenderJobTest : public testing::Test {
  protected:
    RenderJobTest() {
        options_.output = OutputPattern("a.####.png");
        std::ofstream(folder_ / "look.json") << R"({"size": "320x200", "depth": 16, "frames": "1-3",
            "controls": {"Scale": 5, "Evolution": [{"frame": 0, "value": 0}, {"frame": 9, "value": 90}]}})";
    }

    RenderJob job() const { return make_render_job(options_, sample_catalog()); }

    std::vector<Keyframe> keyframes(const char* id) const {
        return job().tracks.at(sample_catalog().find(id).index).keyframes;
    }

    ScratchFolder folder_;
    RenderOptions options_;
};

TEST_F(RenderJobTest, OptionsGoOverTheSceneAndBothOverDefaults) {
    EXPECT_EQ(job().size.height, 1080);
    EXPECT_THAT(job().frames, ElementsAre(0));
    EXPECT_THAT(job().tracks, SizeIs(0));

    options_.scene = folder_ / "look.json";
    EXPECT_EQ(job().size.width, 320);
    EXPECT_EQ(job().depth, host::Depth::k16);
    EXPECT_THAT(job().frames, ElementsAre(1, 2, 3));
    EXPECT_THAT(keyframes("Evolution"), SizeIs(2));

    options_.size = FrameSize{64, 36};
    options_.depth = 32;
    options_.frames = {7};
    options_.assignments = {{"--set", "Evolution", "10"}, {"--set", "Evolution", "20"}};
    EXPECT_EQ(job().size.width, 64);
    EXPECT_EQ(job().depth, host::Depth::k32);
    EXPECT_THAT(job().frames, ElementsAre(7));
    ASSERT_THAT(keyframes("Evolution"), SizeIs(1));
    EXPECT_EQ(std::get<double>(keyframes("Evolution")[0].value), 20);
    EXPECT_EQ(std::get<double>(keyframes("Scale")[0].value), 5);
}

TEST_F(RenderJobTest, SeveralFramesNeedSeveralNames) {
    options_.output = OutputPattern("a.png");
    EXPECT_EQ(job().frames.size(), 1u);
    options_.scene = folder_ / "look.json";
    EXPECT_FAILURE(job(), ExitStatus::kUsage, "3 frames need a place for the number");
}

}  // namespace
}  // namespace flumo::cli
