#include "effect/suites/drawbot_suites.h"

#include <type_traits>

#include "effect/suites/suite_access.h"

namespace flumo {
namespace {

/// One suite of the group: what it is called, and how its pointer gets into the group.
struct GroupMember {
    const char* name;
    int32 version;
    void (*store)(DrawbotSuites& suites, const void* suite);
};

template <auto kMember>
void Store(DrawbotSuites& suites, const void* suite) {
    using Pointer = std::remove_reference_t<decltype(suites.*kMember)>;
    suites.*kMember = static_cast<Pointer>(suite);
}

constexpr GroupMember kGroup[] = {
    {kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1, Store<&DrawbotSuites::draw>},
    {kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1, Store<&DrawbotSuites::supplier>},
    {kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2, Store<&DrawbotSuites::surface>},
    {kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1, Store<&DrawbotSuites::path>},
};

}  // namespace

PF_Err AEFX_AcquireDrawbotSuites(PF_InData* in_data, PF_OutData* out_data, DrawbotSuites* suites) {
    if (!suites) {
        ShowErrorMessage(in_data, out_data, "NULL suite pointer passed to AEFX_AcquireDrawbotSuites");
        return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    }
    for (const GroupMember& member : kGroup) {
        const void* suite = nullptr;
        const PF_Err err = AEFX_AcquireSuite(in_data, out_data, member.name, member.version, nullptr, &suite);
        if (err != PF_Err_NONE) return err;
        member.store(*suites, suite);
    }
    return PF_Err_NONE;
}

PF_Err AEFX_ReleaseDrawbotSuites(PF_InData* in_data, PF_OutData* out_data) {
    for (const GroupMember& member : kGroup) {
        AEFX_ReleaseSuite(in_data, out_data, member.name, member.version, nullptr);
    }
    return PF_Err_NONE;
}

}  // namespace flumo
