// Acquiring and releasing suites.
#include "host/callbacks/answer.h"
#include "host/callbacks/refuse.h"
#include "host/callbacks/tables.h"
#include "host/suite_provider.h"

namespace flumo::host {

namespace {

/// Error number of the suite interface for a suite that is not there, "S!Fd".
constexpr SPErr kSuiteNotFound = 0x53214664;

struct SuiteRow {
    std::string_view name;
    int version;
    const void* (*table)();
};

template <auto Suite>
const void* table_of() {
    return &Suite();
}

constexpr SuiteRow kStanding[] = {
    {kPFHandleSuite, kPFHandleSuiteVersion1, table_of<handle_suite>},
    {kPFANSISuite, kPFANSISuiteVersion1, table_of<ansi_suite>},
    {kAEGPUtilitySuite, kAEGPUtilitySuiteVersion3, table_of<utility_suite>},
    {kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1, table_of<iterate_float_suite>},
    {kPFWorldSuite, kPFWorldSuiteVersion2, table_of<world_suite>},
    {kPFPixelDataSuite, kPFPixelDataSuiteVersion1, table_of<pixel_data_suite>},
};

const void* find_suite(Call& call, const char* name, int version) {
    if (call.host.options().missing_suites.contains({name, version})) return nullptr;
    if (const void* table = find_standing_suite(name, version)) return table;
    return call.suites ? call.suites->find_suite(name, version) : nullptr;
}

SPErr acquire(const char* name, int32 version, const void** suite) {
    Call* call = current_call();
    if (!call) return kSuiteNotFound;
    const auto fault = count_call(*call, Callback::kAcquireSuite);
    if (fault == FaultMode::kError) return call->host.faults().error_number();
    const void* table = fault == FaultMode::kNull ? nullptr : find_suite(*call, name, version);
    *suite = table;
    // An acquire that reports an error is not one, even when it delivers the pointer.
    if (fault == FaultMode::kErrorWithResult) return call->host.faults().error_number();
    if (fault == FaultMode::kNull) return PF_Err_NONE;
    if (!table) return kSuiteNotFound;
    call->host.accounting().suite_acquired(name, version);
    return PF_Err_NONE;
}

SPErr release(const char* name, int32 version) {
    return answer(Callback::kReleaseSuite, [&](Call& call) -> PF_Err {
        call.host.accounting().suite_released(name, version);
        return PF_Err_NONE;
    });
}

}  // namespace

const void* find_standing_suite(std::string_view name, int version) {
    for (const SuiteRow& row : kStanding) {
        if (row.name == name && row.version == version) return row.table();
    }
    return nullptr;
}

SPBasicSuite basic_suite() {
    SPBasicSuite suite{};
    refuse(suite.IsEqual, suite.AllocateBlock, suite.FreeBlock, suite.ReallocateBlock, suite.Undefined);
    suite.AcquireSuite = acquire;
    suite.ReleaseSuite = release;
    return suite;
}

}  // namespace flumo::host
