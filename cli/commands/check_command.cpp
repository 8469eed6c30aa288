#include "cli/commands/check_command.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <nlohmann/json.hpp>

#include "base/child_process.h"
#include "base/failure.h"
#include "base/text_list.h"
#include "cli/options/module_option.h"
#include "cli/terminal/stop_signal.h"
#include "host/module/module_file.h"
#include "job/session.h"
#include "judge/engine/case_context.h"
#include "judge/engine/expectation.h"
#include "judge/judge.h"

namespace flumo::cli {
namespace {

namespace fs = std::filesystem;
using judge::Case;
using judge::CaseResult;
using judge::ChildEnd;
using judge::Judge;
using judge::StepChoice;
using judge::Subject;
using nlohmann::ordered_json;

constexpr const char* kFooter = R"(
Each case runs in a process of its own: a module that crashes, hangs or ends the process is a finding.
Levels: 1 entry and registration, 2 controls and state, 3 frames, 4 events and drawing, 5 faults and threads.

Examples:
  flumo check                                       everything, on the module beside flumo
  flumo check Flumo.so --level 3 --json             the first three levels, for scripts
  flumo check Flumo.so --resource Flumo.aex         does the Windows module announce the same effect?
  flumo controls --json > controls.json
  flumo check Flumo.so --expect controls.json       are the controls still the same?
  flumo check Flumo.so --seed 7 --reproduce events.clicks:26-script-3

Exit status: 0 nothing found, 1 a finding, 2 usage, 3 a file cannot be read, 130 or 143 stopped by a signal.)";

/// A signal came: how the case ended then is not due to the module.
struct Stopped {
    ExitStatus status;
};

Subject subject_of(const CheckOptions& options) {
    const Subject subject{.module = job::module_path(options.module),
                          .expectation = options.expectation,
                          .resource = options.resource,
                          .seed = options.seed};
    try {
        for (const fs::path& path : {subject.module, subject.expectation, subject.resource}) {
            if (!path.empty()) host::require_file(path);
        }
        static_cast<void>(judge::read_expectation(subject.expectation));
    } catch (const std::exception& error) {
        throw input_failure(error.what());
    }
    return subject;
}

// The other end of launch(): this process plays a case and ends with it, or with its parent.
ExitStatus play_here(const CheckOptions& options, const StdoutGuard& output) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    const Case* played = judge::find_case(options.played);
    if (!played) throw usage_failure("no case " + in_quotes(options.played));
    StepChoice choice;
    if (!options.only.empty()) choice.only = options.only;
    if (!options.after.empty()) choice.after = options.after;
    judge::CaseContext context(subject_of(options), choice,
                               [&output](const std::string& line) { output.write(line + "\n"); });
    context.play(*played);
    return ExitStatus::kDone;
}

std::vector<std::string> command_line(const CheckOptions& options, const Subject& subject, const Case& played,
                                      const StepChoice& choice) {
    std::vector<std::string> words = {fs::read_symlink("/proc/self/exe").string(),
                                      "check",
                                      subject.module.string(),
                                      "--seed",
                                      std::to_string(subject.seed),
                                      "--play",
                                      std::string(played.name)};
    const auto add = [&words](const char* option, const std::string& value) {
        if (!value.empty()) words.insert(words.end(), {option, value});
    };
    add("--expect", options.expectation.string());
    add("--resource", options.resource.string());
    add("--only", choice.only.value_or(""));
    add("--after", choice.after.value_or(""));
    return words;
}

ChildEnd launch(const CheckOptions& options, const Subject& subject, const Case& played,
                const StepChoice& choice) {
    const std::chrono::milliseconds limit(static_cast<int64_t>(options.timeout * 1000));
    const auto result = run_child(command_line(options, subject, played, choice), limit);
    if (const auto stop = stop_requested()) throw Stopped{*stop};
    if (!result) throw Failure(FailureKind::kUnreadableInput, "this program cannot start itself");
    return {.output = {result->output.begin(), result->output.end()},
            .errors = result->errors,
            .status = result->status,
            .timed_out = result->timed_out};
}

std::string counted(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

class Report {
  public:
    Report(const CheckOptions& options, const Subject& subject, const StdoutGuard& output)
        : options_(options), subject_(subject), output_(output) {}

    void add(const CaseResult& result) {
        steps_ += static_cast<std::size_t>(result.steps);
        skipped_ += !result.skipped.empty();
        const char* status = result.skipped.empty() ? "passed" : "skipped";
        if (!result.findings.empty()) status = "findings";
        cases_json_.push_back({{"case", result.played->name},
                               {"level", result.played->level},
                               {"status", status},
                               {"steps", result.steps}});
        if (!result.skipped.empty()) cases_json_.back()["why"] = result.skipped;
        add_all(result.findings, findings_json_);
        add_all(result.notes, notes_json_);
    }

    /// `planned`: how many cases there would have been.
    ExitStatus end(std::size_t planned) const {
        const std::size_t not_played = planned - cases_json_.size();
        if (options_.json) {
            const ordered_json all = {{"module", subject_.module.string()},
                                      {"seed", subject_.seed},
                                      {"cases", cases_json_},
                                      {"notPlayed", not_played},
                                      {"findings", findings_json_},
                                      {"notes", notes_json_}};
            output_.write(all.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n");
        } else {
            output_.write(summary(not_played));
        }
        return findings_json_.empty() ? ExitStatus::kDone : ExitStatus::kFrameFailed;
    }

  private:
    std::string summary(std::size_t not_played) const {
        std::string text = counted(cases_json_.size(), "case") + ", " + std::to_string(skipped_) +
                           " skipped, " + counted(steps_, "step") + ": " +
                           counted(findings_json_.size(), "finding") + ", " +
                           counted(notes_json_.size(), "note");
        if (!notes_json_.empty() && !options_.notes) text += " (--notes lists them)";
        if (not_played > 0) text += "; " + counted(not_played, "case") + " not played after that";
        return text + "\n";
    }

    void add_all(const std::vector<judge::Finding>& found, ordered_json& array) {
        for (const judge::Finding& finding : found) {
            array.push_back(json_of(finding, subject_));
            if (!options_.json && (options_.notes || !finding.is_note))
                output_.write(line_of(finding, subject_));
        }
    }

    const CheckOptions& options_;
    const Subject& subject_;
    const StdoutGuard& output_;
    ordered_json cases_json_ = ordered_json::array();
    ordered_json findings_json_ = ordered_json::array();
    ordered_json notes_json_ = ordered_json::array();
    std::size_t steps_ = 0;
    int skipped_ = 0;
};

// What cannot be loaded cannot be played; cases above a level in which the module could not even be set up
// have nothing to work with.
ExitStatus play_all(const Judge& judge, int level, Report& report) {
    const std::vector<const Case*> planned = judge.cases_up_to(level);
    int last_level = level;
    for (const Case* each : planned) {
        if (each->level > last_level) break;
        const CaseResult result = judge.play(*each, {});
        report.add(result);
        if (!result.failed_in_set_up()) continue;
        if (each == planned.front()) break;
        last_level = each->level;
    }
    return report.end(planned.size());
}

ExitStatus play_again(const Judge& judge, const std::string& text, Report& report) {
    const auto place = judge::find_place(text);
    if (!place) throw usage_failure("no case " + in_quotes(text) + "; --list names them all");
    const CaseResult result = judge.play(*place->played, place->choice);
    if (judge::lacks_step(result, place->choice))
        throw usage_failure("no step " + in_quotes(*place->choice.only) + " in case " +
                            in_quotes(std::string(place->played->name)));
    report.add(result);
    return report.end(1);
}

ExitStatus list_cases(const StdoutGuard& output) {
    std::string text;
    for (const Case& each : judge::all_cases()) {
        const std::string name(each.name);
        text += std::to_string(each.level) + "  " + name + std::string(26 - name.size(), ' ') +
                std::string(each.about) + "\n";
    }
    output.write(text);
    return ExitStatus::kDone;
}

}  // namespace

void add_check_options(CLI::App& command, CheckOptions& options) {
    command.footer(kFooter);
    const auto set_module = [&options](const std::string& text) { options.module = parse_module(text); };
    command.add_option_function<std::string>("MODULE", set_module, "The effect to judge")
        ->default_str("Flumo.so beside flumo, then in ../lib/flumo");
    command.add_option("--level", options.level, "The highest level")
        ->type_name("1..5")
        ->check(CLI::Range(1, judge::kHighestLevel).description(""))
        ->default_str("5");
    command.add_option("--seed", options.seed, "What is left to chance follows from it")
        ->type_name("N")
        ->default_str("1");
    command
        .add_option("--reproduce", options.reproduce,
                    "Play one case, or one step of it, as a finding names it")
        ->type_name("CASE[:STEP]");
    command.add_option("--timeout", options.timeout, "How long a case may take")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.01, 86400.0).description(""))
        ->default_str("120");
    command
        .add_option("--expect", options.expectation,
                    "What must be registered: JSON of `flumo controls` or `flumo info`")
        ->type_name("FILE");
    command
        .add_option("--resource", options.resource,
                    "A Windows module, or a property list alone, that must announce the same")
        ->type_name("FILE");
    command.add_flag("--json", options.json, "Write JSON");
    command.add_flag("--notes", options.notes, "Also report what breaks no rule");
    command.add_flag("--list", options.list, "List the cases");
    command.add_option("--play", options.played)->group("");
    command.add_option("--only", options.only)->group("");
    command.add_option("--after", options.after)->group("");
}

ExitStatus check(const CheckOptions& options, const StdoutGuard& output) {
    if (options.list) return list_cases(output);
    if (!options.played.empty()) return play_here(options, output);
    const Subject subject = subject_of(options);
    const Judge judge(subject, [&](const Case& played, const StepChoice& choice) {
        return launch(options, subject, played, choice);
    });
    Report report(options, subject, output);
    try {
        return options.reproduce.empty() ? play_all(judge, options.level, report)
                                         : play_again(judge, options.reproduce, report);
    } catch (const Stopped& stopped) {
        return stopped.status;
    }
}

}  // namespace flumo::cli
