#include "scene/scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/scene/sample_catalog.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/scratch_folder.h"

namespace flumo::scene {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class SceneFile : public testing::Test {
  protected:
    Scene read(const std::string& text) {
        std::ofstream(folder_ / "look.json") << text;
        return read_scene(folder_ / "look.json", sample_catalog());
    }

    // The only track of a scene that says `value` for `id`.
    Track track(const std::string& id, const std::string& value) {
        const Scene scene = read(R"({"controls": {")" + id + R"(": )" + value + "}}");
        EXPECT_THAT(scene.tracks, SizeIs(1));
        EXPECT_EQ(scene.tracks.begin()->first, sample_catalog().find(id).index);
        return scene.tracks.begin()->second;
    }

    double number(const std::string& id, const std::string& value) {
        return std::get<double>(track(id, value).keyframes.at(0).value);
    }

    flumo::test::ScratchFolder folder_;
};

TEST_F(SceneFile, GivesFrameSettings) {
    const Scene scene = read(R"({"size": "320x200", "depth": 16, "frames": "1-5x2"})");
    EXPECT_EQ(scene.size->width, 320);
    EXPECT_EQ(scene.size->height, 200);
    EXPECT_EQ(scene.depth, 16);
    EXPECT_THAT(*scene.frames, ElementsAre(1, 3, 5));
    EXPECT_EQ(read(R"({"size": [64, 48]})").size->height, 48);
    EXPECT_THAT(*read(R"({"frames": -7})").frames, ElementsAre(-7));
    EXPECT_FALSE(read("{}").size || read("{}").depth || read("{}").frames);
}

TEST_F(SceneFile, GivesConstants) {
    EXPECT_EQ(number("Scale", "12.5"), 12.5);
    EXPECT_EQ(number("Scale", "\"12.5\""), 12.5);
    EXPECT_EQ(number("Type", "3"), 3);
    EXPECT_EQ(number("Loop", "true"), 1);
    EXPECT_EQ(number("Loop", "0"), 0);
    EXPECT_EQ(std::get<std::filesystem::path>(track("Layer", "\"a.png\"").keyframes[0].value),
              folder_ / "a.png");
    EXPECT_EQ(std::get<std::filesystem::path>(track("Layer", "null").keyframes[0].value), "");
}

TEST_F(SceneFile, GivesGradients) {
    const Stop half = {0.5F, StopKind::kEdge, {1, 0, 0, 128 / 255.0F}};
    const Stop one = {1, StopKind::kSin, {2, 0.5F, 0, 1}};
    const auto stops = track("Gradient", R"([{"at": 0.5, "color": "#ff000080", "kind": "edge"},
                                             {"at": 1, "color": [2, 0.5, 0]}])");
    EXPECT_THAT(std::get<std::vector<Stop>>(stops.keyframes[0].value), ElementsAre(half, one));
    const auto text = track("Gradient", R"("0.5:edge:#ff000080,1:2/0.5/0")");
    EXPECT_EQ(text.keyframes[0].value, stops.keyframes[0].value);
    EXPECT_THAT(std::get<std::vector<Stop>>(track("Gradient", "[]").keyframes[0].value), SizeIs(0));
}

TEST_F(SceneFile, GivesKeyframes) {
    const Track numbers = track("Evolution", R"([{"frame": -5, "value": 0}, {"frame": 20, "value": 360}])");
    ASSERT_THAT(numbers.keyframes, SizeIs(2));
    EXPECT_EQ(numbers.keyframes[0].frame, -5);
    EXPECT_EQ(std::get<double>(numbers.keyframes[1].value), 360);
    const Track stops = track("Gradient", R"([{"frame": 0, "value": [{"at": 0, "color": "#fff"}]},
                                              {"frame": 9, "value": "0:#000,1:#fff"}])");
    ASSERT_THAT(stops.keyframes, SizeIs(2));
    EXPECT_THAT(std::get<std::vector<Stop>>(stops.keyframes[1].value), SizeIs(2));
}

TEST_F(SceneFile, PointsAtFileKeyAndExpectation) {
    const std::pair<const char*, const char*> cases[] = {
        {"[]", "look.json: expected an object"},
        {R"({"sise": 1})",
         "look.json: sise: unknown key; expected one of description, size, resolution, depth"},
        {R"({"size": "0x5"})", "look.json: size: size 0x5: width and height must be 1 to"},
        {R"({"size": [64]})", "size: expected \"WIDTHxHEIGHT\""},
        {R"({"depth": 12})", "depth: depth 12: expected 8, 16 or 32"},
        {R"({"depth": "8"})", "depth: expected 8, 16 or 32"},
        {R"({"frames": "9-1"})", "frames: frames \"9-1\": the range is reversed"},
        {R"({"frames": [1]})", "frames: expected a frame number"},
        {R"({"controls": []})", "controls: expected an object"},
        {R"({"controls": {"Scal": 1}})", "controls.Scal: unknown control \"Scal\"; did you mean Scale?"},
        {R"({"controls": {"Scale": 2e6}})", "controls.Scale: 2000000: expected a number -1000000 to 1000000"},
        {R"({"controls": {"Scale": true}})", "controls.Scale: expected a number"},
        {R"({"controls": {"Loop": null}})", "controls.Loop: expected true or false"},
        {R"({"controls": {"Layer": 1}})", "controls.Layer: expected a file name or null"},
        {R"({"controls": {"Layer": []}})", "controls.Layer: this control cannot vary over time"},
        {R"({"controls": {"Gradient": 1}})", "controls.Gradient: expected an array of stops"},
        {R"({"controls": {"Gradient": [1]}})", "controls.Gradient[0]: expected a stop"},
        {R"({"controls": {"Gradient": [{"color": "#fff"}]}})", "controls.Gradient[0]: expected a key \"at\""},
        {R"({"controls": {"Gradient": [{"at": 0, "color": "redd"}]}})",
         "Gradient[0].color: expected \"#rrggbb\""},
        {R"({"controls": {"Gradient": [{"at": 0, "color": [1, 2]}]}})", "Gradient[0].color: expected"},
        {R"({"controls": {"Gradient": [{"at": 0, "color": [1, "x", 2]}]}})", "color[1]: expected a number"},
        {R"({"controls": {"Gradient": [{"at": 0, "color": "#fff", "kind": "x"}]}})",
         "kind: expected \"linear\""},
        {R"({"controls": {"Gradient": [{"at": 0, "color": "#fff", "kin": "x"}]}})", "[0].kin: unknown key"},
        {R"({"controls": {"Scale": []}})", "controls.Scale: expected at least one keyframe"},
        {R"({"controls": {"Scale": [3]}})", "controls.Scale[0]: expected a keyframe"},
        {R"({"controls": {"Scale": [{"value": 1}]}})", "controls.Scale[0]: expected a key \"frame\""},
        {R"({"controls": {"Scale": [{"frame": 0}]}})", "controls.Scale[0]: expected a key \"value\""},
        {R"({"controls": {"Scale": [{"frame": 0.5, "value": 1}]}})",
         "[0].frame: expected a whole frame number"},
        {R"({"controls": {"Scale": [{"frame": 0, "value": "x"}]}})",
         "controls.Scale[0].value: \"x\": expected a number"},
        {R"({"controls": {"Scale": [{"frame": 3, "value": 1}, {"frame": 3, "value": 1}]}})",
         "controls.Scale[1].frame: expected a frame after 3"},
    };
    for (const auto& row : cases) {
        EXPECT_FAILURE(read(row.first), FailureKind::kUsage, row.second) << row.first;
    }
}

TEST_F(SceneFile, TellsTheLineOfWhatIsNoJson) {
    EXPECT_FAILURE(read("{\n  \"size\": ,\n}"), FailureKind::kUnreadableInput,
                   "look.json: line 2, column 11");
    EXPECT_FAILURE(read(""), FailureKind::kUnreadableInput, "look.json: line 1");
    EXPECT_FAILURE(read(R"({"depth": 1e999})"), FailureKind::kUnreadableInput, "look.json: number overflow");
    EXPECT_FAILURE(read_scene(folder_ / "none.json", sample_catalog()), FailureKind::kUnreadableInput,
                   "none.json");
    EXPECT_FAILURE(read(R"({"controls": {"Gradient": "@none"}})"), FailureKind::kUnreadableInput,
                   "controls.Gradient");
}

}  // namespace
}  // namespace flumo::scene
