#include "judge/judge.h"

#include <algorithm>
#include <cstring>
#include <sstream>

#include "judge/windows_module/property_list.h"

namespace flumo::judge {

namespace {

using nlohmann::json;

constexpr const char* kSetUp = "set-up";
constexpr const char* kEndOfProcess = "end-of-process";
/// After this many ended processes a case is not continued.
constexpr int kMostEndedProcesses = 3;
constexpr int kFirstSignal = 128;
constexpr size_t kLongestTail = 200;

std::string last_line(std::string text) {
    while (text.ends_with('\n'))
        text.pop_back();
    if (const size_t end = text.rfind('\n'); end != std::string::npos) text.erase(0, end + 1);
    return text.substr(0, kLongestTail);
}

std::string end_text(const ChildEnd& end) {
    if (end.timed_out) return "no return within the time";
    const std::string tail = last_line(end.errors);
    const std::string message = tail.empty() ? "" : ", after \"" + tail + "\"";
    if (end.status > kFirstSignal) {
        const int signal = end.status - kFirstSignal;
        const char* const name = sigdescr_np(signal);
        return "the process ended by signal " + std::to_string(signal) + ", " + (name ? name : "unknown") +
               message;
    }
    return "the process ended with status " + std::to_string(end.status) + message;
}

/// Reads the lines of one process.
class OutputReader {
  public:
    OutputReader(CaseResult& result, uint64_t seed) : result_(result), seed_(seed) {}

    void read(const std::string& output) {
        std::istringstream lines(output);
        for (std::string line; std::getline(lines, line);)
            take(json::parse(line, nullptr, false));
    }

    void judge_end(const ChildEnd& end) {
        if (done_ && end.status == 0) return;
        if (done_) step_ = kEndOfProcess;
        result_.findings.push_back(finding("the module to return", end_text(end)));
    }

    /// The step after which another process can continue.
    std::optional<std::string> broken_step() const {
        return done_ || step_ == kSetUp ? std::nullopt : std::optional(step_);
    }

  private:
    void take(const json& line) {
        if (!line.is_object()) return;
        if (line.contains("step")) {
            step_ = line["step"];
            ++result_.steps;
        }
        if (line.contains("skipped")) result_.skipped = line["skipped"];
        if (line.contains("done")) done_ = true;
        if (line.contains("finding")) add(line["finding"], false, result_.findings);
        if (line.contains("note")) add(line["note"], true, result_.notes);
    }

    /// Once for a step, however often it was seen there.
    void add(const json& reported, bool is_note, std::vector<Finding>& known) const {
        Finding found = finding(reported["expected"], reported["seen"]);
        found.is_note = is_note;
        if (std::ranges::find(known, found) == known.end()) known.push_back(std::move(found));
    }

    Finding finding(const std::string& expected, const std::string& seen) const {
        return {.level = result_.played->level,
                .test = std::string(result_.played->name),
                .step = step_,
                .seed = seed_,
                .expected = expected,
                .seen = seen};
    }

    CaseResult& result_;
    uint64_t seed_;
    std::string step_ = kSetUp;
    bool done_ = false;
};

}  // namespace

bool CaseResult::failed_in_set_up() const {
    return std::ranges::any_of(findings, [](const Finding& finding) { return finding.step == kSetUp; });
}

std::vector<const Case*> Judge::cases_up_to(int level) const {
    if (is_windows_module(subject_.module)) return {find_case("entry.resource")};
    std::vector<const Case*> cases;
    for (const Case& each : all_cases()) {
        if (each.level <= level) cases.push_back(&each);
    }
    return cases;
}

CaseResult Judge::play(const Case& played, StepChoice choice) const {
    CaseResult result{.played = &played};
    for (int ended = 0; ended < kMostEndedProcesses; ++ended) {
        OutputReader reader(result, subject_.seed);
        const ChildEnd end = launch_(played, choice);
        reader.read(end.output);
        reader.judge_end(end);
        const auto broken = reader.broken_step();
        // A step that did not return once is not repeated: it would cost the same time again.
        if (!broken || end.timed_out || choice.only) break;
        choice.after = broken;
    }
    return result;
}

bool lacks_step(const CaseResult& result, const StepChoice& choice) {
    const bool is_named = choice.only && *choice.only != kSetUp && *choice.only != kEndOfProcess;
    return is_named && result.steps == 0 && result.findings.empty() && result.skipped.empty();
}

std::optional<Place> find_place(const std::string& text) {
    const size_t colon = text.find(':');
    Place place{.played = find_case(text.substr(0, colon)), .choice = {}};
    if (!place.played) return std::nullopt;
    if (colon != std::string::npos) place.choice.only = text.substr(colon + 1);
    return place;
}

}  // namespace flumo::judge
