// The two exports by which the host finds an effect.
#pragma once

#include "effect_api/effect.h"

using PF_PluginDataPtr = struct PF_PluginData*;
using PF_PluginDataCB = A_Err (*)(PF_PluginDataPtr inPtr, const A_u_char* inNamePtr,
                                  const A_u_char* inMatchNamePtr, const A_u_char* inCategoryPtr,
                                  const A_u_char* inEntryPointNamePtr, A_long inkind,
                                  A_long inApiVersionMajor, A_long inApiVersionMinor, A_long inReservedInfo);

/// Signature of the export "EffectMain".
using EffectMainFunction = PF_Err (*)(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                      PF_ParamDef** params, PF_LayerDef* output, void* extra);
/// Signature of the export "PluginDataEntryFunction".
using PluginDataEntry = PF_Err (*)(PF_PluginDataPtr inPtr, PF_PluginDataCB inPluginDataCallBackPtr,
                                   SPBasicSuite* inSPBasicSuitePtr, const char* inHostName,
                                   const char* inHostVersion);

/// Kind number of an After Effects effect, "eFKT".
inline constexpr A_long kEffectPluginKind = 1699105620;
