#include "effect/suites/drawbot_suites.h"

#include <type_traits>

#include "effect/suites/suite_access.h"

namespace flumo {
namespace {

/// One suite of the group: what it is called, and how its pointer gets into the group and out of it.
struct GroupMember {
    const char* name;
    int32 version;
    void (*store)(DrawbotSuites& suites, const void* suite);
    const void* (*load)(const DrawbotSuites& suites);
};

template <auto kMember>
void Store(DrawbotSuites& suites, const void* suite) {
    using Pointer = std::remove_reference_t<decltype(suites.*kMember)>;
    suites.*kMember = static_cast<Pointer>(suite);
}

template <auto kMember>
const void* Load(const DrawbotSuites& suites) {
    return suites.*kMember;
}

template <auto kMember>
constexpr GroupMember Member(const char* name, int32 version) {
    return {name, version, Store<kMember>, Load<kMember>};
}

constexpr GroupMember kGroup[] = {
    Member<&DrawbotSuites::draw>(kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1),
    Member<&DrawbotSuites::supplier>(kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1),
    Member<&DrawbotSuites::surface>(kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2),
    Member<&DrawbotSuites::path>(kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1),
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

void ReleaseAcquiredDrawbotSuites(PF_InData* in_data, PF_OutData* out_data, const DrawbotSuites& suites) {
    for (const GroupMember& member : kGroup) {
        if (member.load(suites)) AEFX_ReleaseSuite(in_data, out_data, member.name, member.version, nullptr);
    }
}

}  // namespace flumo
