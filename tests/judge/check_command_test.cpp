// `flumo check`: expectations, resources, statuses and output for people.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "effect/entry/pipl.h"
#include "judge/cases/case_table.h"
#include "tests/judge/flumo_check.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::judge::test {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class CheckCommand : public testing::Test {
  protected:
    std::string write(const std::string& name, std::string_view text) {
        std::ofstream(folder_ / name, std::ios::binary) << text;
        return folder_ / name;
    }

    flumo::test::ScratchFolder folder_;
};

/// The program's output to the end of a shell's line; `before` stands before its name.
std::string output_of(const std::string& command, const std::string& before = "") {
    return flumo::test::run_program({"sh", "-c", before + FLUMO_PROGRAM " " + command}).output;
}

TEST_F(CheckCommand, HoldsAnEffectToWhatIsExpected) {
    const auto findings = [&](int flags, int version, int disk_id, int limit) {
        std::ostringstream expected;
        expected << R"({"outFlags": {"value": )" << flags << R"(, "names": []}, "version": )" << version
                 << R"(, "controls": [{"diskId": 1, "kind": "group start"},
            {"diskId": )"
                 << disk_id << R"(, "name": "Amount", "kind": "float slider", "slider": [0, )" << limit
                 << R"(], "range": [0, 100], "default": 50},
            {"diskId": 3}, {"diskId": 4, "default": "shade 0.250000"}, {"diskId": 5, "name": ""}]})";
        const std::string path = write("expected.json", expected.str());
        return flumo_check({broken_module("Sound"), "--level", "2", "--expect", path}).findings();
    };
    constexpr int kVersion = PF_VERSION(1, 0, 0, PF_Stage_RELEASE, 0);
    EXPECT_EQ(findings(33587220, kVersion, 2, 100), "");
    EXPECT_EQ(findings(33587216, 1, 12, 101),
              "entry.expected: outFlags 33587216; 33587220\n"
              "entry.expected: version 1; 525824\n"
              "params.expected: for control 2 diskId 12; 2\n"
              "params.expected: for control 2 slider [0,101]; [0.0,100.0]\n");
}

TEST_F(CheckCommand, AcceptsWhatFlumoWrites) {
    const json controls = json::parse(output_of("controls --json"));
    json info = json::parse(output_of("info --json"));
    info["controls"] = controls;
    for (const json& expected : {controls, info}) {
        const std::string path = write("expected.json", expected.dump());
        EXPECT_EQ(flumo_check({FLUMO_MODULE, "--level", "2", "--expect", path}).findings(), "");
    }
}

TEST_F(CheckCommand, ComparesTheEffectWithThePropertyList) {
    constexpr auto kList = ComposePipl();
    std::string list(kList.begin(), kList.end());
    const std::string ours = write("flumo.pipl", list);
    const Checked same = flumo_check({FLUMO_MODULE, "--level", "1", "--resource", ours});
    EXPECT_EQ(same.status, 0) << same.findings();

    // The lowest bit of the flags, after the key that lies byte-reversed.
    list[list.find("OLGe") + 12] = static_cast<char>(list[list.find("OLGe") + 12] ^ 1);
    const Checked other =
        flumo_check({FLUMO_MODULE, "--level", "1", "--resource", write("other.pipl", list)});
    EXPECT_THAT(other.findings(),
                AllOf(StartsWith("entry.resource: in the list, as global set-up says, flags"),
                      HasSubstr("33588336; 33588337")));
    const Checked cut =
        flumo_check({FLUMO_MODULE, "--level", "1", "--resource", write("cut.pipl", list.substr(0, 100))});
    EXPECT_THAT(cut.each("case"), AllOf(Not(IsEmpty()), Each("entry.resource")));
}

TEST_F(CheckCommand, ReportsFilesThatAreNoModules) {
    const std::string text = write("text.so", "no module");
    const Checked no_module = flumo_check({text, "--level", "5"});
    EXPECT_EQ(no_module.status, 1);
    EXPECT_THAT(no_module.findings(), StartsWith("entry.load: a module with both exports; " + text));
    // Nothing can be played where nothing could be loaded.
    EXPECT_EQ(no_module.report["cases"].size(), 1u);
    EXPECT_EQ(no_module.report["notPlayed"], all_cases().size() - 1);
    EXPECT_EQ(flumo_check({text + "x"}).status, 3);
    EXPECT_EQ(flumo_check({broken_module("Sound"), "--resource", text + "x"}).status, 3);
}

TEST_F(CheckCommand, ReportsAModuleThatIsCutShort) {
    const std::string cut = write("cut.so", "");
    std::filesystem::copy_file(FLUMO_MODULE, cut, std::filesystem::copy_options::overwrite_existing);
    for (const std::uintmax_t size : {100000, 70}) {
        std::filesystem::resize_file(cut, size);
        EXPECT_THAT(flumo_check({cut}).findings(),
                    HasSubstr("entry.load: a module with both exports; " + cut));
        EXPECT_THAT(output_of("render -o /dev/null --module " + cut + " 2>&1; echo $?"),
                    AllOf(HasSubstr("cut short"), EndsWith("\n3\n")));
    }
    EXPECT_THAT(output_of("check / 2>&1; echo $?"), AllOf(HasSubstr("a directory"), EndsWith("\n3\n")));
}

TEST_F(CheckCommand, RefusesExpectationsThatNothingIsComparedWith) {
    for (const auto& [text, message] :
         {std::pair("no JSON", "expected a JSON object or array"), std::pair("{}", "expects nothing"),
          std::pair("[]", "expects nothing"), std::pair(R"({"nmae": "Small"})", "unknown key \"nmae\""),
          std::pair(R"([{"diskID": 1}])", "control 1: unknown key \"diskID\"")}) {
        const std::string path = write("expected.json", text);
        EXPECT_THAT(output_of("check " + broken_module("Sound") + " --expect " + path + " 2>&1; echo $?"),
                    AllOf(HasSubstr(path + ": " + message), EndsWith("\n3\n")));
    }
}

// An unset variable of a shell gives an empty text, which must not stand for our own module.
TEST_F(CheckCommand, AnEmptyModuleIsAUsageError) {
    for (const char* command : {"check ''", "controls --module ''", "info --module ''",
                                "panel Gradient --module ''", "render -o /dev/null --module ''"})
        EXPECT_THAT(output_of(std::string(command) + " 2>&1; echo $?"), EndsWith("expected a file\n2\n"))
            << command;
}

// Names in the guide and in the help text are those of our module.
TEST_F(CheckCommand, PlaysTheStepsThatItsGuideNames) {
    std::ifstream guide(CHECKING_GUIDE);
    const std::string text = std::string(std::istreambuf_iterator(guide), {}) + output_of("check --help");
    const std::regex named("flumo check Flumo.so --seed (\\d+) --reproduce (\\S+)");
    int count = 0;
    for (std::sregex_iterator it(text.begin(), text.end(), named), end; it != end; ++it, ++count)
        EXPECT_EQ(flumo_check({FLUMO_MODULE, "--seed", (*it)[1], "--reproduce", (*it)[2]}).status, 0)
            << it->str();
    EXPECT_GE(count, 3);
}

TEST_F(CheckCommand, RefusesOptionsThatMakeNoSense) {
    const std::string module = broken_module("Sound");
    for (const auto& [option, value] :
         {std::pair("--level", "6"), std::pair("--level", "0"), std::pair("--timeout", "0"),
          std::pair("--reproduce", "entry.lode"), std::pair("--seed", "x"), std::pair("--play", "entry.lode"),
          std::pair("--reproduce", "entry.about:texts")}) {
        EXPECT_EQ(flumo_check({module, option, value}).status, 2) << option;
    }
}

TEST_F(CheckCommand, WritesOneLineForEachFinding) {
    const std::string text =
        output_of("check " + broken_module("SaysNothingAbout") + " --level 1 --seed 5; echo $?");
    EXPECT_THAT(text,
                StartsWith("finding: level 1, entry.about:text, seed 5: expected a text about the effect; "
                           "saw none [flumo check " +
                           broken_module("SaysNothingAbout") + " --seed 5 --reproduce entry.about:text]\n"));
    EXPECT_THAT(text, HasSubstr("8 cases, 2 skipped"));
    EXPECT_TRUE(text.ends_with(": 1 finding, 0 notes\n1\n")) << text;
    // Both frames of this step are written past their rows.
    const Checked twice =
        flumo_check({broken_module("WritesPastRow"), "--reproduce", "frames.sizes:1x1@8+0"});
    EXPECT_THAT(twice.each("step"), ElementsAre("1x1@8+0"));
}

// A signal that ends the process with the module in it is no finding.
TEST_F(CheckCommand, EndsWithTheSignalThatStopsIt) {
    const std::string hanging = "check " + broken_module("Hangs") + " --reproduce frames.sizes; echo $?";
    EXPECT_EQ(output_of(hanging, "timeout --preserve-status -s INT 1 "), "130\n");
    EXPECT_EQ(output_of(hanging, "timeout --preserve-status -s TERM 1 "), "143\n");
}

// What is left to chance follows from the seed, and from nothing else.
TEST_F(CheckCommand, RepeatsItselfBySeed) {
    const std::string module = broken_module("CrashesOnExtremes");
    const auto looks = [&](const char* seed) {
        return flumo_check({module, "--seed", seed, "--reproduce", "frames.looks"}).each("step");
    };
    EXPECT_EQ(looks("11"), looks("11"));
    EXPECT_NE(looks("11"), looks("12"));
}

}  // namespace
}  // namespace flumo::judge::test
