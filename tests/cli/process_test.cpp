// The program as a process: its messages, files and exit status.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "base/file_contents.h"
#include "media/picture/exr_file.h"
#include "media/picture/png_file.h"
#include "media/picture_file.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::cli {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

flumo::test::Said run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), FLUMO_PROGRAM);
    return flumo::test::run_program(arguments);
}

// A photograph that lost its second half.
void write_short_jpeg(const std::string& path) {
    flumo::test::run_program(
        {"ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc=size=320x180", "-frames:v", "1", path});
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
}

// A small frame into a scratch folder, and more arguments.
class FlumoProcess : public testing::Test {
  protected:
    flumo::test::Said render(const std::string& output, const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments = {"render", "--size", "64x36", "-o", folder_ / output};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    media::Picture rendered(const std::vector<std::string>& more = {}) {
        const flumo::test::Said said = render("frame.png", more);
        EXPECT_EQ(said.status, 0) << said.errors;
        EXPECT_EQ(said.output, "");
        return media::read_picture(folder_ / "frame.png");
    }

    void write(const std::string& name, const std::string& text) { std::ofstream(folder_ / name) << text; }

    flumo::test::ScratchFolder folder_;
};

TEST_F(FlumoProcess, TellsBadInputInOneLineAndWritesNothing) {
    write("text.txt", "not a picture, not a module, not a scene\n");
    write("utf16.json", std::string("\xff\xfe{\0}\0", 6));
    write("twice.json", R"({"controls": {"Scale": 1, "Scale": 2}})");
    write("bytes.json", "\x1b[2J\xff");
    write_short_jpeg(folder_ / "short.jpg");
    const std::size_t files = folder_.file_count();
    const std::string text = folder_ / "text.txt";
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* expected;
    } cases[] = {
        {{"--set", "NoiseContrst=5"}, 2, "unknown control \"NoiseContrst\"; did you mean NoiseContrast?"},
        {{"--set", "Scale"}, 2, "--set Scale: expected Scale=VALUE with a number -1000000 to 1000000"},
        {{"--set", "Seed"},
         2,
         "expected Seed=VALUE with a whole number 0 to 100000; it chooses other random numbers for the"},
        {{"--gradient", "Gradient"}, 2, "expected Gradient=VALUE with stops such as"},
        {{"--set", "=5"}, 2, "expected Id=value"},
        {{"--set", "Scale=wide"}, 2, "--set Scale: \"wide\": expected a number -1000000 to 1000000"},
        {{"--set", "ColorizeMode=Refraction From Layer"},
         2,
         "Gradient, Gradient From Layer, Reflection From Layer,"},
        {{"--gradient", "Gradient=0:rad"}, 2, "--gradient Gradient: gradient: colour \"rad\""},
        {{"--gradient", "Scale=5"}, 2, "--gradient Scale: this control is no gradient"},
        {{"--gradient", "Gradient=@" + text + "x"}, 3, "text.txtx"},
        {{"--layer1", text}, 3, "cannot read picture \""},
        {{"--layer2", text + "x"}, 3, "No such file"},
        {{"--size", "0x36"}, 2, "width and height must be 1 to 30000"},
        {{"--size", "64"}, 2, "expected WIDTHxHEIGHT"},
        {{"--depth", "12"}, 2, "expected 8, 16 or 32"},
        {{"--frames", "9-1"}, 2, "reversed"},
        {{"--frames", "1-2"}, 2, "2 frames need a place for the number"},
        {{"--scene", text}, 3, "text.txt: line 1"},
        {{"--scene", "/dev/zero"}, 3, "/dev/zero\": it is too large; expected at most 64 MiB"},
        {{"--module", text}, 3, "text.txt: not a loadable module"},
        {{"--sise", "64x36", "--depth", "12"}, 2, "unknown option \"--sise\"; did you mean --size?"},
        {{"--depth", "12", "--size", "0x1", "--sise", "64x36"}, 2, "depth 12"},
        {{"out.png"}, 2, "render takes options only"},
        {{"-o", "again.png"}, 2, "-o,--output is given twice"},
        {{"--set", "Random Seed=2"}, 2, "did you mean Seed?"},
        {{"--set", "layer multiplyer=2"}, 2, "did you mean one of Layer1Mult, Layer2Mult?"},
        {{"--exr-type", "half"}, 2, "for output that ends in .exr"},
        {{"--fps", "23.976"}, 2, "did you mean 24000/1001?"},
        {{"--fps", "59.94"}, 2, "did you mean 60000/1001?"},
        {{"--fps", "12.5"}, 2, "did you mean 25/2?"},
        {{"--gradient", "Gradient=@" + text}, 2, "text.txt: line 1: expected stops"},
        {{"--scene", folder_ / "utf16.json"}, 3, "it is text in UTF-16 or UTF-32; expected UTF-8"},
        {{"--scene", folder_ / "twice.json"}, 2, "twice.json: the key \"Scale\" stands twice"},
        {{"--scene", folder_ / "bytes.json"}, 3, "bytes.json: line 1"},
        {{"--set", "Sca\x1b[2Jle\xff=2"}, 2, "\"Sca\\x1b[2Jle\\xff\""},
        {{"--layer1", folder_ / "short.jpg"}, 3, "cannot read picture \""},
    };
    for (const auto& row : cases) {
        const flumo::test::Said said = render("frame.png", row.arguments);
        EXPECT_EQ(said.status, row.status) << said.errors;
        EXPECT_THAT(said.errors, HasSubstr(row.expected));
        EXPECT_TRUE(flumo::test::is_one_line(said.errors)) << said.errors;
        EXPECT_EQ(said.output, "");
        EXPECT_THAT(said.errors, Not(HasSubstr("not a picture"))) << "contents of a file";
        EXPECT_THAT(said.errors, Not(HasSubstr("@ 0x"))) << "an address";
    }
    EXPECT_EQ(folder_.file_count(), files);
}

TEST_F(FlumoProcess, TellsOutputThatCannotBeWrittenBeforeTheWork) {
    std::filesystem::create_directory(folder_ / "taken.png");
    write("file", "");
    using Refused = std::pair<const char*, const char*>;
    for (const auto& [output, reason] : {Refused("none/a.png", "its folder does not exist"),
                                         {"file/a.png", "its folder does not exist"},
                                         {"taken.png", "it is a folder"}}) {
        const flumo::test::Said said = render(output);
        EXPECT_EQ(said.status, 5) << said.errors;
        EXPECT_TRUE(flumo::test::is_one_line(said.errors)) << said.errors;
        EXPECT_THAT(said.errors, HasSubstr(std::string(output) + "\": " + reason));
    }
    EXPECT_EQ(run({"render", "-o", "/proc/flumo.png"}).status, 5);
    // A frame that would fail is not started.
    EXPECT_EQ(run({"render", "--size", "30000x1", "-o", folder_ / "none/a.png"}).status, 5);
    EXPECT_EQ(render("frame.jpg").status, 2);
    EXPECT_EQ(folder_.file_count(), 2u);
}

TEST_F(FlumoProcess, TellsThatThereIsNoOpenGl) {
    setenv("LIBGL_DRIVERS_PATH", "/nonexistent", 1);
    setenv("__EGL_VENDOR_LIBRARY_FILENAMES", "/nonexistent", 1);
    const flumo::test::Said said = render("frame.png");
    const flumo::test::Said check = run({"info", "--check", "--json"});
    const flumo::test::Said controls = run({"controls"});
    const flumo::test::Said panel = run({"panel", "Gradient"});
    unsetenv("LIBGL_DRIVERS_PATH");
    unsetenv("__EGL_VENDOR_LIBRARY_FILENAMES");
    EXPECT_EQ(said.status, 4) << said.errors;
    EXPECT_THAT(said.errors, HasSubstr("no usable OpenGL"));
    EXPECT_EQ(check.status, 4);
    EXPECT_EQ(json::parse(check.output)["check"]["passed"], false);
    EXPECT_EQ(controls.status, 0) << controls.errors;
    EXPECT_EQ(panel.status, 0) << panel.errors;
    EXPECT_EQ(folder_.file_count(), 0u);
}

TEST_F(FlumoProcess, RendersWithOneThreadOnADriverThatGainsNothingFromMore) {
    for (const char* driver : {"llvmpipe", "softpipe"}) {
        setenv("GALLIUM_DRIVER", driver, 1);
        const bool takes_turns = run({"info"}).output.find("llvmpipe") != std::string::npos;
        const flumo::test::Said said = render("frame.png", {"--threads", "2"});
        EXPECT_EQ(said.status, 0) << said.errors;
        EXPECT_EQ(said.errors.starts_with("flumo: one thread renders"), takes_turns) << driver << said.errors;
        EXPECT_THAT(render("frame.png", {"--threads", "1"}).errors, Not(HasSubstr("one thread"))) << driver;
    }
    unsetenv("GALLIUM_DRIVER");
}

TEST_F(FlumoProcess, WarnsOfControlsWithoutEffect) {
    const flumo::test::Said said = render("frame.png", {"--set", "LinesCount=9", "--layer3", "none", "--set",
                                                        "Scale=50", "--progress", "json"});
    EXPECT_EQ(said.status, 0);
    EXPECT_EQ(said.errors,
              "flumo: LinesCount changes nothing: it needs LinesVisible on\n"
              "flumo: Layer3 changes nothing: it needs ColorizeMode other than Gradient\n");
    EXPECT_THAT(said.output, StartsWith("{\"event\":\"warning\",\"message\":\"LinesCount"));
    EXPECT_EQ(render("frame.png", {"--set", "LinesCount=9", "--quiet"}).errors, "");
}

TEST_F(FlumoProcess, TellsThatAFrameFailed) {
    // One part with a doubled side beyond what any driver's textures reach today.
    const flumo::test::Said said =
        run({"render", "--size", "30000x1", "--part-size", "30000", "-o", folder_ / "wide.png"});
    EXPECT_EQ(said.status, 1) << said.errors;
    EXPECT_THAT(said.errors, HasSubstr("flumo: frame 0: "));
    EXPECT_EQ(folder_.file_count(), 0u);
}

TEST_F(FlumoProcess, UsageWithoutCommandOrOutput) {
    EXPECT_EQ(run({}).status, 2);
    EXPECT_THAT(run({"rendr"}).errors, HasSubstr("unknown command \"rendr\"; did you mean render?"));
    EXPECT_EQ(run({"render"}).status, 2);
    const flumo::test::Said help = run({"render", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    for (const char* part : {"--gradient", "--layer3", "1920x1080", "Examples:", "Exit status"}) {
        EXPECT_THAT(help.output, HasSubstr(part));
    }
}

json parsed(const flumo::test::Said& said) {
    EXPECT_EQ(said.status, 0) << said.errors;
    EXPECT_EQ(said.errors, "");
    return json::parse(said.output);
}

TEST_F(FlumoProcess, ListsTheControls) {
    const json controls = parsed(run({"controls", "--json"}));
    // What saved projects and scenes rely on: nothing in it changes unmeant.
    std::ifstream reference(FLUMO_CONTROLS);
    const json expected = json::parse(reference);
    ASSERT_EQ(controls.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(controls[i], expected[i]);

    const flumo::test::Said text = run({"controls"});
    EXPECT_EQ(text.status, 0);
    EXPECT_THAT(text.output, StartsWith("Index"));
    EXPECT_EQ(std::ranges::count(text.output, '\n'), 87);
    EXPECT_THAT(text.output, Not(HasSubstr("OpenGL")));

    const std::string guide = read_text_file(FLUMO_GUIDE);
    for (const json& control : expected) {
        const std::string row =
            "\n| " + control["name"].get<std::string>() + " | `" + control["id"].get<std::string>() + "` | ";
        const bool is_mark = control["kind"].get<std::string>().starts_with("group");
        EXPECT_EQ(guide.find(row) == std::string::npos, is_mark) << row;
    }
}

TEST_F(FlumoProcess, ShowsIdentityFlagsAndDriver) {
    const json info = parsed(run({"info", "--json"}));
    EXPECT_EQ(info["matchName"], "Velbrand Flumo");
    EXPECT_EQ(info["version"], 566784);
    EXPECT_EQ(info["versionText"], "1.1.4 release build 0");
    EXPECT_EQ(info["interfaceVersion"], "13.27");
    EXPECT_EQ(info["outFlags"]["value"], 33588336);
    EXPECT_THAT(info["outFlags"]["names"],
                AllOf(SizeIs(6), Contains("CUSTOM_UI"), Contains("DEEP_COLOR_AWARE")));
    EXPECT_THAT(info["outFlags2"]["names"], AllOf(SizeIs(4), Contains("SUPPORTS_THREADED_RENDERING")));
    for (const char* key : {"version", "vendor", "renderer", "revision"}) {
        EXPECT_FALSE(info["openGl"].at(key).get<std::string>().empty()) << key;
    }
    const flumo::test::Said text = run({"info"});
    EXPECT_THAT(text.output,
                AllOf(StartsWith("name"), HasSubstr(info["openGl"]["renderer"].get<std::string>())));
}

TEST_F(FlumoProcess, LayersReachTheEffect) {
    media::write_picture(folder_ / "black.png", media::PictureFormat::kPng,
                         {1, 1, std::vector<uint8_t>{0, 0, 0, 255}});
    media::write_picture(folder_ / "white.png", media::PictureFormat::kPng,
                         {1, 1, std::vector<uint16_t>{65535, 65535, 65535, 65535}});
    const std::vector<std::string> colours = {"--gradient", "Gradient=0:#f00,1:#00f", "--set",
                                              "NoiseContrast=100"};
    const auto with_layer = [&](const std::string& option, const std::string& file,
                                const std::string& depth) {
        std::vector<std::string> arguments = colours;
        arguments.insert(arguments.end(), {option, folder_ / file, "--depth", depth});
        return std::get<std::vector<uint16_t>>(media::to_16_bit(rendered(arguments)).samples);
    };
    const auto plain = std::get<std::vector<uint16_t>>(media::to_16_bit(rendered(colours)).samples);
    for (const char* depth : {"8", "16", "32"}) {
        // Times black the field is 0 everywhere: the first stop's red.
        const auto black = with_layer("--layer1", "black.png", depth);
        for (std::size_t i = 0; i < black.size(); i += 4)
            ASSERT_TRUE(black[i] == 65535 && black[i + 2] == 0) << depth;
        // Plus white it is beyond the last stop: blue.
        const auto white = with_layer("--layer2", "white.png", depth);
        for (std::size_t i = 0; i < white.size(); i += 4)
            ASSERT_TRUE(white[i] == 0 && white[i + 2] == 65535) << depth;
    }
    EXPECT_EQ(with_layer("--layer1", "white.png", "8"), plain);
}

TEST_F(FlumoProcess, SceneAndOptionsMakeTheSamePicture) {
    write("look.json", R"({"size": "64x36", "depth": 16, "frames": 3, "controls": {
        "NoiseType": "Smoke", "Scale": 40, "Evolution": [{"frame": 0, "value": 0}, {"frame": 4, "value": 360}],
        "Gradient": [{"frame": 1, "value": [{"at": 0, "color": "#000000"}, {"at": 1, "color": "#ff0000"}]},
                     {"frame": 5, "value": [{"at": 0.5, "color": "#000000"}, {"at": 1, "color": "#0000ff"}]}]}})");
    const std::string look = folder_ / "look.json";
    const flumo::test::Said said = run({"render", "--scene", look, "-o", folder_ / "scene.png"});
    ASSERT_EQ(said.status, 0) << said.errors;
    const media::Picture scene = media::read_picture(folder_ / "scene.png");
    // The last of two values counts.
    const std::vector<std::string> same = {
        "--depth", "16",       "--set", "NoiseType=Smoke", "--set",      "Scale=30",
        "--set",   "Scale=40", "--set", "Evolution=270",   "--gradient", "Gradient=0.25:#000,1:0.5/0/0.5"};
    EXPECT_TRUE(rendered(same).samples == scene.samples);
    EXPECT_TRUE(rendered({"--scene", look, "--frames", "3"}).samples == scene.samples);
    using Option = std::pair<const char*, const char*>;
    for (const auto& [option, value] : {Option("--frames", "4"), {"--set", "Evolution=0"}, {"--depth", "32"}})
        EXPECT_FALSE(rendered({"--scene", look, option, value}).samples == scene.samples) << option;
    run({"render", "--scene", look, "--size", "16x9", "--depth", "8", "-o", folder_ / "small.png"});
    const media::Picture small = media::read_picture(folder_ / "small.png");
    EXPECT_EQ(small.width, 16u);
    EXPECT_TRUE(std::holds_alternative<std::vector<uint8_t>>(small.samples));
    run({"render", "--set", "NoiseVisible=off", "-o", folder_ / "full.png"});
    EXPECT_EQ(media::read_picture(folder_ / "full.png").height, 1080u);
}

}  // namespace
}  // namespace flumo::cli
