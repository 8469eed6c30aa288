#include "effect/entry/effect_main.h"
#include "effect/identity/identity.h"

namespace {

const A_u_char* HostText(const char* text) {
    return reinterpret_cast<const A_u_char*>(text);
}

}  // namespace

PF_Err PluginDataEntryFunction(PF_PluginDataPtr host_data, PF_PluginDataCB register_effect, SPBasicSuite*,
                               const char*, const char*) {
    return register_effect(host_data, HostText(flumo::kEffectName), HostText(flumo::kMatchName),
                           HostText(flumo::kCategory), HostText(flumo::kEntryPoint), flumo::kPluginKind,
                           flumo::kApiMajor, flumo::kApiMinor, flumo::kReservedInfo);
}
