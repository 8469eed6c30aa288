// The life of the module: its identity, the root GL context, and the handle that the host keeps for it.
#pragma once

#include "effect_api/effect.h"
#include "effect_api/suites.h"

namespace flumo {

/// What the global handle holds. Nothing reads it back.
struct GlobalPluginData {
    /// Not written under Premiere Pro, where the effect does not register.
    AEGP_PluginID plugin_id;
};
static_assert(sizeof(GlobalPluginData) == 4);

/// Writes version and flags, opens the licence gate, starts the root GL context and makes the global
/// handle, in this order; the first result other than PF_Err_NONE ends it. Throws PF_Err 516 for a
/// missing suite.
PF_Err GlobalSetup(PF_InData* in_data, PF_OutData* out_data);

/// Ends all GL contexts of the effect and gives the global handle back, unless the GL teardown failed; a
/// sequence handle that the host passes goes in any case. The host renders nothing meanwhile.
PF_Err GlobalSetdown(PF_InData* in_data, PF_OutData* out_data);

}  // namespace flumo
