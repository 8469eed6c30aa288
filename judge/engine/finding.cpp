#include "judge/engine/finding.h"

#include <algorithm>

namespace flumo::judge {

namespace {

/// Quoted for a shell.
std::string quoted(const std::string& text) {
    const auto plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("-_./:@+").find(c) != std::string_view::npos;
    };
    if (!text.empty() && std::ranges::all_of(text, plain)) return text;
    std::string safe = "'";
    for (const char c : text)
        safe += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return safe + "'";
}

std::string on_one_line(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

/// What --reproduce takes.
std::string place_of(const Finding& finding) {
    return finding.test + ":" + finding.step;
}

/// The command line that plays the finding's step alone.
std::string how_to_reproduce(const Finding& finding, const Subject& subject) {
    std::string command = "flumo check " + quoted(subject.module.string());
    if (!subject.expectation.empty()) command += " --expect " + quoted(subject.expectation.string());
    if (!subject.resource.empty()) command += " --resource " + quoted(subject.resource.string());
    return command + " --seed " + std::to_string(finding.seed) + " --reproduce " + quoted(place_of(finding));
}

}  // namespace

std::string line_of(const Finding& finding, const Subject& subject) {
    return std::string(finding.is_note ? "note" : "finding") + ": level " + std::to_string(finding.level) +
           ", " + place_of(finding) + ", seed " + std::to_string(finding.seed) + ": expected " +
           on_one_line(finding.expected) + "; saw " + on_one_line(finding.seen) + " [" +
           how_to_reproduce(finding, subject) + "]\n";
}

nlohmann::ordered_json json_of(const Finding& finding, const Subject& subject) {
    return {{"level", finding.level},
            {"case", finding.test},
            {"step", finding.step},
            {"seed", finding.seed},
            {"expected", finding.expected},
            {"seen", finding.seen},
            {"reproduce", how_to_reproduce(finding, subject)}};
}

}  // namespace flumo::judge
