// The text form of a gradient, as the host shows a keyframe.
#pragma once

#include <istream>
#include <string>

#include "effect/gradient/value/gradient.h"

namespace flumo {

/// One line: "Gradient", then for each stop " t POSITION KIND  r R g G b B a A", where KIND is linear,
/// sin or edge and is left out, with its blanks, for any other kind. Numbers have six significant
/// digits in the global locale.
std::string FormatGradientText(const GradientStopMap& stops);

/// Reads that form and merges its stops into `stops`, which keep what the text does not overwrite.
/// Returns 0 at the end of the text, or PF_Err_UNRECOGNIZED_PARAM_TYPE at the first word that is not
/// the expected one; stops read before it stay. White space after the last number counts as one more
/// stop and fails.
PF_Err ParseGradientText(std::istream& text, GradientStopMap& stops);

}  // namespace flumo
