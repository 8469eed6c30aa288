#include "cli/terminal/progress_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace flumo::cli {
namespace {

constexpr std::size_t kLongestBar = 24;
constexpr std::size_t kShortestBar = 4;

std::string formatted(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string frames_word(std::size_t count) {
    return count == 1 ? " frame" : " frames";
}

std::string count_text(const job::ProgressState& state) {
    return std::to_string(state.done()) + " of " + std::to_string(state.total) + frames_word(state.total);
}

std::string percent_text(const job::ProgressState& state) {
    return " (" + formatted("%.0f", std::floor(state.percent())) + " %)";
}

// The most important part first.
std::vector<std::string> parts_of(const job::ProgressState& state, std::chrono::duration<double> waited) {
    std::vector<std::string> parts = {count_text(state) + percent_text(state)};
    if (state.failed > 0) parts.push_back(std::to_string(state.failed) + " failed");
    if (const auto rate = state.rate()) parts.push_back(formatted("%.3g", *rate) + " frames/s");
    if (const auto left = state.seconds_left()) {
        parts.push_back(clock_text(std::max(*left - waited.count(), 0.0)) + " left");
    } else {
        parts.push_back(clock_text((state.elapsed + waited).count()));
    }
    return parts;
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

std::string bar_of(double share, std::size_t width, bool colours) {
    const auto filled = static_cast<std::size_t>(share * static_cast<double>(width));
    const std::string full(filled, '#');
    return "[" + (colours && filled > 0 ? "\x1b[32m" + full + "\x1b[0m" : full) +
           std::string(width - filled, '.') + "] ";
}

}  // namespace

std::string clock_text(double seconds) {
    const auto all = static_cast<long>(std::min(std::ceil(seconds), 359'999.0));
    char text[32];
    if (all >= 3600) {
        std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", all / 3600, all / 60 % 60, all % 60);
    } else {
        std::snprintf(text, sizeof text, "%ld:%02ld", all / 60, all % 60);
    }
    return text;
}

std::string progress_text(const job::ProgressState& state, std::chrono::duration<double> waited) {
    return joined(parts_of(state, waited));
}

std::string bar_text(const job::ProgressState& state, std::chrono::duration<double> waited,
                     std::size_t columns, bool colours) {
    std::vector<std::string> parts = parts_of(state, waited);
    while (parts.size() > 1 && joined(parts).size() > columns)
        parts.pop_back();
    const std::string text = joined(parts).substr(0, columns);
    // Two brackets and a space.
    const std::size_t room = columns - text.size();
    if (room < kShortestBar + 3) return text;
    return bar_of(state.percent() / 100, std::min(room - 3, kLongestBar), colours) + text;
}

std::string summary_text(const job::ProgressState& state) {
    if (state.skipped == state.total)
        return state.total == 1
                   ? "the frame was there"
                   : "all " + std::to_string(state.total) + frames_word(state.total) + " were there";
    std::vector<std::string> parts = {count_text(state) + (state.failed > 0 ? "" : percent_text(state))};
    if (state.failed > 0) parts.push_back(std::to_string(state.failed) + " failed");
    if (state.skipped > 0) parts.push_back(std::to_string(state.skipped) + " of them were there");
    parts.push_back(clock_text(state.elapsed.count()));
    return joined(parts);
}

std::string frame_text(const job::FrameEvent& event, const job::ProgressState& state) {
    std::string text = "frame " + std::to_string(event.frame) + ": ";
    if (!event.file.empty() && event.file != "-") text += event.file.string() + ", ";
    text += formatted("%.3g", event.seconds) + " s (" + std::to_string(state.finished()) + " of " +
            std::to_string(state.total);
    const auto left = state.seconds_left();
    if (left && state.finished() < state.total) text += ", " + clock_text(*left) + " left";
    return text + ")";
}

}  // namespace flumo::cli
