// Looks and motion without a scene file, and many looks at once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "base/file_contents.h"
#include "media/picture_file.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::cli {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using Words = std::vector<std::string>;

class Motion : public testing::Test {
  protected:
    std::string in(const std::string& name) const { return folder_ / name; }

    flumo::test::Said flumo(Words words) const {
        words.insert(words.begin(), FLUMO_PROGRAM);
        return flumo::test::run_program(words);
    }

    media::Picture::Samples pixels(const std::string& name) const {
        return media::read_picture(in(name)).samples;
    }

    // The pixels of one frame of a look in options; the files differ by the scenes that they hold.
    media::Picture::Samples frame(const std::string& number, Words look) const {
        look.insert(look.begin(), {"render", "-q", "--size", "64x36"});
        look.insert(look.end(), {"--frames", number, "-o", in("frame.png")});
        const flumo::test::Said said = flumo(look);
        EXPECT_EQ(said.status, 0) << said.errors;
        return pixels("frame.png");
    }

    flumo::test::ScratchFolder folder_;
};

TEST_F(Motion, ALoopOfOneCommandMeetsItsBeginning) {
    const Words look = {"--set", "NoiseType=Voronoi", "--set", "Evolution=30"};
    Words options = {"scene", "--size", "64x36", "--duration", "0.4", "--loop", "-o", in("loop.json")};
    options.insert(options.end(), look.begin(), look.end());
    ASSERT_EQ(flumo(options).status, 0);
    EXPECT_EQ(json::parse(read_text_file(in("loop.json")))["frames"], "0-9");
    const Words loop = {"--scene", in("loop.json")};
    const auto first = frame("0", loop);
    EXPECT_EQ(frame("10", loop), first);
    EXPECT_NE(frame("9", loop), first);
    EXPECT_NE(frame("5", loop), first);
    options[0] = "render";
    options[7] = in("l.#.png");
    ASSERT_EQ(flumo(options).status, 0);
    EXPECT_EQ(pixels("l.0.png"), first);
    EXPECT_FALSE(std::filesystem::exists(in("l.10.png")));
}

TEST_F(Motion, KeyframesInOptionsAreThoseOfAScene) {
    const Words moving = {"--fps", "10", "--set", "OffsetX=0:0:ease,8:800:hold,2s:-300,40:-500"};
    const std::pair<const char*, double> values[] = {{"-3", 0},   {"2", 125},   {"4", 400},   {"8", 800},
                                                     {"19", 800}, {"20", -300}, {"30", -400}, {"99", -500}};
    for (const auto& [number, value] : values)
        EXPECT_EQ(frame(number, moving), frame(number, {"--set", "OffsetX=" + std::to_string(value)}))
            << number;

    Words print = {"render", "--print-scene"};
    print.insert(print.end(), moving.begin(), moving.end());
    const flumo::test::Said printed = flumo(print);
    EXPECT_EQ(json::parse(printed.output)["controls"]["OffsetX"],
              json::parse(R"([{"frame": 0, "value": 0, "interpolation": "ease"},
                              {"frame": 8, "value": 800, "interpolation": "hold"},
                              {"frame": 20, "value": -300}, {"frame": 40, "value": -500}])"));
    const auto piped = flumo::test::run_program(
        {"bash", "-c",
         "echo '" + printed.output + "' | " FLUMO_PROGRAM " render -q --size 64x36 --scene - --frames 4 -o " +
             in("piped.png")});
    ASSERT_EQ(piped.status, 0) << piped.errors;
    EXPECT_EQ(pixels("piped.png"), frame("4", moving));

    const std::pair<Words, const char*> wrong[] = {
        {{"--set", "Scale=0:1,0:2"}, "keyframe \"0:2\": expected a frame after 0"},
        {{"--set", "Scale=1.5:1"}, "time \"1.5\": expected a frame such as 48 or seconds such as 4s"},
        {{"--set", "Scale=0:1:bouncy"}, "expected linear, hold or ease"},
        {{"--set", "NoiseType=0:1,4:2"}, "cannot vary over time"},
        {{"--loop"}, "a loop needs its length"},
        {{"--loop", "--duration", "1", "--set", "Evolution=0:0,4:9"}, "has keyframes already"},
        {{"--duration", "0"}, "expected seconds above 0"},
        {{"--duration", "1", "--frames", "3"}, "expected one of them"},
        {{"--preset", "smok"}, "did you mean smoke?"},
    };
    for (auto [words, expected] : wrong) {
        words.insert(words.begin(), {"render", "-o", in("wrong.png")});
        const flumo::test::Said said = flumo(words);
        EXPECT_EQ(said.status, 2) << said.errors;
        EXPECT_THAT(said.errors, HasSubstr(expected));
    }
}

TEST_F(Motion, APresetIsAShippedScene) {
    const std::string list = flumo({"presets"}).output;
    for (const auto& entry : std::filesystem::directory_iterator(FLUMO_EXAMPLES)) {
        if (entry.path().extension() != ".json") continue;
        EXPECT_THAT("\n" + list, HasSubstr("\n" + entry.path().stem().string() + "  "));
    }
    EXPECT_EQ(frame("3", {"--preset", "loop"}), frame("3", {"--scene", FLUMO_EXAMPLES "/loop.json"}));
}

TEST_F(Motion, VariationsRepeatFromTheirSeedAndFromTheirScenes) {
    const auto vary = [&](const std::string& folder, const Words& more) {
        Words words = {"variations",
                       "--preset",
                       "fluid",
                       "--size",
                       "32x18",
                       "--count",
                       "3",
                       "-q",
                       "--mkdir",
                       "-o",
                       in(folder + "/##.exr")};
        words.insert(words.end(), more.begin(), more.end());
        const flumo::test::Said said = flumo(words);
        EXPECT_EQ(said.status, 0) << said.errors;
        EXPECT_EQ(said.errors, "");
    };
    vary("a", {"--seed", "7", "--sheet", in("sheet.png"), "--columns", "2"});
    vary("b", {"--seed", "7", "--count", "2"});
    vary("c", {"--seed", "8"});
    vary("d", {"--vary", "Offset", "--strength", "0"});
    EXPECT_EQ(read_file(in("a/01.exr")), read_file(in("b/01.exr")));
    EXPECT_EQ(read_file(in("a/02.exr")), read_file(in("b/02.exr")));
    EXPECT_NE(read_file(in("a/01.exr")), read_file(in("a/02.exr")));
    EXPECT_NE(read_file(in("a/01.exr")), read_file(in("c/01.exr")));
    EXPECT_EQ(read_text_file(in("d/01.json")), read_text_file(in("d/02.json")));
    ASSERT_EQ(flumo({"render", "-q", "--scene", in("a/03.json"), "-o", in("again.exr")}).status, 0);
    EXPECT_EQ(read_file(in("again.exr")), read_file(in("a/03.exr")));
    EXPECT_EQ(json::parse(read_text_file(in("a/03.json"))).contains("depth"), false);
    const media::Picture sheet = media::read_picture(in("sheet.png"));
    EXPECT_EQ(sheet.width, 2 * 16 + 2 * 320 + 12U);
    EXPECT_GT(sheet.height, 2 * 180U);
}

TEST_F(Motion, ASweepRendersEveryCombination) {
    const flumo::test::Said said =
        flumo({"variations", "--size", "32x18", "--sweep", "NoiseType=Smoke,Worley", "--sweep",
               "Scale=50,200", "-q", "-o", in("s.#.png")});
    ASSERT_EQ(said.status, 0) << said.errors;
    EXPECT_EQ(folder_.file_count(), 8U);
    const json controls = json::parse(read_text_file(in("s.3.json")))["controls"];
    EXPECT_EQ(controls, json::parse(R"({"NoiseType": "Worley", "Scale": 50})"));
    EXPECT_EQ(flumo({"variations", "--sweep", "Gradient=1", "-o", in("x.#.png")}).status, 2);
    EXPECT_EQ(flumo({"variations", "--vary", "Layer1", "-o", in("x.#.png")}).status, 2);
    EXPECT_EQ(flumo({"variations", "-o", in("x.png")}).status, 2);
}

}  // namespace
}  // namespace flumo::cli
