// Every text that the host shows for the effect, by row number: names, popup choices, side labels.
#pragma once

#include "effect_api/types.h"

namespace flumo {

/// The effect's own name.
inline constexpr A_long kNameRow = 1;
/// The line under the name in the about box.
inline constexpr A_long kNoticeRow = 2;

/// The text of a row, 0 to 108, valid as long as the module is loaded. The number is not checked.
const char* GetStringPtr(A_long row);

}  // namespace flumo
