// Arbitrary-data callbacks one by one, for what ArbitraryValue does not show: buffers with guards, refusals,
// handles without an owner.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "effect_api/arbitrary.h"
#include "host/host.h"

namespace flumo::judge {

/// One callback; `fill` writes the union member's fields after the refcon.
PF_Err call_arbitrary(host::Host& host, const host::Control& control, PF_FunctionSelector selector,
                      const std::function<void(PF_ArbParamsExtra&)>& fill);

/// A buffer whose bytes beyond the announced size are watched.
struct GuardedBytes {
    explicit GuardedBytes(size_t size);
    void* data() { return bytes.data(); }
    bool guards_intact() const;

    size_t size;
    std::vector<std::byte> bytes;
};

struct Announced {
    A_u_long size = 0;
    PF_Err error = PF_Err_NONE;
};
Announced flat_size(host::Host& host, const host::Control& control, PF_ArbitraryH value);
Announced print_size(host::Host& host, const host::Control& control, PF_ArbitraryH value);
/// Writes into a buffer of the announced size.
PF_Err flatten_into(host::Host& host, const host::Control& control, PF_ArbitraryH value,
                    GuardedBytes& buffer);
PF_Err print_into(host::Host& host, const host::Control& control, PF_ArbitraryH value, GuardedBytes& buffer);
/// A copy, which the caller disposes of, or null.
PF_ArbitraryH raw_copy(host::Host& host, const host::Control& control, PF_ArbitraryH value);
PF_Err dispose(host::Host& host, const host::Control& control, PF_ArbitraryH value);

}  // namespace flumo::judge
