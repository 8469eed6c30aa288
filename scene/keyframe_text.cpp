#include "scene/keyframe_text.h"

#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo::scene {
namespace {

// By the number of the interpolation.
constexpr std::array<std::string_view, 3> kWords = {"linear", "hold", "ease"};

int parse_time(std::string_view text, const host::FrameRate& rate) {
    const bool is_seconds = text.ends_with('s');
    const auto number = parse_number<double>(text.substr(0, text.size() - (is_seconds ? 1 : 0)));
    const double frame = !number ? 0 : is_seconds ? std::round(*number * rate.num / rate.den) : *number;
    const bool fits = std::abs(frame) <= std::numeric_limits<int>::max() && frame == std::floor(frame);
    if (!number || !fits)
        throw usage_failure("time " + in_quotes(text) +
                            ": expected a frame such as 48 or seconds such as 4s");
    return static_cast<int>(frame);
}

Keyframe parse_keyframe(const Control& control, std::string_view text, const host::FrameRate& rate) {
    const auto parts = split(text, ':');
    if (parts.size() != 2 && parts.size() != 3)
        throw usage_failure("keyframe " + in_quotes(text) +
                            ": expected TIME:VALUE[:INTERPOLATION], such as 4s:360 or 48:100:ease");
    Keyframe keyframe{parse_time(parts[0], rate), parse_control_value(control, parts[1])};
    if (parts.size() == 3) keyframe.to_next = parse_interpolation(parts[2]);
    return keyframe;
}

}  // namespace

bool is_keyframe_text(const Control& control, std::string_view text) {
    return control.is_number() && text.find(':') != std::string_view::npos;
}

Track parse_keyframes(const Control& control, std::string_view text, const host::FrameRate& rate) {
    if (!takes_keyframes(control))
        throw usage_failure("this control cannot vary over time; expected one value");
    Track track{&control, {}};
    for (const std::string_view part : split(text, ',')) {
        Keyframe keyframe = parse_keyframe(control, part, rate);
        if (!track.keyframes.empty() && keyframe.frame <= track.keyframes.back().frame)
            throw usage_failure("keyframe " + in_quotes(part) + ": expected a frame after " +
                                std::to_string(track.keyframes.back().frame));
        track.keyframes.push_back(std::move(keyframe));
    }
    return track;
}

Interpolation parse_interpolation(std::string_view word) {
    for (std::size_t i = 0; i < kWords.size(); ++i) {
        if (word == kWords[i]) return static_cast<Interpolation>(i);
    }
    throw usage_failure("interpolation " + in_quotes(word) + ": expected linear, hold or ease");
}

std::string_view interpolation_word(Interpolation interpolation) {
    return kWords.at(static_cast<std::size_t>(interpolation));
}

double value_between(const Keyframe& left, const Keyframe& right, int frame) {
    const double from = std::get<double>(left.value);
    const double to = std::get<double>(right.value);
    if (left.to_next == Interpolation::kHold) return from;
    const double t = (double(frame) - left.frame) / (double(right.frame) - left.frame);
    const double eased = left.to_next == Interpolation::kEase ? t * t * (3 - 2 * t) : t;
    return from + (to - from) * eased;
}

}  // namespace flumo::scene
