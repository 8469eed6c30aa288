#include "effect/entry/global.h"

#include "effect/gpu/global_context.h"
#include "effect/gpu/saved_context.h"
#include "effect/identity/effect_strings.h"
#include "effect/identity/identity.h"
#include "effect/licence/licence.h"
#include "effect/suites/errors.h"
#include "effect/suites/host_handle.h"
#include "effect/suites/suite_handler.h"

namespace flumo {
namespace {

/// Runs GL work and makes the caller's own context current again after it.
template <typename Work>
PF_Err WithSavedContext(const Work& work) {
    return CommandResult([&work] {
        const AESDK_OpenGL_SavedContext saved;
        work();
    });
}

/// Fails on a machine that cannot make a GL context, before any frame is asked for.
PF_Err GlSetup(PF_InData* in_data) {
    return WithSavedContext([in_data] {
        AEGP_SuiteHandler throwsWithoutBasicSuite(in_data->pica_basicP);
        AESDK_OpenGL_SetUpCommonContext();
    });
}

PF_Err GlTeardown() {
    return WithSavedContext(AESDK_OpenGL_TearDownContexts);
}

PF_Err RegisterPlugin(PF_InData* in_data, AEGP_SuiteHandler& suites, GlobalPluginData& data) {
    if (in_data->appl_id == kPremiereApplId) return PF_Err_NONE;
    return suites.UtilitySuite().AEGP_RegisterWithAEGP(nullptr, GetStringPtr(kNameRow), &data.plugin_id);
}

/// A handle that cannot be locked, or whose registration fails, is neither stored nor disposed of.
PF_Err GlobalDataSetup(PF_InData* in_data, PF_OutData* out_data) {
    AEGP_SuiteHandler suites(in_data->pica_basicP);
    const PF_HandleSuite1& handles = suites.HandleSuite();
    const PF_Handle handle = handles.host_new_handle(sizeof(GlobalPluginData));
    if (!handle) return PF_Err_INTERNAL_STRUCT_DAMAGED;

    const HandleLock lock(handles, handle);
    if (!lock.DataOrNull()) {
        // Each lock call is followed by an unlock call, also when it failed.
        handles.host_unlock_handle(handle);
        return PF_Err_NONE;
    }
    const PF_Err err = RegisterPlugin(in_data, suites, *static_cast<GlobalPluginData*>(lock.Data()));
    if (err == PF_Err_NONE) out_data->global_data = handle;
    return err;
}

PF_Err DisposeGlobalData(PF_InData* in_data) {
    if (!in_data->global_data) return PF_Err_NONE;
    return CommandResult([in_data] {
        AEGP_SuiteHandler suites(in_data->pica_basicP);
        suites.HandleSuite().host_dispose_handle(in_data->global_data);
    });
}

}  // namespace

PF_Err GlobalSetup(PF_InData* in_data, PF_OutData* out_data) {
    out_data->my_version = kEffectVersion;
    out_data->out_flags = kOutFlags;
    out_data->out_flags2 = kOutFlags2;
    PF_Err err = LicenceSetup(in_data, out_data);
    if (err == PF_Err_NONE) err = GlSetup(in_data);
    if (err == PF_Err_NONE) err = GlobalDataSetup(in_data, out_data);
    return err;
}

PF_Err GlobalSetdown(PF_InData* in_data, PF_OutData* out_data) {
    PF_Err err = GlTeardown();
    if (err == PF_Err_NONE) err = DisposeGlobalData(in_data);
    if (in_data->sequence_data) {
        // Not through the suite, which may be missing here.
        in_data->utils->host_dispose_handle(in_data->sequence_data);
        out_data->sequence_data = nullptr;
    }
    return err;
}

}  // namespace flumo
