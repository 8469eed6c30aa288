// The plug-ins in the programs that people use them with: ffmpeg and melt show the frames of `flumo render`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "base/file_contents.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::frei0r::test {
namespace {

using testing::HasSubstr;
using Words = std::vector<std::string>;

/// Frames of 96x56 at 5 frames a second; the scenes count 25.
class Programs : public testing::Test {
  protected:
    static constexpr size_t kFrameBytes = 96 * 56 * 4;

    Programs() {
        setenv("FREI0R_PATH", FLUMO_PLUGINS, 1);
        std::ofstream(in("profile"))
            << "description=small\nframe_rate_num=5\nframe_rate_den=1\nwidth=96\nheight=56\n"
               "progressive=1\nsample_aspect_num=1\nsample_aspect_den=1\n"
               "display_aspect_num=96\ndisplay_aspect_den=56\ncolorspace=709\n";
    }

    std::string in(const std::string& name) const { return folder_ / name; }

    static std::string run(Words command, const Words& more) {
        command.insert(command.end(), more.begin(), more.end());
        const flumo::test::Said said = flumo::test::run_program(command);
        EXPECT_EQ(said.status, 0) << command.front() << ": " << said.errors;
        return said.output;
    }

    static std::string rendered(const Words& more) {
        return run({FLUMO_PROGRAM, "render", "--quiet", "--size", "96x56", "--depth", "8", "--frames",
                    "0,5,10", "--raw", "rgba", "-o", "-"},
                   more);
    }

    /// Raw frames that ffmpeg writes on its standard output, where nothing else may come.
    static std::string ffmpeg(Words input, const Words& more = {}) {
        input.insert(input.begin(), {"ffmpeg", "-v", "error"});
        input.insert(input.end(), more.begin(), more.end());
        return run(input, {"-frames:v", "3", "-f", "rawvideo", "-pix_fmt", "rgba", "-"});
    }

    static std::string source(const std::string& scene) {
        return "frei0r_src=size=96x56:framerate=5:filter_name=flumo:filter_params=" + scene;
    }

    std::string melt(const Words& services) const {
        Words command = {"melt", "-silent", "-profile", in("profile")};
        command.insert(command.end(), services.begin(), services.end());
        run(command, {"-consumer", "avformat:" + in("melt.rgba"), "f=rawvideo", "vcodec=rawvideo",
                      "pix_fmt=rgba", "an=1", "real_time=-4"});
        const std::vector<uint8_t> frames = read_file(in("melt.rgba"));
        return {frames.begin(), frames.end()};
    }

    /// Three frames of colours and alphas, as PNG, which all programs read to the bit.
    std::string picture() const {
        const std::string name = in("picture.png");
        run({"ffmpeg", "-v", "error", "-f", "lavfi", "-i",
             "testsrc2=size=96x56,format=rgba,geq=r='r(X,Y)':g='g(X,Y)':b='b(X,Y)':a='X*2.6'"},
            {"-frames:v", "1", "-y", name});
        return name;
    }

    flumo::test::ScratchFolder folder_;
};

TEST_F(Programs, SourcesShowTheFramesOfTheCommandLine) {
    for (const char* name : {"loop", "fluid", "gradient-keyframes", "bands", "layers"}) {
        const std::string scene = std::string(FLUMO_EXAMPLES "/") + name + ".json";
        const std::string expected = rendered({"--scene", scene, "--fps", "25"});
        ASSERT_EQ(expected.size(), 3 * kFrameBytes);
        EXPECT_TRUE(ffmpeg({"-f", "lavfi", "-i", source(scene)}) == expected) << name;
        EXPECT_TRUE(melt({"frei0r.flumo", "scene=" + scene, "out=2"}) == expected) << name;
    }
}

TEST_F(Programs, FiltersShapeAndCoverTheirInput) {
    const std::string png = picture();
    const std::string scene = in("look.json");
    std::ofstream(scene)
        << R"({"controls": {"Evolution": [{"frame": 0, "value": 0}, {"frame": 10, "value": 90}]}})";
    const Words input = {"-framerate", "5", "-loop", "1", "-i", png, "-vf"};
    const std::string shaped = rendered({"--scene", scene, "--layer1", png});
    const auto filter = [&](const std::string& use) {
        Words words = input;
        words.push_back("frei0r=filter_name=flumo_filter:filter_params=" + scene + use);
        return ffmpeg(words);
    };
    EXPECT_TRUE(filter("|0") == shaped);
    EXPECT_TRUE(filter("") == rendered({"--scene", scene}));
    EXPECT_TRUE(melt({png, "out=2", "-filter", "frei0r.flumo_filter", "scene=" + scene, "use=0"}) == shaped);
}

TEST_F(Programs, SeveralAtOnceAreEachTheirOwn) {
    const auto typed = [](const std::string& type) {
        return rendered({"--set", "NoiseType=" + type}).substr(0, kFrameBytes);
    };
    const std::string smoke = typed("Smoke");
    const std::string worley = typed("Worley");
    // The left half of one producer beside the left half of another, frames of both on four threads at once.
    const std::string beside =
        melt({"frei0r.flumo", "NoiseType=0.667", "out=2", "-track", "frei0r.flumo", "NoiseType=1", "out=2",
              "-transition", "affine", "in=0", "out=2", "a_track=0", "b_track=1", "rect=48 0 96 56 1"});
    std::string expected;
    for (size_t row = 0; row < 56; ++row)
        expected += smoke.substr(row * 384, 192) + worley.substr(row * 384, 192);
    EXPECT_TRUE(beside == expected + expected + expected);
    const std::string with = "framerate=5:filter_name=flumo:filter_params=";
    const std::string text = R"({"controls"\\:{"NoiseType"\\:"Worley"}})";
    const std::string stacked =
        ffmpeg({"-filter_complex_threads", "8", "-filter_complex",
                "frei0r_src=size=96x28:" + with +
                    ","
                    "frei0r=flumo_filter:|0.4[a];frei0r_src=size=96x28:" +
                    with + text + ",split[b][c];[a][b]vstack[d];[d][c]vstack,crop=96:56:0:28,format=rgba"});
    const std::string half = run({FLUMO_PROGRAM, "render", "--quiet", "--size", "96x28", "--depth", "8",
                                  "--raw", "rgba", "--set", "NoiseType=Worley", "-o", "-"},
                                 {});
    EXPECT_TRUE(stacked.substr(0, kFrameBytes) == half + half);
}

TEST_F(Programs, AWrongSceneDoesNotStopThem) {
    const std::string plain = rendered({});
    const auto said =
        flumo::test::run_program({"ffmpeg", "-v", "error", "-f", "lavfi", "-i", source("none.json"),
                                  "-frames:v", "3", "-f", "rawvideo", "-pix_fmt", "rgba", "-"});
    EXPECT_EQ(said.status, 0);
    EXPECT_TRUE(said.output == plain);
    EXPECT_THAT(said.errors, HasSubstr("flumo: scene: "));
    EXPECT_TRUE(flumo::test::is_one_line(said.errors)) << said.errors;
    EXPECT_TRUE(melt({"frei0r.flumo", "scene={", "Scale=nonsense", "Complexity=99", "out=2"}).size() ==
                plain.size());
}

}  // namespace
}  // namespace flumo::frei0r::test
