#include "effect/suites/suite_handler.h"

#include <cstddef>
#include <iterator>

namespace flumo {
namespace {

struct SuiteName {
    const char* name;
    int32 version;
};

/// In the order of the handler's slots.
constexpr SuiteName kSuites[] = {
    {kPFHandleSuite, kPFHandleSuiteVersion1},
    {kPFANSISuite, kPFANSISuiteVersion1},
    {kAEGPUtilitySuite, kAEGPUtilitySuiteVersion3},
    {kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1},
};

}  // namespace

AEGP_SuiteHandler::AEGP_SuiteHandler(const SPBasicSuite* basic) : basic_(basic) {
    static_assert(std::size(kSuites) == kSlotCount);
    if (!basic) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
}

AEGP_SuiteHandler::~AEGP_SuiteHandler() {
    for (size_t slot = 0; slot < cached_.size(); ++slot) {
        if (cached_[slot]) basic_->ReleaseSuite(kSuites[slot].name, kSuites[slot].version);
    }
}

const PF_HandleSuite1& AEGP_SuiteHandler::HandleSuite() {
    return *static_cast<const PF_HandleSuite1*>(Acquire(kHandle));
}

const PF_ANSICallbacksSuite1& AEGP_SuiteHandler::AnsiSuite() {
    return *static_cast<const PF_ANSICallbacksSuite1*>(Acquire(kAnsi));
}

const AEGP_UtilitySuite3& AEGP_SuiteHandler::UtilitySuite() {
    return *static_cast<const AEGP_UtilitySuite3*>(Acquire(kUtility));
}

const PF_iterateFloatSuite1& AEGP_SuiteHandler::IterateFloatSuite() {
    return *static_cast<const PF_iterateFloatSuite1*>(Acquire(kIterateFloat));
}

const void* AEGP_SuiteHandler::Acquire(Slot slot) {
    if (cached_[slot]) return cached_[slot];
    const void* suite = nullptr;
    const SPErr err = basic_->AcquireSuite(kSuites[slot].name, kSuites[slot].version, &suite);
    // A suite that comes with an error is not kept, and so not released either.
    if (err != 0 || !suite) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    cached_[slot] = suite;
    return suite;
}

}  // namespace flumo
