#include "judge/engine/arbitrary_calls.h"

#include <algorithm>

namespace flumo::judge {

namespace {

constexpr size_t kGuardSize = 64;
constexpr std::byte kGuard{0x6B};

void* refcon_of(const host::Control& control) {
    return control.definition.u.arb_d.refconPV;
}

}  // namespace

PF_Err call_arbitrary(host::Host& host, const host::Control& control, PF_FunctionSelector selector,
                      const std::function<void(PF_ArbParamsExtra&)>& fill) {
    PF_ArbParamsExtra extra{};
    extra.which_function = selector;
    extra.id = control.definition.u.arb_d.id;
    extra.u.new_func_params.refconPV = refcon_of(control);
    fill(extra);
    return host.send(PF_Cmd_ARBITRARY_CALLBACK, &extra).error;
}

GuardedBytes::GuardedBytes(size_t the_size) : size(the_size), bytes(the_size + kGuardSize, kGuard) {}

bool GuardedBytes::guards_intact() const {
    return std::all_of(bytes.begin() + static_cast<std::ptrdiff_t>(size), bytes.end(),
                       [](std::byte b) { return b == kGuard; });
}

Announced flat_size(host::Host& host, const host::Control& control, PF_ArbitraryH value) {
    Announced announced;
    announced.error =
        call_arbitrary(host, control, PF_Arbitrary_FLAT_SIZE_FUNC, [&](PF_ArbParamsExtra& extra) {
            extra.u.flat_size_func_params = {refcon_of(control), value, &announced.size};
        });
    return announced;
}

Announced print_size(host::Host& host, const host::Control& control, PF_ArbitraryH value) {
    Announced announced;
    announced.error =
        call_arbitrary(host, control, PF_Arbitrary_PRINT_SIZE_FUNC, [&](PF_ArbParamsExtra& extra) {
            extra.u.print_size_func_params = {refcon_of(control), value, &announced.size};
        });
    return announced;
}

PF_Err flatten_into(host::Host& host, const host::Control& control, PF_ArbitraryH value,
                    GuardedBytes& buffer) {
    return call_arbitrary(host, control, PF_Arbitrary_FLATTEN_FUNC, [&](PF_ArbParamsExtra& extra) {
        extra.u.flatten_func_params = {refcon_of(control), value, static_cast<A_u_long>(buffer.size),
                                       buffer.data()};
    });
}

PF_Err print_into(host::Host& host, const host::Control& control, PF_ArbitraryH value, GuardedBytes& buffer) {
    return call_arbitrary(host, control, PF_Arbitrary_PRINT_FUNC, [&](PF_ArbParamsExtra& extra) {
        extra.u.print_func_params = {refcon_of(control), PF_ArbPrint_NONE, value,
                                     static_cast<A_u_long>(buffer.size), static_cast<A_char*>(buffer.data())};
    });
}

PF_ArbitraryH raw_copy(host::Host& host, const host::Control& control, PF_ArbitraryH value) {
    PF_ArbitraryH copy = nullptr;
    call_arbitrary(host, control, PF_Arbitrary_COPY_FUNC, [&](PF_ArbParamsExtra& extra) {
        extra.u.copy_func_params = {refcon_of(control), value, &copy};
    });
    return copy;
}

PF_Err dispose(host::Host& host, const host::Control& control, PF_ArbitraryH value) {
    return call_arbitrary(host, control, PF_Arbitrary_DISPOSE_FUNC, [&](PF_ArbParamsExtra& extra) {
        extra.u.dispose_func_params = {refcon_of(control), value};
    });
}

}  // namespace flumo::judge
