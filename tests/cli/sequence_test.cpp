// Shots: resumed, shared out, as video, into pipes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base/file_contents.h"
#include "base/text_list.h"
#include "cli/terminal/progress_text.h"
#include "media/picture/exr_file.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::cli {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

class Sequence : public testing::Test {
  protected:
    Sequence() {
        std::ofstream(folder_ / "shot.json")
            << R"({"size": "64x36", "depth": 16, "frames": "0-6", "fps": "30",
            "controls": {"Evolution": [{"frame": 0, "value": 0}, {"frame": 200, "value": 360}],
                         "NoiseVisible": false, "LinesVisible": true}})";
    }

    std::string in(const std::string& name) const { return folder_ / name; }

    flumo::test::Said render(const std::string& output, const Words& more = {}) const {
        Words words = {FLUMO_PROGRAM,   "render", "--scene",
                       in("shot.json"), "-o",     output == "-" ? output : in(output)};
        words.insert(words.end(), more.begin(), more.end());
        return flumo::test::run_program(words);
    }

    void expect_same(const std::string& a, const std::string& b) const {
        EXPECT_EQ(read_file(in(a)), read_file(in(b))) << a << " and " << b;
    }

    flumo::test::ScratchFolder folder_;
};

std::vector<json> json_lines(const std::string& output) {
    std::vector<json> lines;
    std::istringstream text(output);
    for (std::string line; std::getline(text, line);)
        lines.push_back(json::parse(line));
    return lines;
}

TEST_F(Sequence, ShardsMakeTheWholeAndKeepWhatIsThere) {
    std::filesystem::create_directory(in("whole"));
    std::filesystem::create_directory(in("parts"));
    ASSERT_EQ(render("whole/####.png", {"--start-number", "10"}).status, 0);
    for (const char* shard : {"3/3", "1/3", "2/3"}) {
        const flumo::test::Said result = render("parts/####.png", {"--start-number", "10", "--shard", shard});
        ASSERT_EQ(result.status, 0) << result.errors;
    }
    for (int number = 10; number <= 16; ++number) {
        const std::string name = "/00" + std::to_string(number) + ".png";
        expect_same("whole" + name, "parts" + name);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(in("parts")), {}), 7);

    std::ofstream(in("0003.png")) << "mine";
    EXPECT_EQ(render("####.png", {"--no-clobber"}).status, 5);
    EXPECT_EQ(read_text_file(in("0003.png")), "mine");
    EXPECT_FALSE(std::filesystem::exists(in("0000.png")));
}

TEST_F(Sequence, KeepsGoingPastAFrameOutOfTime) {
    Words frames = {"--frames", "1,2000000000,3", "--fps", "1/1000"};
    EXPECT_EQ(render("a.####.png", frames).status, 1);
    frames.insert(frames.end(), {"--keep-going", "--progress", "json"});
    const flumo::test::Said result = render("b.####.png", frames);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, StartsWith("flumo: frame 2000000000: "));
    EXPECT_TRUE(std::filesystem::exists(in("b.0003.png")));
    const json last = json_lines(result.output).back();
    EXPECT_EQ(last["failed"], 1);
    EXPECT_EQ(last["done"], 2);
    EXPECT_EQ(last["percent"], 100);
    EXPECT_THAT(result.errors, HasSubstr("\nflumo: 2 of 3 frames, 1 failed, "));
}

TEST_F(Sequence, VideosAreWhatTheirEndingSays) {
    const struct {
        const char* name;
        const char* decoder;
        const char* expected;
        bool has_alpha;
    } cases[] = {
        {"v.mp4", "h264", "h264|64|36|yuv420p|30/1|", false},
        {"v.mov", "prores", "prores|64|36|yuva444p12le|30/1|", true},
        {"v.mkv", "ffv1", "ffv1|64|36|gbrap16le|30/1|", true},
        {"v.webm", "libvpx-vp9", "vp9|64|36|yuv420p|30/1|", true},
        {"v.gif", "gif", "gif|64|36|bgra|", true},
    };
    for (const auto& row : cases) {
        const flumo::test::Said result = render(row.name);
        ASSERT_EQ(result.status, 0) << row.name << result.errors;
        const auto probe =
            flumo::test::run_program({"ffprobe", "-v", "error", "-count_frames", "-show_entries",
                                      "stream=codec_name,width,height,pix_fmt,r_frame_rate,nb_read_frames",
                                      "-of", "compact=p=0:nk=1", in(row.name)});
        EXPECT_THAT(probe.output, AllOf(StartsWith(row.expected), EndsWith("|7\n")));
        const auto decoded =
            flumo::test::run_program({"ffmpeg", "-v", "error", "-c:v", row.decoder, "-i", in(row.name),
                                      "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "rgba", "-"});
        uint8_t least_alpha = 255;
        for (std::size_t i = 3; i < decoded.output.size(); i += 4)
            least_alpha = std::min(least_alpha, static_cast<uint8_t>(decoded.output[i]));
        EXPECT_EQ(least_alpha < 128, row.has_alpha) << row.name;
    }
    const auto lossless = flumo::test::run_program(
        {"ffmpeg", "-v", "error", "-i", in("v.mkv"), "-f", "rawvideo", "-pix_fmt", "rgba64le", "-"});
    EXPECT_EQ(lossless.output, render("-", {"--raw", "rgba64le"}).output);
}

TEST_F(Sequence, AVideoThatFfmpegRefusesLeavesNothing) {
    std::filesystem::create_directory(in("bin"));
    std::ofstream(in("bin/ffmpeg")) << "#!/bin/sh\necho 'Unknown encoder: abacus' >&2\nexit 3\n";
    std::filesystem::permissions(in("bin/ffmpeg"), std::filesystem::perms::owner_all);
    const std::string path = std::getenv("PATH");
    for (const std::string& search : {in("bin") + ":" + path, in("empty")}) {
        setenv("PATH", search.c_str(), 1);
        const flumo::test::Said result = render("v.mp4");
        setenv("PATH", path.c_str(), 1);
        EXPECT_EQ(result.status, 5);
        EXPECT_THAT(result.errors,
                    HasSubstr(search == in("empty") ? "installed" : "Unknown encoder: abacus"));
    }
    EXPECT_EQ(folder_.file_count(), 2u);
}

TEST_F(Sequence, AnExrRendersItselfAgain) {
    std::filesystem::create_directory(in("far"));
    const json listed = json::parse(flumo::test::run_program({FLUMO_PROGRAM, "controls", "--json"}).output);
    for (const char* type : {"half", "float"}) {
        ASSERT_EQ(render("a.exr", {"--frames", "-77", "--exr-type", type, "--fps", "24000/1001", "--set",
                                   "LinesVisible=on", "--set", "Scale=33.3"})
                      .status,
                  0);
        const auto again =
            flumo::test::run_program({FLUMO_PROGRAM, "render", "--from", in("a.exr"), "-o", in("far/b.exr")});
        ASSERT_EQ(again.status, 0) << again.errors;
        expect_same("a.exr", "far/b.exr");
        const media::FrameNotes notes = media::read_exr_notes(in("far/b.exr"));
        EXPECT_EQ(notes.exr_type,
                  std::string_view(type) == "half" ? media::ExrType::kHalf : media::ExrType::kFloat);
        EXPECT_EQ(notes.rate->num, 24000);
        EXPECT_EQ(notes.rate->den, 1001);
        const json controls = json::parse(notes.scene)["controls"];
        for (const json& control : listed) {
            const bool is_mark = control["kind"].get<std::string>().starts_with("group");
            EXPECT_EQ(controls.contains(control["id"]), !is_mark) << control;
        }
    }
}

TEST_F(Sequence, ToolsHearHowFarItCameAndFramesComeAlone) {
    const std::vector<json> lines = json_lines(render("a.#.png", {"--progress", "json"}).output);
    ASSERT_EQ(lines.size(), 9u);
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i]["done"], std::min<std::size_t>(i, 7)) << lines[i];
    EXPECT_EQ(lines.back()["event"], "done");
    EXPECT_EQ(lines[3]["total"], 7);
    EXPECT_TRUE(lines[0]["secondsLeft"].is_null() && lines[0]["framesPerSecond"].is_null());
    EXPECT_GT(lines[3]["seconds"], 0.0);
    EXPECT_GT(lines[3]["secondsLeft"], 0.0);
    const json early = json_lines(render("none/a.#.png", {"--progress", "json"}).output).back();
    EXPECT_EQ(early.size(), 2U) << "no percentage of a job that did not start: " << early;

    const flumo::test::Said openjd = render("a.#.png", {"--progress", "openjd"});
    EXPECT_THAT(openjd.output, HasSubstr("openjd_progress: 42.9\nopenjd_status: "));
    const flumo::test::Said failed = render("none/a.#.png", {"--progress", "openjd"});
    EXPECT_THAT(failed.output, StartsWith("openjd_fail: cannot write"));

    const flumo::test::Said stream = render("-", {"--progress", "json"});
    const std::string header = "YUV4MPEG2 W64 H36 F30:1 Ip A1:1 C444 XCOLORRANGE=LIMITED\n";
    EXPECT_EQ(stream.output.size(), header.size() + 7 * (6 + 64 * 36 * 3));
    EXPECT_THAT(stream.output, StartsWith(header + "FRAME\n"));
    EXPECT_THAT(stream.errors, StartsWith("{\"event\":\"start\""));
    EXPECT_EQ(render("a.#.png", {"--quiet"}).errors, "");
    EXPECT_EQ(render("a.#.png", {"--skip-existing"}).errors, "flumo: all 7 frames were there\n");
}

TEST_F(Sequence, ATerminalShowsABarAndItsColoursMayBeRefused) {
    // What a terminal of its own shows; the program `script` makes one.
    const auto shown = [](const std::string& variable, const std::string& arguments) {
        return flumo::test::run_program(
            {"env", "TERM=xterm", variable, "script", "-qec", FLUMO_PROGRAM " " + arguments, "/dev/null"});
    };
    const std::string shot = "render --scene " + in("shot.json") + " -o " + in("a.#.png");
    const struct {
        const char* variable;
        std::string start;
        std::string end;
    } cases[] = {
        {"NO_COLOR=", "\r[........................] 0 of 7 frames (0 %)",
         "\r[\x1b[32m########################\x1b[0m] 7 of 7 frames (100 %)"},
        {"NO_COLOR=1", "\r[........................] 0 of 7 frames (0 %)",
         "\r[########################] 7 of 7 frames (100 %)"},
        {"TERM=dumb", "flumo: frame ", "flumo: 7 of 7 frames (100 %)"},
    };
    for (const auto& row : cases) {
        const std::string output = shown(row.variable, shot).output;
        EXPECT_THAT(output, StartsWith(row.start)) << row.variable;
        EXPECT_THAT(output, HasSubstr(row.end)) << row.variable;
    }
    // Two encoders may finish in either order.
    EXPECT_THAT(render("a.#.png").errors, AllOf(HasSubstr("flumo: frame 0: " + in("a.0.png") + ", "),
                                                HasSubstr("\nflumo: 7 of 7 frames (100 %)")));
    const flumo::test::Said usage = shown("NO_COLOR=1", "render");
    EXPECT_EQ(usage.status, 2);
    EXPECT_THAT(usage.output, HasSubstr("\n  flumo render -o look.png "));
}

// Whatever the width, a bar stays on its line.
TEST(ProgressText, FitsTheTerminal) {
    job::ProgressState state;
    state.total = 1000;
    state.rendered = 421;
    state.failed = 3;
    state.elapsed = std::chrono::seconds(4000);
    for (std::size_t columns = 1; columns < 120; ++columns)
        EXPECT_LE(bar_text(state, {}, columns, false).size(), columns);
    EXPECT_EQ(bar_text(state, std::chrono::seconds(70), 59, false),
              "[##...] 421 of 1000 frames (42 %), 3 failed, 0.105 frames/s");
    EXPECT_EQ(bar_text(state, std::chrono::seconds(70), 119, false),
              "[##########..............] 421 of 1000 frames (42 %), 3 failed, 0.105 frames/s, 1:30:03 left");
    EXPECT_EQ(bar_text({.total = 1}, std::chrono::seconds(7), 60, false),
              "[........................] 0 of 1 frame (0 %), 0:07");
}

TEST_F(Sequence, ShellsAndPeopleAreHelped) {
    const std::string ask = "source <(" FLUMO_PROGRAM
                            " completion bash); COMP_WORDS=(flumo render --set Lines); COMP_CWORD=3; "
                            "compopt() { :; }; _flumo; echo \"${COMPREPLY[*]}\"; "
                            "COMP_WORDS=(flumo render --sk); COMP_CWORD=2; _flumo; echo \"${COMPREPLY[*]}\"";
    const auto bash = flumo::test::run_program({"bash", "-c", ask});
    EXPECT_THAT(bash.output, AllOf(HasSubstr("LinesCount= "), HasSubstr("\n--skip-existing\n")));
    const auto check = flumo::test::run_program({FLUMO_PROGRAM, "info", "--check"});
    EXPECT_EQ(check.status, 0);
    EXPECT_THAT(check.errors, HasSubstr("check passed"));
}

}  // namespace
}  // namespace flumo::cli
