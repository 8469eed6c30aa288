// The flags of global set-up by name.
#pragma once

#include <string>
#include <vector>

#include "effect_api/commands.h"

namespace flumo::cli {

/// Names of the set bits, the lowest first, without the prefix PF_OutFlag_; an unknown bit is its number.
std::vector<std::string> out_flag_names(PF_OutFlags flags);

/// The same for the second word, without PF_OutFlag2_.
std::vector<std::string> out_flag2_names(PF_OutFlags2 flags);

}  // namespace flumo::cli
