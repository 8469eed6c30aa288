// The identities of a control: section number, id, parameter index, disk id. Callable from any thread.
#pragma once

#include <string>

#include "effect/params/control_table.h"
#include "effect_api/params.h"

namespace flumo {

/// Reserved for the id BlendMode, which no section has: no control may get it.
inline constexpr A_long kBlendModeDiskId = 1;

/// The id text of a section. Throws std::runtime_error from kControlCount on.
std::string GetMainParamId(A_u_long section);

/// The control's place in the host's parameter array, 1 to kControlCount; 0 is the effect's input layer.
/// Ids compare exactly. Throws std::runtime_error for an id that no section has.
A_long GetParamIndex(const std::string& id);

/// The number under which saved projects store the control. Knows "BlendMode" too. Throws std::runtime_error
/// for any other id.
A_long GetParamDiskId(const std::string& id);

/// GetParamIndex of the section's id.
A_long ParamIndexOf(Section section);

/// GetParamDiskId of the section's id.
A_long ParamDiskIdOf(Section section);

}  // namespace flumo
