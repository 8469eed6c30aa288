// `flumo panel` as a process.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "base/file_contents.h"
#include "media/picture_file.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::cli {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class FlumoPanel : public testing::Test {
  protected:
    static flumo::test::Said panel(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {FLUMO_PROGRAM, "panel"});
        return flumo::test::run_program(arguments);
    }

    media::Picture drawn(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"-o", folder_ / "panel.png"});
        const flumo::test::Said said = panel(arguments);
        EXPECT_EQ(said.status, 0) << said.errors;
        return media::read_picture(folder_ / "panel.png");
    }

    flumo::test::ScratchFolder folder_;
};

TEST_F(FlumoPanel, PlaysAScriptAndThenTheEvents) {
    std::ofstream(folder_ / "script")
        << "# a stop in the middle\n\n  double-click  75,20\r\n"
           "pick #0000ff80\ndouble-click 75,40\nclick 75,40\ndrag -99,20\nrelease\n"
           "drag 30,60\n";
    const flumo::test::Said said =
        panel({"LinesGradient", "--stops", "LinesGradient=0.1:edge:#000,1:#f00", "--event", "pick cancel",
               "--event", "double-click 144,40", "--event", "click 144,40", "--event", "drag 0,99",
               "--script", folder_ / "script", "--print", "json"});
    ASSERT_EQ(said.status, 0) << said.errors;
    const json steps = json::parse(said.output);
    ASSERT_EQ(steps.size(), 10U) << "the start and every event but the answers";
    EXPECT_EQ(steps[2]["stops"][1], json::parse(R"({"at": 0.5, "kind": "edge", "color": [0, 0, 1, 1]})"));
    EXPECT_EQ(steps[4]["stops"][0]["at"], 0);
    EXPECT_EQ(steps[6]["event"], "drag 30,60");
    EXPECT_EQ(steps[6]["changed"], false) << "nothing is held any more";
    EXPECT_EQ(steps[7]["stops"], steps[5]["stops"]) << "cancelled";
    EXPECT_EQ(steps[9]["stops"].size(), 2U) << "dragged away";
}

TEST_F(FlumoPanel, TurnsGradientsIntoEachOthersForms) {
    // One stop: at 0.5, of kind 7, 1 0 2 0.5.
    const std::string hex = "010000000000003f070000000000803f00000000000000400000003f";
    const flumo::test::Said saved = panel({"Gradient", "--stops", hex, "--save", folder_ / "stored"});
    EXPECT_EQ(saved.output, "start\tGradient t 0.5 r 1 g 0 b 2 a 0.5\n") << "a kind without a name";
    EXPECT_EQ(read_file(folder_ / "stored").size(), 28U);
    EXPECT_EQ(panel({"Gradient", "--load", folder_ / "stored", "--print", "hex"}).output,
              "start\t" + hex + "\n");
    EXPECT_THAT(panel({"Gradient", "--load", folder_ / "stored", "--print", "json"}).output,
                HasSubstr(R"({"at":0.5,"kind":7,"color":[1.0,0.0,2.0,0.5]})"));
}

TEST_F(FlumoPanel, ThePictureIsTheGradientsWhateverTheWayToIt) {
    const media::Picture plain = drawn({"Gradient", "--stops", "0:#000,0.5:#808080,1:#fff"});
    EXPECT_EQ(plain.width, 150U);
    EXPECT_EQ(plain.height, 50U);
    EXPECT_TRUE(drawn({"Gradient", "--layout", "argb", "--pick", "#808080", "--event", "double-click 75,20",
                       "--event", "double-click 75,40"})
                    .samples == plain.samples);
    EXPECT_FALSE(drawn({"Gradient"}).samples == plain.samples);
    const media::Picture sharp = drawn({"LinesGradient", "--size", "300x16", "--scale", "1.5"});
    EXPECT_EQ(sharp.width, 450U);
    EXPECT_EQ(sharp.height, 24U);
}

TEST_F(FlumoPanel, AFailedEventIsToldAfterTheOthers) {
    const flumo::test::Said said =
        panel({"Gradient", "--pick", "fail", "--event", "double-click 6,40", "--event", "ctrl-click 6,40",
               "--event", "double-click 144,40", "-o", folder_ / "panel.png"});
    EXPECT_EQ(said.status, 1);
    EXPECT_EQ(said.errors,
              "flumo: event \"double-click 6,40\": PF_Cmd_EVENT failed with 512 "
              "(PF_Err_INTERNAL_STRUCT_DAMAGED)\n");
    EXPECT_THAT(said.output,
                HasSubstr("error 512 (PF_Err_INTERNAL_STRUCT_DAMAGED)\nctrl-click 6,40\tGradient t 0 edge"));
    EXPECT_EQ(media::read_picture(folder_ / "panel.png").width, 150U);
    EXPECT_EQ(panel({"Gradient", "--layout", "none", "-o", folder_ / "none.png"}).status, 1);
    EXPECT_EQ(folder_.file_count(), 1U);
}

TEST_F(FlumoPanel, TellsBadInputInOneLineAndWritesNothing) {
    std::ofstream(folder_ / "script") << "click 1,2\nclick 1;2\n";
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* expected;
    } cases[] = {
        {{"Gradient", "--event", "tap 1,2"}, 2, "\"tap 1,2\": expected click X,Y, double-click X,Y"},
        {{"Gradient", "--script", folder_ / "script"},
         2,
         "script: line 2: event \"click 1;2\": expected click X,Y"},
        {{"Gradient", "--script", folder_ / "none"}, 3, "No such file"},
        {{"Gradient", "--pick", "red"}, 2, "expected #rrggbb, cancel or fail"},
        {{"Gradient", "--load", folder_ / "script"}, 3, "no stored gradient"},
        {{"Gradient", "--load", folder_ / "script", "--stops", "0:#000"}, 2, "expected one of them"},
        {{"Gradient", "--scale", "0"}, 2, "expected a number above 0"},
        {{"Gradient", "--size", "30000x9", "--scale", "2"}, 2, "a panel of this size"},
        {{"Gradient", "--print", "yaml"}, 2, "expected text, hex or json"},
        {{"Gradient", "-o", folder_ / "none/panel.png"}, 5, "its folder does not exist"},
        {{"Gradient", "--save", folder_ / "none/stored"}, 5, "its folder does not exist"},
        {{"Scale"}, 2, "expected Gradient or LinesGradient"},
        {{}, 2, "such as: flumo panel Gradient"},
    };
    for (const auto& row : cases) {
        const flumo::test::Said said = panel(row.arguments);
        EXPECT_EQ(said.status, row.status) << said.errors;
        EXPECT_THAT(said.errors, HasSubstr(row.expected));
        EXPECT_TRUE(flumo::test::is_one_line(said.errors)) << said.errors;
    }
    EXPECT_EQ(folder_.file_count(), 1U);
}

}  // namespace
}  // namespace flumo::cli
