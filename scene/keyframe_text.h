// Keyframes as one text, for a command line.
#pragma once

#include <string_view>

#include "host/values/frame_rate.h"
#include "scene/track.h"

namespace flumo::scene {

/// Whether `text` has keyframes for this control and not one value: a number, checkbox or popup whose text
/// has a colon.
bool is_keyframe_text(const Control& control, std::string_view text);

/// Reads TIME:VALUE[:INTERPOLATION], with commas between keyframes: `0:0,4s:360` or
/// `0:0:ease,48:100:hold,96:0`. A time is a frame, or seconds with an s at the given rate, rounded to the
/// nearest frame. The interpolation (linear, hold or ease) lasts until the next keyframe. Throws Failure
/// (usage) with what was expected.
Track parse_keyframes(const Control& control, std::string_view text, const host::FrameRate& rate);

/// Reads linear, hold or ease. Throws Failure (usage).
Interpolation parse_interpolation(std::string_view word);
std::string_view interpolation_word(Interpolation interpolation);

/// The value of a number at `frame`, which lies between the two keyframes. Ease follows 3t^2 - 2t^3.
double value_between(const Keyframe& left, const Keyframe& right, int frame);

}  // namespace flumo::scene
