// The judge finds each fault of the small effect in the case made for it, and no fault in sound effects.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

#include "judge/cases/case_table.h"
#include "tests/judge/flumo_check.h"

namespace flumo::judge::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Broken {
    const char* fault;
    /// The case that is made to find it.
    const char* found_by;
    /// Words of that finding.
    const char* words;
    /// The other cases that find it, a regular expression.
    const char* also = "";
};

void PrintTo(const Broken& broken, std::ostream* out) {
    *out << broken.fault;
}

constexpr const char* kWithFrames =
    "frames.*|events.(clicks|panel-life|two-panels)|faults.frames.*|threads.*";

constexpr const char* kWithCopies =
    "sequence.resetup|frames.render-copies|threads.render-engine|faults.sequence";

constexpr Broken kBroken[] = {
    {"HidesItsName", "entry.registration", "a match name of 1 to 31 characters; \"\""},
    {"SaysNothingAbout", "entry.about", "a text about the effect; none"},
    {"AnswersUnknownCommands", "entry.unknown-commands", "no error; 512"},
    {"ThrowsOutOfEntry", "entry.unknown-commands", "an exception left the entry point"},
    {"KeepsGlobalData", "entry.set-up-and-down", "at set-down; 3 handle(s) not given back", ".*"},
    {"KeepsGlobalData", "entry.about", "everything given back; 1 handle(s)", ".*"},
    {"ClaimsFloatsAlone", "entry.global-setup", "floats without it"},
    {"DuplicateDiskId", "params.controls", "\"Picture\"; disk id 2, as control 2 has"},
    {"UnbalancedGroups", "params.controls", "2 more starts than ends"},
    {"DefaultOutOfRange", "params.controls", "control 2 \"Amount\"; 150"},
    {"HidesItsInterface", "params.custom-ui", "PF_OutFlag_CUSTOM_UI; not set"},
    {"FreesLiveSequence", "sequence.life", "the live data left alone; it is gone", kWithCopies},
    {"KeepsSequence", "sequence.life", "; 2 handle(s) not given back", kWithCopies},
    {"DisposesOfResetData", "sequence.resetup", "left to the host; it is disposed of"},
    {"KeepsFilledSlot", "values.filled-slot", "that an empty slot gets; another"},
    {"ChangesWhenPrinted", "values.project", "after comparing and printing; others", "faults.values"},
    {"DisposesOfTheNewest", "values.disposal-order", "when another is disposed of; other",
     "values.*|events.clicks|faults.values|hostile.stored-values"},
    {"TrustsExtra", "commands.optional", "the process ended by signal 11"},
    {"ShallowCopy", "values.copies", "outlives its original unchanged; other contents", ".*"},
    {"FlattensTooMuch", "values.stored", "than announced, 8; writing after them", ".*"},
    {"InterpolatesWrongly", "values.interpolation", "the left value at 0; another"},
    {"ComparesOneWay", "values.comparison", "both orders of two values; two answers"},
    {"PrintSizeWrong", "values.text", "the announced 23 bytes; an end after 14 characters"},
    {"TakesAnySelector", "values.refusals", "an error for selector 11; none"},
    {"LeaksHandle", "frames.sizes", "; 2 handle(s) not given back", kWithFrames},
    {"KeepsLock", "frames.sizes", "; 2 lock(s) of handles not given back", kWithFrames},
    {"KeepsParam", "frames.sizes", "; 2 control(s) checked out not given back", kWithFrames},
    {"KeepsLayer", "frames.sizes", "; 2 layer(s) checked out not given back", kWithFrames},
    {"KeepsSuite", "frames.sizes", "; 2 acquisition(s) of PF World Suite 2 not given back", ".*"},
    {"WritesPastRow", "frames.sizes", "changed bytes after a row", kWithFrames},
    {"UntouchedWorld", "frames.sizes", "35 of 35 pixels untouched", kWithFrames},
    {"SkipsLastRow", "frames.sizes", "7 of 35 pixels untouched", kWithFrames},
    {"WritesInput", "frames.sizes", "the input layer left alone; changed bytes", kWithFrames},
    {"Crashes", "frames.sizes", "the process ended by signal 6", kWithFrames},
    {"Exits", "frames.sizes", "the process ended with status 0", kWithFrames},
    {"Hangs", "frames.sizes", "no return within the time", ".*"},
    {"WrongStride", "frames.row-padding", "the frame of rows without padding; ", "frames.row-order"},
    {"CrashesOnParts", "frames.partial", "the process ended by signal", "frames.(input-layer|empty-result)"},
    {"RemembersFrames", "frames.repeat", "the frame of the first time; 336 of 336 pixels", kWithFrames},
    {"RemembersFrames", "frames.sizes", "the same frame each time; 35 of 35 pixels", kWithFrames},
    {"RemembersFrames", "faults.frames-8", "the right result the next time; another", kWithFrames},
    {"CrashesOnExtremes", "frames.looks", "the process ended by signal", "events.clicks"},
    {"DropsContext", "frames.callers-context", "another context or interface", "faults.frames.*"},
    {"DropsContext", "faults.frames-8", "OpenGL context kept; another", "frames.*|faults.*"},
    {"ChangesInterface", "frames.callers-context", "another context or interface", "faults.frames.*"},
    {"SwallowsAbort", "frames.abort", "the host's own number, 517; 4"},
    {"CrashesOnGrownLayers", "frames.input-layer", "the process ended by signal"},
    {"WritesInputWidth", "frames.output-world", "changed bytes after a row"},
    {"RefusesNegativeRows", "frames.row-order", "PF_Cmd_SMART_RENDER failed with 516"},
    {"RefusesUnknownFlags", "frames.world-flags", "PF_Cmd_SMART_RENDER failed with 516"},
    {"SkipsSmallRequests", "frames.empty-result", "only where the frame is the input; 12 other pixels"},
    {"KeepsJunkRects", "frames.pre-render-output", "announced into a cleared record; others"},
    {"HidesTimeDependence", "frames.time", "NON_PARAM_VARY is not set; "},
    {"CountsTimeScale", "frames.time", "counted in 1/30 seconds; "},
    {"RefusesParams", "frames.other-hosts", "PF_Cmd_SMART_RENDER failed with 516"},
    {"CountsControls", "frames.other-hosts", "the process ended by signal"},
    {"RefusesResetData", "frames.render-copies", "PF_Cmd_SMART_RENDER failed with 512",
     "threads.render-engine"},
    {"NeedsSequenceData", "frames.render-copies", "the process ended by signal 11"},
    {"StopsAtSaves", "frames.render-copies", "before the save; ", "threads.render-engine"},
    {"KnowsOnePanel", "events.two-panels", "with one panel; another"},
    {"EndsDragOnce", "events.panel-life", "the process ended by signal"},
    {"KeepsBrush", "events.draw", "drawing object(s) not given back",
     "events.(clicks|panel-life|two-panels)|faults.events"},
    {"DrawsOutside", "events.draw", "nothing outside of the frame; paint outside"},
    {"CutsStoredValues", "events.clicks", "an edited value that is stored equal; another",
     "events.two-panels"},
    {"TakesForeignEvents", "events.others", "no error; 513", "events.(panel-life|two-panels)"},
    {"ReadsTheLastBytes", "hostile.stored-values", "without the bytes after its end; another"},
    {"TrustsStoredBytes", "hostile.stored-values", "the process ended by signal"},
    {"TrustsBasicSuite", "hostile.missing-suites", "the process ended "},
    {"DisposesTwice", "faults.set-up", "disposed of a handle that does not live", "faults.*"},
    {"TrustsHandles", "faults.set-up", "the process ended ", "faults.sequence|faults.values"},
    {"KeepsHalfASequence", "faults.sequence", "success and another result"},
    {"KeepsHalfAValue", "faults.values", "the process ended ", "faults.set-up|faults.sequence"},
    {"SwallowsDrawingErrors", "faults.events", "success and another result"},
    {"SwallowsErrors", "faults.frames-8", "success and another result", "faults.frames.*"},
    {"FailsAfterErrors", "faults.frames-16", "success the next time; PF_Cmd_SMART_RENDER failed with 4",
     "faults.frames.*|frames.abort"},
    {"KeepsParamOnError", "faults.frames-32", "1 control(s) checked out not given back", "faults.frames.*"},
    {"SharedScratch", "threads.frames", "the frames of a single thread; another ", "threads.*"},
    {"SharedScratch", "threads.render-engine", "the frames of a single thread; another ", "threads.*"},
    {"OneThreadEver", "threads.generations", "the process ended by signal", "threads.(frames|render-engine)"},
};

class BrokenModule : public testing::TestWithParam<Broken> {};

TEST_P(BrokenModule, IsFound) {
    const Broken& broken = GetParam();
    const std::string module = broken_module(broken.fault);
    const std::string timeout = broken.fault == std::string("Hangs") ? "2" : "60";
    const Checked checked = flumo_check({module, "--timeout", timeout});
    EXPECT_EQ(checked.status, 1) << checked.errors;
    // Nothing that the module does ends the judge itself.
    EXPECT_EQ(checked.report["cases"].size() + checked.report["notPlayed"].get<size_t>(), all_cases().size());
    const auto& findings = checked.report["findings"];
    const auto found = std::ranges::find_if(findings, [&](const auto& finding) {
        const std::string text = finding["expected"].template get<std::string>() + "; " +
                                 finding["seen"].template get<std::string>();
        return finding["case"] == broken.found_by && text.find(broken.words) != std::string::npos;
    });
    ASSERT_TRUE(found != findings.end()) << checked.findings();
    for (const std::string& name : checked.each("case"))
        EXPECT_TRUE(name == broken.found_by || std::regex_match(name, std::regex(broken.also))) << name;
    EXPECT_THAT(checked.findings(), Not(HasSubstr("too many given back")));

    // The finding's place alone finds it again.
    const std::string place = (*found)["case"].get<std::string>() + ":" + (*found)["step"].get<std::string>();
    const Checked again = flumo_check({module, "--timeout", timeout, "--reproduce", place});
    EXPECT_EQ(again.status, 1) << again.errors;
    EXPECT_THAT(again.findings(), HasSubstr(broken.words)) << place;
    EXPECT_EQ(again.report["cases"].size(), 1u);
    EXPECT_LE(again.report["cases"][0]["steps"], 1);
}

INSTANTIATE_TEST_SUITE_P(Small, BrokenModule, testing::ValuesIn(kBroken), [](const auto& info) {
    std::string name = info.param.fault;
    name.append("_").append(std::regex_replace(info.param.found_by, std::regex("[.-]"), "_"));
    return name;
});

TEST(BrokenModules, ContinueAfterTheStepThatEndedTheProcess) {
    const Checked checked = flumo_check({broken_module("Crashes"), "--reproduce", "frames.sizes"});
    EXPECT_THAT(checked.each("step"), ElementsAre("1x1@8+0", "1x1@8+1", "1x1@8+7"));
}

// A case that never found anything would prove nothing by passing. The missing ones take files that are no
// modules, property lists and expectations.
TEST(BrokenModules, ServeEveryCase) {
    std::set<std::string> serving = {"entry.load", "entry.resource", "entry.expected", "params.expected"};
    for (const Broken& broken : kBroken)
        serving.insert(broken.found_by);
    for (const Case& each : all_cases())
        EXPECT_THAT(serving, Contains(each.name));
}

TEST(SoundModule, PassesEveryLevel) {
    for (const std::string& module : {broken_module("Sound"), std::string(FLUMO_MODULE)}) {
        const Checked checked = flumo_check({module, "--level", "5", "--seed", "3"});
        EXPECT_EQ(checked.status, 0) << checked.errors;
        EXPECT_THAT(checked.findings(), IsEmpty());
        EXPECT_EQ(checked.report["cases"].size(), all_cases().size());
        for (const auto& each : checked.report["cases"])
            EXPECT_TRUE(each["status"] == "passed" || each["why"] != "") << each;
    }
}

}  // namespace
}  // namespace flumo::judge::test
