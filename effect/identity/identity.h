// The effect's names, version and flags. Registration, global set-up and the resource that Windows hosts read
// all use these constants, since the host compares them.
#pragma once

#include "effect_api/commands.h"
#include "effect_api/registration.h"

namespace flumo {

inline constexpr char kEffectName[] = "Flumo";
inline constexpr char kMatchName[] = "Velbrand Flumo";
inline constexpr char kCategory[] = "Velbrand";
inline constexpr char kEntryPoint[] = "EffectMain";

inline constexpr A_long kPluginKind = kEffectPluginKind;
inline constexpr A_long kApiMajor = PF_AE220_PLUG_IN_VERSION;
inline constexpr A_long kApiMinor = PF_AE220_PLUG_IN_SUBVERS;
inline constexpr A_long kReservedInfo = 8;
inline constexpr A_long kPiplId = 16000;

/// 1.1.4 release, build 0, in the host's packing. Stored in projects with the flat sequence record.
inline constexpr A_u_long kEffectVersion = PF_VERSION(1, 1, 4, PF_Stage_RELEASE, 0);
static_assert(kEffectVersion == 566784);

inline constexpr PF_OutFlags kOutFlags = PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING | PF_OutFlag_I_DO_DIALOG |
                                         PF_OutFlag_USE_OUTPUT_EXTENT | PF_OutFlag_PIX_INDEPENDENT |
                                         PF_OutFlag_CUSTOM_UI | PF_OutFlag_DEEP_COLOR_AWARE;
static_assert(kOutFlags == 33588336);

inline constexpr PF_OutFlags2 kOutFlags2 = PF_OutFlag2_SUPPORTS_SMART_RENDER | PF_OutFlag2_FLOAT_COLOR_AWARE |
                                           PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA |
                                           PF_OutFlag2_SUPPORTS_THREADED_RENDERING;
static_assert(kOutFlags2 == 142611456);

}  // namespace flumo
