#include "host/faults.h"

#include <utility>

namespace flumo::host {

namespace {

/// The ways in which a kind of call can fail.
/// What is given back is returned even when the host reports an error.
enum class Failing { kNever, kNullOnly, kErrorOnly, kErrorOrNull, kAcquire, kGiveBack };

struct CallbackRow {
    std::string_view name;
    Failing failing;
};

constexpr CallbackRow kRows[] = {
    {"checkout_param", Failing::kErrorOnly},
    {"checkin_param", Failing::kGiveBack},
    {"add_param", Failing::kErrorOnly},
    {"abort", Failing::kErrorOnly},
    {"progress", Failing::kErrorOnly},
    {"register_ui", Failing::kErrorOnly},
    {"host_new_handle", Failing::kNullOnly},
    {"host_lock_handle", Failing::kNullOnly},
    {"host_unlock_handle", Failing::kNever},
    {"host_dispose_handle", Failing::kNever},
    {"host_get_handle_size", Failing::kNullOnly},
    {"host_resize_handle", Failing::kErrorOnly},
    {"AcquireSuite", Failing::kAcquire},
    {"ReleaseSuite", Failing::kGiveBack},
    {"sprintf", Failing::kNever},
    {"strcpy", Failing::kNever},
    {"AEGP_RegisterWithAEGP", Failing::kErrorOnly},
    {"get_pixel_data8", Failing::kErrorOrNull},
    {"get_pixel_data16", Failing::kErrorOrNull},
    {"get_pixel_data_float", Failing::kErrorOrNull},
    {"PF_GetPixelFormat", Failing::kErrorOrNull},
    {"iterate", Failing::kErrorOnly},
    {"checkout_layer", Failing::kErrorOnly},
    {"checkout_layer_pixels", Failing::kErrorOnly},
    {"checkin_layer_pixels", Failing::kGiveBack},
    {"checkout_output", Failing::kErrorOnly},
    {"PF_GetDrawingReference", Failing::kErrorOrNull},
    {"PF_AppGetBgColor", Failing::kErrorOnly},
    {"PF_AppGetColor", Failing::kErrorOnly},
    {"PF_AppColorPickerDialog", Failing::kErrorOnly},
    {"GetSupplier", Failing::kErrorOrNull},
    {"GetSurface", Failing::kErrorOrNull},
    {"NewPen", Failing::kErrorOrNull},
    {"NewBrush", Failing::kErrorOrNull},
    {"NewPath", Failing::kErrorOrNull},
    {"NewImageFromBuffer", Failing::kErrorOrNull},
    {"pixel layout question", Failing::kErrorOrNull},
    {"RetainObject", Failing::kErrorOnly},
    {"ReleaseObject", Failing::kGiveBack},
    {"path operation", Failing::kErrorOnly},
    {"FillPath", Failing::kErrorOnly},
    {"StrokePath", Failing::kErrorOnly},
    {"DrawImage", Failing::kErrorOnly},
    {"operation that is not offered", Failing::kNever},
};
static_assert(std::size(kRows) == static_cast<size_t>(Callback::kCount));

const CallbackRow& row_of(Callback which) {
    return kRows[static_cast<size_t>(which)];
}

}  // namespace

std::string_view callback_name(Callback which) {
    return row_of(which).name;
}

std::vector<FaultMode> fault_modes(Callback which) {
    switch (row_of(which).failing) {
        case Failing::kNullOnly:
            return {FaultMode::kNull};
        case Failing::kErrorOnly:
            return {FaultMode::kError};
        case Failing::kErrorOrNull:
            return {FaultMode::kError, FaultMode::kNull};
        case Failing::kAcquire:
            return {FaultMode::kError, FaultMode::kNull, FaultMode::kErrorWithResult};
        case Failing::kGiveBack:
            return {FaultMode::kErrorWithResult};
        case Failing::kNever:
            break;
    }
    return {};
}

void Faults::reset_count() {
    count_ = 0;
}

void Faults::start_recording() {
    std::lock_guard guard(mutex_);
    recorded_.clear();
    recording_ = true;
    count_ = 0;
    busy_ = true;
}

std::vector<Callback> Faults::stop_recording() {
    std::lock_guard guard(mutex_);
    recording_ = false;
    busy_ = ordinal_ || every_;
    return std::exchange(recorded_, {});
}

void Faults::fail(uint64_t ordinal, FaultMode mode, PF_Err error_number) {
    std::lock_guard guard(mutex_);
    ordinal_ = ordinal;
    every_.reset();
    mode_ = mode;
    error_number_ = error_number;
    count_ = 0;
    happened_ = false;
    busy_ = true;
}

void Faults::fail_every(Callback which, FaultMode mode, PF_Err error_number) {
    std::lock_guard guard(mutex_);
    every_ = which;
    ordinal_.reset();
    mode_ = mode;
    error_number_ = error_number;
    happened_ = false;
    busy_ = true;
}

void Faults::clear() {
    std::lock_guard guard(mutex_);
    ordinal_.reset();
    every_.reset();
    busy_ = recording_;
}

std::optional<FaultMode> Faults::next(Callback which) {
    const uint64_t ordinal = count_.fetch_add(1, std::memory_order_relaxed);
    if (!busy_.load(std::memory_order_relaxed)) return std::nullopt;
    std::lock_guard guard(mutex_);
    if (recording_) recorded_.push_back(which);
    return planned(which, ordinal);
}

std::optional<FaultMode> Faults::planned(Callback which, uint64_t ordinal) {
    if (ordinal_ != ordinal && every_ != which) return std::nullopt;
    happened_ = true;
    return mode_;
}

}  // namespace flumo::host
