#include "host/values/arbitrary_value.h"

#include <algorithm>

#include "host/module/host_error.h"

namespace flumo::host {

namespace {

/// Bytes after stored data that an effect may read when the last entry is cut short.
constexpr size_t kReadAhead = 64;

void* refcon_of(const Control& control) {
    return control.definition.u.arb_d.refconPV;
}

/// One arbitrary-data callback. Throws HostError.
void ask(CommandSender& sender, const Control& control, PF_FunctionSelector selector,
         PF_ArbParamsExtra extra) {
    extra.which_function = selector;
    extra.id = control.definition.u.arb_d.id;
    const Outcome outcome = sender.send(PF_Cmd_ARBITRARY_CALLBACK, &extra);
    if (outcome.error == PF_Err_NONE) return;
    throw HostError(PF_Cmd_ARBITRARY_CALLBACK, outcome.error,
                    outcome.message.empty() ? "selector " + std::to_string(selector) : outcome.message);
}

/// A callback that makes a value. `fill` gets the record and the place of the handle.
template <class Fill>
std::shared_ptr<ArbitraryValue> make(CommandSender& sender, const Control& control,
                                     PF_FunctionSelector selector, Fill fill) {
    PF_ArbitraryH handle = nullptr;
    PF_ArbParamsExtra extra{};
    fill(extra, &handle);
    try {
        ask(sender, control, selector, extra);
    } catch (const HostError&) {
        // A part of a value may have been made before the failure.
        if (handle) const ArbitraryValue owner(sender, control, handle);
        throw;
    }
    if (!handle) throw HostError(PF_Cmd_ARBITRARY_CALLBACK, PF_Err_OUT_OF_MEMORY, "no value was made");
    return std::make_shared<ArbitraryValue>(sender, control, handle);
}

}  // namespace

ArbitraryValue::ArbitraryValue(CommandSender& sender, const Control& control, PF_ArbitraryH handle)
    : sender_(sender), control_(control), handle_(handle) {}

ArbitraryValue::~ArbitraryValue() {
    PF_ArbParamsExtra extra{};
    extra.u.dispose_func_params = {refcon_of(control_), handle_};
    try {
        ask(sender_, control_, PF_Arbitrary_DISPOSE_FUNC, extra);
    } catch (const HostError&) {
        // The accounting then reports the handle.
    }
}

std::shared_ptr<ArbitraryValue> ArbitraryValue::fresh(CommandSender& sender, const Control& control) {
    return make(sender, control, PF_Arbitrary_NEW_FUNC, [&](PF_ArbParamsExtra& extra, PF_ArbitraryH* handle) {
        extra.u.new_func_params = {refcon_of(control), handle};
    });
}

std::shared_ptr<ArbitraryValue> ArbitraryValue::default_of(CommandSender& sender, const Control& control) {
    const PF_ArbitraryH dephault = control.definition.u.arb_d.dephault;
    if (!dephault) return fresh(sender, control);
    return make(sender, control, PF_Arbitrary_COPY_FUNC,
                [&](PF_ArbParamsExtra& extra, PF_ArbitraryH* handle) {
                    extra.u.copy_func_params = {refcon_of(control), dephault, handle};
                });
}

std::shared_ptr<ArbitraryValue> ArbitraryValue::unflatten(CommandSender& sender, const Control& control,
                                                          std::span<const std::byte> bytes) {
    std::vector<std::byte> padded(bytes.begin(), bytes.end());
    padded.resize(bytes.size() + kReadAhead);
    return make(sender, control, PF_Arbitrary_UNFLATTEN_FUNC,
                [&](PF_ArbParamsExtra& extra, PF_ArbitraryH* handle) {
                    extra.u.unflatten_func_params = {refcon_of(control), static_cast<A_u_long>(bytes.size()),
                                                     padded.data(), handle};
                });
}

std::shared_ptr<ArbitraryValue> ArbitraryValue::scan(CommandSender& sender, const Control& control,
                                                     const std::string& text) {
    return make(sender, control, PF_Arbitrary_SCAN_FUNC,
                [&](PF_ArbParamsExtra& extra, PF_ArbitraryH* handle) {
                    extra.u.scan_func_params = {refcon_of(control), text.c_str(),
                                                static_cast<A_u_long>(text.size()), handle};
                });
}

std::shared_ptr<ArbitraryValue> ArbitraryValue::interpolate(const ArbitraryValue& left,
                                                            const ArbitraryValue& right, double t) {
    return make(
        left.sender_, left.control_, PF_Arbitrary_INTERP_FUNC,
        [&](PF_ArbParamsExtra& extra, PF_ArbitraryH* handle) {
            extra.u.interp_func_params = {refcon_of(left.control_), left.handle_, right.handle_, t, handle};
        });
}

std::shared_ptr<ArbitraryValue> ArbitraryValue::copy() const {
    return make(sender_, control_, PF_Arbitrary_COPY_FUNC,
                [&](PF_ArbParamsExtra& extra, PF_ArbitraryH* handle) {
                    extra.u.copy_func_params = {refcon_of(control_), handle_, handle};
                });
}

std::vector<std::byte> ArbitraryValue::flatten() const {
    A_u_long size = 0;
    PF_ArbParamsExtra extra{};
    extra.u.flat_size_func_params = {refcon_of(control_), handle_, &size};
    ask(sender_, control_, PF_Arbitrary_FLAT_SIZE_FUNC, extra);
    std::vector<std::byte> bytes(size);
    extra = {};
    extra.u.flatten_func_params = {refcon_of(control_), handle_, size, bytes.data()};
    ask(sender_, control_, PF_Arbitrary_FLATTEN_FUNC, extra);
    return bytes;
}

PF_ArbCompareResult ArbitraryValue::compare(const ArbitraryValue& other) const {
    PF_ArbCompareResult result = PF_ArbCompare_NOT_EQUAL;
    PF_ArbParamsExtra extra{};
    extra.u.compare_func_params = {refcon_of(control_), handle_, other.handle_, &result};
    ask(sender_, control_, PF_Arbitrary_COMPARE_FUNC, extra);
    return result;
}

std::string ArbitraryValue::print() const {
    A_u_long size = 0;
    PF_ArbParamsExtra extra{};
    extra.u.print_size_func_params = {refcon_of(control_), handle_, &size};
    ask(sender_, control_, PF_Arbitrary_PRINT_SIZE_FUNC, extra);
    std::string text(size, '\0');
    extra = {};
    extra.u.print_func_params = {refcon_of(control_), PF_ArbPrint_NONE, handle_, size, text.data()};
    ask(sender_, control_, PF_Arbitrary_PRINT_FUNC, extra);
    text.resize(static_cast<size_t>(std::ranges::find(text, '\0') - text.begin()));
    return text;
}

}  // namespace flumo::host
