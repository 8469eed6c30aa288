// Global set-up and set-down: the module's identity, the root GL context, and the handle that the host keeps.
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

/// Writes version and flags, sets up licensing, starts the root GL context and makes the global handle, in
/// this order; the first result other than PF_Err_NONE ends it. Throws PF_Err_BAD_CALLBACK_PARAM for a
/// missing suite.
PF_Err GlobalSetup(PF_InData* in_data, PF_OutData* out_data);

/// Ends all GL contexts of the effect and disposes of the global handle, unless the GL teardown failed.
/// Disposes of a sequence handle that the host passes in any case. The host renders nothing during it.
PF_Err GlobalSetdown(PF_InData* in_data, PF_OutData* out_data);

}  // namespace flumo
