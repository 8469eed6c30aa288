#include "effect/gradient/callbacks/gradient_callbacks.h"

#include <cstring>
#include <sstream>
#include <string>

#include "effect/gradient/value/compare_gradient.h"
#include "effect/gradient/value/flat_gradient.h"
#include "effect/gradient/value/gradient_lock.h"
#include "effect/gradient/value/gradient_text.h"
#include "effect/gradient/value/interpolate_gradient.h"
#include "effect/suites/errors.h"
#include "effect/suites/suite_handler.h"

namespace flumo {
namespace {

// The handle suite for the length of one callback.
struct HandleAccess {
    explicit HandleAccess(PF_InData* in_data) : suites(in_data->pica_basicP), handles(suites.HandleSuite()) {}

    AEGP_SuiteHandler suites;
    const PF_HandleSuite1& handles;
};

// Runs `work` on the stops of one locked gradient.
template <typename Work>
PF_Err WithStops(PF_InData* in_data, GradientHandle gradient, const Work& work) {
    const HandleAccess access(in_data);
    const GradientLock lock(access.handles, gradient);
    work(lock.Stops());
    return PF_Err_NONE;
}

PF_Err GradientDispose(PF_InData* in_data, GradientHandle gradient) {
    const HandleAccess access(in_data);
    {
        const GradientLock lock(access.handles, gradient);
        delete lock.Record().stops;
        lock.Record().stops = nullptr;
    }
    access.handles.host_dispose_handle(gradient);
    return PF_Err_NONE;
}

PF_Err GradientCopy(PF_InData* in_data, GradientHandle source, GradientHandle target) {
    const HandleAccess access(in_data);
    if (!source || !target) return PF_Err_NONE;
    const GradientLock from(access.handles, source);
    const GradientLock to(access.handles, target);
    if (from.Record().stops != to.Record().stops) to.Stops() = from.Stops();
    return PF_Err_NONE;
}

PF_Err GradientFlatSize(PF_InData* in_data, GradientHandle gradient, A_u_long* size) {
    return WithStops(in_data, gradient,
                     [size](const GradientStopMap& stops) { *size = FlatGradientSize(stops); });
}

// The buffer has the size that the host was told; its own size is not tested.
PF_Err GradientFlatten(PF_InData* in_data, GradientHandle gradient, void* bytes) {
    return WithStops(in_data, gradient,
                     [bytes](const GradientStopMap& stops) { FlattenGradient(stops, bytes); });
}

PF_Err GradientUnflatten(PF_InData* in_data, const void* bytes, A_u_long size, GradientHandle gradient) {
    return WithStops(in_data, gradient,
                     [bytes, size](GradientStopMap& stops) { UnflattenGradient(bytes, size, stops); });
}

PF_Err GradientInterpolate(PF_InData* in_data, GradientHandle left, GradientHandle right, PF_FpLong t,
                           GradientHandle result) {
    const HandleAccess access(in_data);
    const GradientLock leftLock(access.handles, left);
    const GradientLock rightLock(access.handles, right);
    const GradientLock lock(access.handles, result);
    lock.Stops() = InterpolateGradients(leftLock.Stops(), rightLock.Stops(), t);
    return PF_Err_NONE;
}

PF_Err GradientCompare(PF_InData* in_data, GradientHandle a, GradientHandle b, PF_ArbCompareResult* result) {
    const HandleAccess access(in_data);
    const GradientLock aLock(access.handles, a);
    const GradientLock bLock(access.handles, b);
    *result = GradientsMatch(aLock.Stops(), bLock.Stops()) ? PF_ArbCompare_EQUAL : PF_ArbCompare_NOT_EQUAL;
    return PF_Err_NONE;
}

PF_Err GradientPrintSize(PF_InData* in_data, GradientHandle gradient, A_u_long* size) {
    return WithStops(in_data, gradient, [size](const GradientStopMap& stops) {
        *size = static_cast<A_u_long>(FormatGradientText(stops).size() + 1);
    });
}

// Writes nothing into a buffer whose size is not exactly the printed size, larger ones included.
PF_Err GradientPrint(PF_InData* in_data, GradientHandle gradient, A_u_long size, A_char* buffer) {
    return WithStops(in_data, gradient, [size, buffer](const GradientStopMap& stops) {
        const std::string text = FormatGradientText(stops);
        if (text.size() + 1 == size) std::memcpy(buffer, text.c_str(), size);
    });
}

// The host's text is not read, so every scan ends like one of an empty text and leaves the white gradient. A
// printed gradient does not scan back.
PF_Err GradientScan(PF_InData* in_data, GradientHandle gradient) {
    PF_Err err = PF_Err_NONE;
    WithStops(in_data, gradient, [&err](GradientStopMap& stops) {
        std::istringstream empty;
        err = ParseGradientText(empty, stops);
    });
    return err;
}

// Fills the slot with a white gradient, then runs `fill` on whatever handle the slot holds.
template <typename Fill>
PF_Err NewThen(PF_InData* in_data, GradientHandle* slot, const Fill& fill) {
    const PF_Err made = GradientNew(in_data, slot);
    return made ? made : fill(*slot);
}

PF_Err RunNew(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    return GradientNew(in_data, extra->u.new_func_params.arbPH);
}

PF_Err RunDispose(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    return GradientDispose(in_data, extra->u.dispose_func_params.arbH);
}

PF_Err RunCopy(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    const auto& call = extra->u.copy_func_params;
    return NewThen(in_data, call.dst_arbPH,
                   [&](GradientHandle target) { return GradientCopy(in_data, call.src_arbH, target); });
}

PF_Err RunFlatSize(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    const auto& call = extra->u.flat_size_func_params;
    return GradientFlatSize(in_data, call.arbH, call.flat_data_sizePLu);
}

PF_Err RunFlatten(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    const auto& call = extra->u.flatten_func_params;
    return GradientFlatten(in_data, call.arbH, call.flat_dataPV);
}

PF_Err RunUnflatten(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    const auto& call = extra->u.unflatten_func_params;
    return NewThen(in_data, call.arbPH, [&](GradientHandle target) {
        return GradientUnflatten(in_data, call.flat_dataPV, call.buf_sizeLu, target);
    });
}

PF_Err RunInterpolate(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    const auto& call = extra->u.interp_func_params;
    return NewThen(in_data, call.interpPH, [&](GradientHandle target) {
        return GradientInterpolate(in_data, call.left_arbH, call.right_arbH, call.tF, target);
    });
}

PF_Err RunCompare(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    const auto& call = extra->u.compare_func_params;
    return GradientCompare(in_data, call.a_arbH, call.b_arbH, call.compareP);
}

PF_Err RunPrintSize(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    const auto& call = extra->u.print_size_func_params;
    return GradientPrintSize(in_data, call.arbH, call.print_sizePLu);
}

PF_Err RunPrint(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    const auto& call = extra->u.print_func_params;
    return GradientPrint(in_data, call.arbH, call.print_sizeLu, call.print_bufferPC);
}

PF_Err RunScan(PF_InData* in_data, PF_ArbParamsExtra* extra) {
    return NewThen(in_data, extra->u.scan_func_params.arbPH,
                   [&](GradientHandle target) { return GradientScan(in_data, target); });
}

// Indexed by the selector.
constexpr std::array kCallbacks = {RunNew,       RunDispose,   RunCopy,        RunFlatSize,
                                   RunFlatten,   RunUnflatten, RunInterpolate, RunCompare,
                                   RunPrintSize, RunPrint,     RunScan};
static_assert(kCallbacks.size() == PF_Arbitrary_SCAN_FUNC + 1);

bool IsSelector(PF_FunctionSelector selector) {
    return selector >= PF_Arbitrary_NEW_FUNC && selector <= PF_Arbitrary_SCAN_FUNC;
}

}  // namespace

bool IsGradientCallback(const PF_ArbParamsExtra* extra) {
    // The refcon is the first member of every union member, so any of them reads it.
    return IsSelector(extra->which_function) && extra->u.new_func_params.refconPV == GradientRefcon();
}

PF_Err DispatchGradientCallback(PF_InData* in_data, PF_OutData*, PF_ArbParamsExtra* extra) {
    if (!IsSelector(extra->which_function)) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    const auto callback = kCallbacks[static_cast<size_t>(extra->which_function)];
    return CommandResult([&] { return callback(in_data, extra); });
}

PF_Err GradientNew(PF_InData* in_data, GradientHandle* slot) {
    const HandleAccess access(in_data);
    OwnedHandle made = NewHandle(access.handles, sizeof(GradientRecord));
    if (!made) return PF_Err_NONE;
    {
        const GradientLock lock(access.handles, made.get());
        GradientRecord& record = lock.Record();  // first, as it may throw
        record.stops = new GradientStopMap(WhiteGradient());
    }
    *slot = made.release();
    return PF_Err_NONE;
}

}  // namespace flumo
