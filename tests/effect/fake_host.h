// A host for everything short of pixels: writes down what is asked of it, in order, and fails where it is
// told to. Drawing suites are names only.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "effect_api/effect_api.h"

namespace flumo::test {

/// One at a time: the callbacks are plain functions and find the living one by themselves.
class FakeHost {
  public:
    FakeHost();
    ~FakeHost();
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    struct Block {
        void* master;
        std::vector<std::byte> bytes;
        int locks;
    };

    PF_InData in_data{};
    PF_OutData out_data{};

    /// A live handle of `size` bytes, each 0xA5.
    PF_Handle NewHandle(std::size_t size);
    Block& At(PF_Handle handle) { return *blocks.at(handle); }
    int HeldLocks() const;
    /// How often a line stands in the log.
    std::ptrdiff_t Count(const std::string& line) const;
    /// No suite is held, and no lock.
    bool AllGivenBack() const { return held_suites.empty() && HeldLocks() == 0; }

    /// "acquire NAME VERSION", "release NAME VERSION", "new SIZE", "lock", "unlock", "dispose",
    /// "util dispose", "add_param", "register_ui", "checkout INDEX", "checkin", "register NAME",
    /// "checkout_layer INDEX ID".
    std::vector<std::string> log;
    std::map<std::string, int> held_suites;
    std::map<PF_Handle, std::unique_ptr<Block>> blocks;

    std::set<std::string> missing_suites;
    /// Given, but with an error number.
    std::set<std::string> erring_suites;
    /// The allocation or lock of this number, counted from 1, gives null; 0 is none.
    int fail_new = 0;
    int fail_lock = 0;
    /// Called by every allocation and every registered control; what it throws goes into the effect.
    std::function<void()> on_call = [] {};

    PF_Err register_plugin_result = PF_Err_NONE;
    PF_Err register_ui_result = PF_Err_NONE;
    /// Result of the call of this number, counted from 1; the others succeed.
    int fail_add_param = 0;
    int fail_checkout = 0;
    int fail_checkin = 0;
    PF_Err failure = 99;

    std::vector<PF_ParamDef> params;
    std::vector<PF_ParamIndex> add_indices;
    std::vector<PF_CustomUIInfo> uis;
    /// Fills a control that is checked out.
    std::function<void(PF_ParamIndex, PF_ParamDef&)> fill = [](PF_ParamIndex, PF_ParamDef&) {};
    /// Time, step and scale of the last checkout.
    A_long checkout_time[3] = {};
    int news = 0, locks = 0, checkouts = 0, checkins = 0;

    SPBasicSuite basic{};
    PF_UtilCallbacks utils{};
};

}  // namespace flumo::test
