#include "fake_host.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace flumo::test {
namespace {

FakeHost* living = nullptr;

PF_Handle HandleNew(A_HandleSize size) {
    living->log.push_back("new " + std::to_string(size));
    living->on_call();
    return ++living->news == living->fail_new ? nullptr : living->NewHandle(size);
}

void* HandleLock(PF_Handle handle) {
    living->log.push_back("lock");
    if (++living->locks == living->fail_lock) return nullptr;
    ++living->At(handle).locks;
    return *handle;
}

void HandleUnlock(PF_Handle handle) {
    living->log.push_back("unlock");
    --living->At(handle).locks;
}

void HandleDispose(PF_Handle handle) {
    living->log.push_back("dispose");
    living->blocks.erase(handle);
}

void UtilDispose(PF_Handle handle) {
    living->log.push_back("util dispose");
    living->blocks.erase(handle);
}

int Print(A_char* to, const A_char* format, ...) {
    va_list args;
    va_start(args, format);
    const int length = std::vsnprintf(to, sizeof(PF_OutData::return_msg), format, args);
    va_end(args);
    return length;
}

A_Err RegisterPlugin(AEGP_GlobalRefcon, const A_char* name, AEGP_PluginID* id) {
    living->log.push_back(std::string("register ") + name);
    *id = 4711;
    return living->register_plugin_result;
}

const PF_HandleSuite1 kHandles{HandleNew, HandleLock, HandleUnlock, HandleDispose, nullptr, nullptr};
const PF_ANSICallbacksSuite1 kAnsi = [] {
    PF_ANSICallbacksSuite1 suite{};
    suite.sprintf = Print;
    return suite;
}();
const AEGP_UtilitySuite3 kUtility = [] {
    AEGP_UtilitySuite3 suite{};
    suite.AEGP_RegisterWithAEGP = RegisterPlugin;
    return suite;
}();
/// What suites are made of that are only handed out.
const std::max_align_t kNameOnly{};

const std::map<std::string, const void*> kSuites = {
    {"PF Handle Suite 2", &kHandles},        {"PF ANSI Suite 1", &kAnsi},
    {"AEGP Utility Suite 7", &kUtility},     {"PF iterateFloat Suite 1", &kNameOnly},
    {"DRAWBOT Draw Suite 1", &kNameOnly},    {"DRAWBOT Supplier Suite 1", &kNameOnly},
    {"DRAWBOT Surface Suite 2", &kNameOnly}, {"DRAWBOT Path Suite 1", &kNameOnly},
};

std::string SuiteKey(const char* name, int32 version) {
    return std::string(name) + " " + std::to_string(version);
}

SPErr Acquire(const char* name, int32 version, const void** suite) {
    const std::string key = SuiteKey(name, version);
    living->log.push_back("acquire " + key);
    const auto found = kSuites.find(key);
    if (found == kSuites.end() || living->missing_suites.contains(key)) return 1;
    *suite = found->second;
    if (living->erring_suites.contains(key)) return 1;
    ++living->held_suites[key];
    return 0;
}

SPErr Release(const char* name, int32 version) {
    const std::string key = SuiteKey(name, version);
    living->log.push_back("release " + key);
    if (--living->held_suites[key] == 0) living->held_suites.erase(key);
    return 0;
}

PF_Err AddParam(PF_ProgPtr, PF_ParamIndex index, PF_ParamDefPtr def) {
    living->log.push_back("add_param");
    living->on_call();
    living->add_indices.push_back(index);
    living->params.push_back(*def);
    return static_cast<int>(living->params.size()) == living->fail_add_param ? living->failure : PF_Err_NONE;
}

PF_Err RegisterUi(PF_ProgPtr, PF_CustomUIInfo* info) {
    living->log.push_back("register_ui");
    living->uis.push_back(*info);
    return living->register_ui_result;
}

PF_Err CheckoutParam(PF_ProgPtr, PF_ParamIndex index, A_long time, A_long step, A_u_long scale,
                     PF_ParamDef* def) {
    living->log.push_back("checkout " + std::to_string(index));
    if (++living->checkouts == living->fail_checkout) return living->failure;
    living->checkout_time[0] = time;
    living->checkout_time[1] = step;
    living->checkout_time[2] = static_cast<A_long>(scale);
    living->fill(index, *def);
    return PF_Err_NONE;
}

PF_Err CheckinParam(PF_ProgPtr, PF_ParamDef*) {
    living->log.push_back("checkin");
    return ++living->checkins == living->fail_checkin ? living->failure : PF_Err_NONE;
}

}  // namespace

FakeHost::FakeHost() {
    living = this;
    basic.AcquireSuite = Acquire;
    basic.ReleaseSuite = Release;
    utils.ansi.sprintf = Print;
    utils.ansi.strcpy = std::strcpy;
    utils.host_dispose_handle = UtilDispose;
    in_data.pica_basicP = &basic;
    in_data.utils = &utils;
    in_data.appl_id = kAfterEffectsApplId;
    in_data.inter.add_param = AddParam;
    in_data.inter.register_ui = RegisterUi;
    in_data.inter.checkout_param = CheckoutParam;
    in_data.inter.checkin_param = CheckinParam;
}

FakeHost::~FakeHost() {
    living = nullptr;
}

PF_Handle FakeHost::NewHandle(std::size_t size) {
    auto block = std::make_unique<Block>(Block{nullptr, std::vector(size, std::byte{0xA5}), 0});
    block->master = block->bytes.data();
    const PF_Handle handle = &block->master;
    blocks.emplace(handle, std::move(block));
    return handle;
}

int FakeHost::HeldLocks() const {
    int held = 0;
    for (const auto& [handle, block] : blocks)
        held += block->locks;
    return held;
}

std::ptrdiff_t FakeHost::Count(const std::string& line) const {
    return std::ranges::count(log, line);
}

}  // namespace flumo::test
