// Commands of a host by what the effect answers, for tests that expect errors.
#pragma once

#include "host/host.h"
#include "host/instance.h"
#include "tests/support/result_of.h"

namespace flumo::tests {

inline constexpr PF_Err kOutOfMemory = 4;

inline host::FrameRequest tiny_frame() {
    return {.width = 16, .height = 8};
}

inline PF_Err render_tiny(host::Instance& instance) {
    return host::test::result_of([&] { instance.render(tiny_frame()); });
}

inline PF_Err set_up(host::Host& host) {
    return host::test::result_of([&] { host.global_setup(); });
}

/// Whether version and flags stand in the out data, whatever came of the rest of global set-up.
inline bool knows_identity(const host::Host& host) {
    return host.identity().version == 566784U && host.identity().flags == 33588336 &&
           host.identity().flags2 == 142611456;
}

}  // namespace flumo::tests
