#include "cli/terminal/progress_display.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "base/text_list.h"

namespace flumo::cli {
namespace {

using nlohmann::ordered_json;
using std::chrono::steady_clock;

constexpr auto kBarPause = std::chrono::milliseconds(100);
constexpr auto kLinePause = std::chrono::seconds(5);
constexpr size_t kBarWidth = 24;

std::string formatted(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

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

std::string bar_text(const job::ProgressState& state, bool colours) {
    const auto filled = static_cast<size_t>(state.percent() / 100 * kBarWidth);
    const std::string full(filled, '#');
    return "\r[" + (colours ? "\x1b[32m" + full + "\x1b[0m" : full) + std::string(kBarWidth - filled, '.') +
           "] " + progress_text(state) + "\x1b[K";
}

ordered_json state_json(std::string_view event, const job::ProgressState& state) {
    return {{"event", event},
            {"done", state.done()},
            {"total", state.total},
            {"rendered", state.rendered},
            {"skipped", state.skipped},
            {"failed", state.failed},
            {"percent", std::round(state.percent() * 100) / 100},
            {"framesPerSecond", state.rate()},
            {"secondsElapsed", state.elapsed.count()},
            {"secondsLeft", state.seconds_left()}};
}

ordered_json event_json(const job::FrameEvent& event, const job::ProgressState& state) {
    const bool failed = event.result == job::FrameResult::kFailed;
    const char* const name = failed                                       ? "failed"
                             : event.result == job::FrameResult::kSkipped ? "skipped"
                                                                          : "frame";
    ordered_json object = state_json(name, state);
    object["frame"] = event.frame;
    object[failed ? "message" : "file"] = failed ? event.why : event.file.string();
    return object;
}

// Whatever bytes a file name has, a line of JSON is UTF-8.
std::string as_line(const ordered_json& object) {
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

std::string on_one_line(std::string text) {
    for (char& c : text) {
        if (c == '\n' || c == '\r') c = ' ';
    }
    return text;
}

}  // namespace

ProgressForm parse_progress_form(std::string_view text) {
    constexpr std::pair<std::string_view, ProgressForm> kWords[] = {{"bar", ProgressForm::kBar},
                                                                    {"lines", ProgressForm::kLines},
                                                                    {"json", ProgressForm::kJson},
                                                                    {"openjd", ProgressForm::kOpenJd},
                                                                    {"none", ProgressForm::kNone}};
    for (const auto& [word, form] : kWords) {
        if (text == word) return form;
    }
    throw usage_failure("progress " + in_quotes(text) + ": expected bar, lines, json, openjd or none");
}

ProgressForm form_for_standard_error() {
    const char* const terminal = std::getenv("TERM");
    const bool moves_cursor = terminal && std::string_view(terminal) != "dumb";
    return isatty(STDERR_FILENO) == 1 && moves_cursor ? ProgressForm::kBar : ProgressForm::kLines;
}

std::string progress_text(const job::ProgressState& state) {
    std::string text = std::to_string(state.done()) + " of " + std::to_string(state.total) + " frames (" +
                       formatted("%.0f", std::floor(state.percent())) + " %)";
    if (state.rate() > 0) text += ", " + formatted("%.3g", state.rate()) + " frames/s";
    if (state.seconds_left() > 0) text += ", " + clock_text(state.seconds_left()) + " left";
    return text;
}

ProgressDisplay::ProgressDisplay(ProgressForm form, bool colours, Write write)
    : form_(form), colours_(colours), write_(std::move(write)) {}

void ProgressDisplay::started(const job::ProgressState& state) {
    state_ = state;
    told_ = steady_clock::now();
    if (form_ == ProgressForm::kJson) write_(as_line(state_json("start", state_)));
    if (form_ == ProgressForm::kOpenJd) {
        write_("openjd_status: rendering " + std::to_string(state.total) + " frames\nopenjd_progress: 0.0\n");
    }
}

void ProgressDisplay::frame_done(const job::FrameEvent& event, const job::ProgressState& state) {
    state_ = state;
    if (event.result == job::FrameResult::kFailed) std::fprintf(stderr, "flumo: %s\n", event.why.c_str());
    if (form_ == ProgressForm::kJson) {
        write_(as_line(event_json(event, state_)));
    } else if (form_ == ProgressForm::kOpenJd) {
        write_("openjd_progress: " + formatted("%.1f", state_.percent()) + "\nopenjd_status: frame " +
               std::to_string(event.frame) + ", " + on_one_line(progress_text(state_)) + "\n");
    } else {
        tell_people(false);
    }
}

// A single frame is its own message.
void ProgressDisplay::tell_people(bool last) {
    const bool is_bar = form_ == ProgressForm::kBar;
    if (state_.total < 2 || (!is_bar && form_ != ProgressForm::kLines)) return;
    const auto now = steady_clock::now();
    // The end tells the last frame.
    if (!last && state_.done() == state_.total) return;
    if (!last && now - told_ < (is_bar ? steady_clock::duration(kBarPause) : kLinePause)) return;
    told_ = now;
    if (is_bar) {
        write_(bar_text(state_, colours_) + (last ? "\n" : ""));
    } else {
        write_("flumo: " + progress_text(state_) + "\n");
    }
}

void ProgressDisplay::ended(job::Ending ending, const job::ProgressState& state) {
    state_ = state;
    const std::string how = ending == job::Ending::kStopped ? "stopped" : "done";
    if (form_ == ProgressForm::kJson) write_(as_line(state_json(how, state_)));
    if (form_ == ProgressForm::kOpenJd) {
        write_("openjd_status: " + how + ", " + progress_text(state_) + "\n");
    }
    tell_people(true);
}

void ProgressDisplay::give_up(const std::string& why) {
    if (form_ == ProgressForm::kJson) {
        ordered_json object = state_json("error", state_);
        object["message"] = why;
        write_(as_line(object));
    }
    if (form_ == ProgressForm::kOpenJd) write_("openjd_fail: " + on_one_line(why) + "\n");
    // The line of the error does not begin behind the bar.
    if (form_ == ProgressForm::kBar && state_.done() > 0) write_("\n");
}

}  // namespace flumo::cli
