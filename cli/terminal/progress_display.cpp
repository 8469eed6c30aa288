#include "cli/terminal/progress_display.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <optional>

#include "base/failure.h"
#include "base/text_list.h"
#include "cli/terminal/progress_text.h"

namespace flumo::cli {
namespace {

using nlohmann::ordered_json;
using std::chrono::steady_clock;

constexpr auto kTick = std::chrono::milliseconds(200);
constexpr std::size_t kUsualColumns = 80;

ordered_json number_json(const std::optional<double>& number) {
    return number ? ordered_json(*number) : ordered_json();
}

ordered_json state_json(std::string_view event, const job::ProgressState& state) {
    return {{"event", event},
            {"done", state.done()},
            {"total", state.total},
            {"rendered", state.rendered},
            {"skipped", state.skipped},
            {"failed", state.failed},
            {"percent", std::round(state.percent() * 100) / 100},
            {"framesPerSecond", number_json(state.rate())},
            {"secondsElapsed", state.elapsed.count()},
            {"secondsLeft", number_json(state.seconds_left())}};
}

ordered_json event_json(const job::FrameEvent& event, const job::ProgressState& state) {
    const bool failed = event.result == job::FrameResult::kFailed;
    const char* const name = failed                                       ? "failed"
                             : event.result == job::FrameResult::kSkipped ? "skipped"
                                                                          : "frame";
    ordered_json object = state_json(name, state);
    object["frame"] = event.frame;
    object[failed ? "message" : "file"] = failed ? event.why : event.file.string();
    if (event.result == job::FrameResult::kWritten) object["seconds"] = event.seconds;
    return object;
}

// File names may have any bytes; JSON is UTF-8.
std::string as_line(const ordered_json& object) {
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

std::string on_one_line(std::string text) {
    for (char& c : text) {
        if (c == '\n' || c == '\r') c = ' ';
    }
    return text;
}

std::string percent_of(const job::ProgressState& state) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", state.percent());
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

std::size_t terminal_columns() {
    winsize size = {};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : kUsualColumns;
}

ProgressDisplay::ProgressDisplay(DisplaySettings settings) : settings_(std::move(settings)) {}

void ProgressDisplay::started(const job::ProgressState& state) {
    settings_.on_start();
    const std::lock_guard lock(mutex_);
    state_ = state;
    told_ = steady_clock::now();
    is_started_ = true;
    if (settings_.form == ProgressForm::kJson) settings_.write(as_line(state_json("start", state_)));
    if (settings_.form == ProgressForm::kOpenJd) {
        settings_.write("openjd_status: rendering " + std::to_string(state.total) +
                        " frames\nopenjd_progress: 0.0\n");
    }
    draw_bar();
    ticker_ = std::jthread([this](const std::stop_token& stop) {
        std::unique_lock lock_in_thread(mutex_);
        while (!changed_.wait_for(lock_in_thread, stop, kTick, [&] { return stop.stop_requested(); }))
            tick();
    });
}

void ProgressDisplay::frame_begun(int frame) {
    const std::lock_guard lock(mutex_);
    begun_.insert(frame);
}

void ProgressDisplay::frame_done(const job::FrameEvent& event, const job::ProgressState& state) {
    const std::lock_guard lock(mutex_);
    state_ = state;
    told_ = steady_clock::now();
    begun_.erase(event.frame);
    if (event.result == job::FrameResult::kFailed) say(event.why);
    if (settings_.form == ProgressForm::kJson) settings_.write(as_line(event_json(event, state_)));
    if (settings_.form == ProgressForm::kOpenJd) {
        settings_.write("openjd_progress: " + percent_of(state_) + "\nopenjd_status: frame " +
                        std::to_string(event.frame) + ", " + progress_text(state_) + "\n");
    }
    if (settings_.form == ProgressForm::kLines && event.result == job::FrameResult::kWritten)
        settings_.write("flumo: " + frame_text(event, state_) + "\n");
}

void ProgressDisplay::ended(job::Ending ending, const job::ProgressState& state) {
    ticker_ = {};
    const std::lock_guard lock(mutex_);
    state_ = state;
    told_ = steady_clock::now();
    const bool stopped = ending == job::Ending::kStopped;
    const std::string how = stopped ? "stopped" : "done";
    if (settings_.form == ProgressForm::kJson) settings_.write(as_line(state_json(how, state_)));
    if (settings_.form == ProgressForm::kOpenJd)
        settings_.write("openjd_status: " + how + ", " + summary_text(state_) + "\n");
    if (settings_.form == ProgressForm::kBar) {
        draw_bar();
        settings_.write("\n");
        bar_is_drawn_ = false;
    }
    // A single frame has its own line, and a stopped job its own message.
    const bool is_news =
        state.skipped + state.failed > 0 || (state.total > 1 && settings_.form == ProgressForm::kLines);
    if (!stopped && is_news && settings_.form != ProgressForm::kNone) say(summary_text(state_));
}

void ProgressDisplay::warn(const std::string& message) {
    if (settings_.form == ProgressForm::kNone) return;
    const std::lock_guard lock(mutex_);
    if (settings_.form == ProgressForm::kJson) {
        settings_.write(as_line({{"event", "warning"}, {"message", message}}));
    }
    say(message);
}

void ProgressDisplay::give_up(const std::string& why) {
    ticker_ = {};
    const std::lock_guard lock(mutex_);
    if (settings_.form == ProgressForm::kJson) {
        ordered_json object = is_started_ ? state_json("error", state_) : ordered_json{{"event", "error"}};
        object["message"] = why;
        settings_.write(as_line(object));
    }
    if (settings_.form == ProgressForm::kOpenJd) settings_.write("openjd_fail: " + on_one_line(why) + "\n");
    // The message of the error starts on a line of its own.
    if (bar_is_drawn_) settings_.write("\n");
}

void ProgressDisplay::tick() try {
    tell_stop();
    draw_bar();
} catch (const std::exception&) {
    // The next event reports an output that cannot be written.
}

void ProgressDisplay::tell_stop() {
    const std::string hint = stop_told_ || begun_.empty() ? "" : settings_.stop_hint();
    if (hint.empty()) return;
    stop_told_ = true;
    std::string frames;
    for (const int frame : begun_)
        frames += (frames.empty() ? "" : ", ") + std::to_string(frame);
    say((begun_.size() == 1 ? "finishing frame " : "finishing frames ") + frames + "; " + hint);
}

void ProgressDisplay::draw_bar() {
    if (settings_.form != ProgressForm::kBar) return;
    // The last column stays empty: some terminals go to the next line when it is written.
    const std::size_t columns = std::max<std::size_t>(settings_.columns(), 2) - 1;
    const auto waited = steady_clock::now() - told_;
    std::string line = "\r";
    line.append(bar_text(state_, waited, columns, settings_.colours)).append("\x1b[K");
    settings_.write(line);
    bar_is_drawn_ = true;
}

// A line on standard error, in place of a bar.
void ProgressDisplay::say(const std::string& line) {
    if (bar_is_drawn_) settings_.write("\r\x1b[K");
    bar_is_drawn_ = false;
    std::fprintf(stderr, "flumo: %s\n", line.c_str());
}

}  // namespace flumo::cli
