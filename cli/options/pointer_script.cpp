#include "cli/options/pointer_script.h"

#include <algorithm>
#include <optional>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"
#include "scene/gradient/gradient_stops.h"

namespace flumo::cli {
namespace {

Failure bad_event(std::string_view text, const std::string& expected) {
    return usage_failure("event " + in_quotes(text) + ": expected " + expected);
}

std::vector<std::string_view> words_of(std::string_view text) {
    std::vector<std::string_view> words = split(text, ' ');
    std::erase(words, "");
    return words;
}

std::optional<PF_Point> parse_point(std::string_view text) {
    const auto sides = split(text, ',');
    const auto x = parse_number<A_long>(sides.front());
    const auto y = parse_number<A_long>(sides.back());
    if (sides.size() != 2 || !x || !y) return std::nullopt;
    return PF_Point{.h = *x, .v = *y};
}

struct PressRow {
    std::string_view word;
    int clicks;
    PF_Modifiers modifiers;
};

constexpr PressRow kPresses[] = {
    {"click", 1, PF_Mod_NONE}, {"double-click", 2, PF_Mod_NONE}, {"ctrl-click", 1, PF_Mod_CMD_CTRL_KEY}};

constexpr const char* kExpectedEvents =
    "expected click X,Y, double-click X,Y, ctrl-click X,Y, drag X,Y, release or pick COLOUR";

bool is_verb(std::string_view word) {
    return std::ranges::find(kPresses, word, &PressRow::word) != std::end(kPresses) || word == "drag" ||
           word == "release" || word == "pick";
}

std::string_view trimmed_line(std::string_view line) {
    constexpr std::string_view kBlank = " \t\r";
    const std::size_t first = line.find_first_not_of(kBlank);
    if (first == std::string_view::npos) return {};
    return line.substr(first, line.find_last_not_of(kBlank) - first + 1);
}

}  // namespace

host::PickedColour parse_picker_answer(std::string_view text) {
    if (text == "cancel") return {.status = PF_Interrupt_CANCEL};
    if (text == "fail") return {.status = PF_Err_INTERNAL_STRUCT_DAMAGED};
    const auto colour = scene::colour_from_hex(text);
    if (!colour) throw usage_failure("pick " + in_quotes(text) + ": expected #rrggbb, cancel or fail");
    return {.status = PF_Err_NONE,
            .colour = {.alpha = colour->a, .red = colour->r, .green = colour->g, .blue = colour->b}};
}

PointerEvent parse_pointer_event(std::string_view text) {
    const auto words = words_of(text);
    const std::string_view verb = words.empty() ? "" : words[0];
    const std::string_view rest = words.size() == 2 ? words[1] : "";
    const auto at = parse_point(rest);
    const auto press = std::ranges::find(kPresses, verb, &PressRow::word);
    const bool is_press = press != std::end(kPresses);

    if (is_press && at) return {std::string(text), Press{*at, press->clicks, press->modifiers}};
    if (verb == "drag" && at) return {std::string(text), Move{*at}};
    if (verb == "release" && words.size() == 1) return {std::string(text), Release{}};
    if (verb == "pick" && words.size() == 2) return {std::string(text), parse_picker_answer(rest)};
    if (is_press || verb == "drag") throw bad_event(text, std::string(verb) + " X,Y");
    throw usage_failure("event " + in_quotes(text) + ": " + kExpectedEvents);
}

std::vector<PointerEvent> parse_pointer_script(std::string_view text, const std::string& name) {
    std::vector<PointerEvent> events;
    std::size_t number = 0;
    for (const std::string_view raw : split(text, '\n')) {
        ++number;
        const std::string_view line = trimmed_line(raw);
        if (line.empty() || line.starts_with('#')) continue;
        try {
            events.push_back(parse_pointer_event(line));
        } catch (const Failure& failure) {
            // A file that is no script is not repeated in the message.
            throw usage_failure(name + ": line " + std::to_string(number) + ": " +
                                (is_verb(words_of(line).front()) ? failure.what() : kExpectedEvents));
        }
    }
    return events;
}

}  // namespace flumo::cli
