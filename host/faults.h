// Counts every call that an effect makes to its host, and fails chosen ones.
//
//   host.faults().start_recording();           // run once, see what is called
//   instance->render(request);
//   auto calls = host.faults().stop_recording();
//   host.faults().fail(k, FaultMode::kError);  // run again: the k-th call fails
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "effect_api/commands.h"

namespace flumo::host {

/// Everything that an effect can call.
enum class Callback : uint8_t {
    kCheckoutParam,
    kCheckinParam,
    kAddParam,
    kAbort,
    kProgress,
    kRegisterUi,
    kNewHandle,
    kLockHandle,
    kUnlockHandle,
    kDisposeHandle,
    kHandleSize,
    kResizeHandle,
    kAcquireSuite,
    kReleaseSuite,
    kSprintf,
    kStrcpy,
    kRegisterWithAegp,
    kGetPixelData8,
    kGetPixelData16,
    kGetPixelDataFloat,
    kGetPixelFormat,
    kIterateFloat,
    kCheckoutLayer,
    kCheckoutLayerPixels,
    kCheckinLayerPixels,
    kCheckoutOutput,
    kGetDrawingReference,
    kGetBgColor,
    kGetColor,
    kColorPicker,
    kDrawbotGetSupplier,
    kDrawbotGetSurface,
    kDrawbotNewPen,
    kDrawbotNewBrush,
    kDrawbotNewPath,
    kDrawbotNewImage,
    kDrawbotPixelLayout,
    kDrawbotRetain,
    kDrawbotRelease,
    kDrawbotPath,
    kDrawbotFillPath,
    kDrawbotStrokePath,
    kDrawbotDrawImage,
    kNotOffered,
    kCount,
};

std::string_view callback_name(Callback which);

enum class FaultMode : uint8_t {
    /// An error number, outputs untouched. For a call that returns a pointer: null.
    kError,
    /// Success, but every output is null or zero.
    kNull,
    /// The call does its work, yet an error number is returned.
    kErrorWithResult,
};

/// The ways in which a call can fail; none for calls without a result.
std::vector<FaultMode> fault_modes(Callback which);

/// Thread-safe. Nothing fails until it is asked for; counting is always on.
class Faults {
  public:
    /// Calls since the last reset, of all threads.
    uint64_t count() const { return count_.load(std::memory_order_relaxed); }
    void reset_count();
    /// Number that failed calls answer with.
    PF_Err error_number() const { return error_number_; }

    void start_recording();
    std::vector<Callback> stop_recording();

    /// Resets the count; then call number `ordinal`, counted from 0, fails once.
    void fail(uint64_t ordinal, FaultMode mode, PF_Err error_number = PF_Err_INTERNAL_STRUCT_DAMAGED);
    /// Every call of this kind fails until clear().
    void fail_every(Callback which, FaultMode mode, PF_Err error_number = PF_Err_INTERNAL_STRUCT_DAMAGED);
    void clear();
    /// Whether the planned failure has happened.
    bool happened() const { return happened_.load(); }

    /// For the host's callbacks: counts this call and says how it must fail, if at all.
    std::optional<FaultMode> next(Callback which);

  private:
    std::optional<FaultMode> planned(Callback which, uint64_t ordinal);

    std::atomic<uint64_t> count_{0};
    std::atomic<bool> busy_{false};
    std::atomic<bool> happened_{false};
    mutable std::mutex mutex_;
    bool recording_ = false;
    std::vector<Callback> recorded_;
    std::optional<uint64_t> ordinal_;
    std::optional<Callback> every_;
    FaultMode mode_ = FaultMode::kError;
    PF_Err error_number_ = PF_Err_INTERNAL_STRUCT_DAMAGED;
};

}  // namespace flumo::host
