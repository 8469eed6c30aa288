// A host for gradient values and panel events: counts what it hands out, writes down what is painted,
// and fails where it is told to.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "effect/gradient/gradient.h"
#include "effect_api/effect_api.h"

namespace flumo::test {

/// What a failing call that returns a status returns.
inline constexpr PF_Err kHostFault = 77;

/// One at a time: the suites are plain functions and find the living one by themselves.
class FakePanelHost {
  public:
    FakePanelHost();
    ~FakePanelHost();
    FakePanelHost(const FakePanelHost&) = delete;
    FakePanelHost& operator=(const FakePanelHost&) = delete;

    PF_InData in_data{};
    PF_OutData out_data{};

    /// A handle whose record refers to `stops`, which stay the caller's.
    GradientHandle Wrap(GradientStopMap& stops);
    /// Gives a handle of Wrap() back.
    void Dispose(GradientHandle handle);
    static GradientStopMap& StopsOf(GradientHandle handle);

    /// True when no handle but `handles` lives and no lock, suite or drawing object is held.
    bool AllGivenBack(std::size_t handles) const;

    /// The call of this number, counted from 1 over all calls that can fail, fails; 0 is none. A handle or
    /// a lock comes back null, a suite is missing, anything else returns kHostFault.
    int fail_call = 0;
    /// What the effect should make of the failure that happened; 0 while none did.
    PF_Err expected = PF_Err_NONE;

    std::set<std::string> missing_suites;
    bool prefers_argb = true, supports_argb = true, prefers_bgra = false, supports_bgra = false;
    PF_Err picker_status = PF_Err_NONE;
    PF_PixelFloat picker_answer{};
    PF_PixelFloat picker_sample{};
    std::string picker_title;

    /// What was painted, in order, one line for each call that touches the surface.
    std::vector<std::string> painted;
    /// The bytes of the last image.
    std::vector<std::byte> image;

    // What the suites' functions work on.
    struct Block {
        void* master;
        std::vector<std::byte> bytes;
        int locks;
    };
    bool Fails(PF_Err meaning);
    std::map<PF_Handle, std::unique_ptr<Block>> blocks;
    std::map<std::string, int> held_suites;
    std::map<const void*, std::unique_ptr<std::string>> objects;  // what each drawing object is

  private:
    SPBasicSuite basic_{};
    PF_UtilCallbacks utils_{};
};

}  // namespace flumo::test
