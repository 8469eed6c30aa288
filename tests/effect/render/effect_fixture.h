// Frames through the effect's entry point, one call each. The effect is linked in, so that a test can look at
// its GL objects after a frame.
#pragma once

#include <string>

#include "tests/support/look.h"

namespace flumo::test {

inline constexpr host::Depth kDepths[] = {host::Depth::k8, host::Depth::k16, host::Depth::k32};

struct FrameCase {
    Look look;
    host::FrameRequest request;
};

/// The host that the effect is applied in, in global set-up from the first test to the last.
host::Host& effect_host();
std::unique_ptr<host::Instance> instance_of(const Look& look);

/// Renders in an instance of its own. Fails the running test where the effect writes outside the frame, keeps
/// something that it was lent, breaks a rule of the host or of GL, or leaves its context to the caller.
/// Throws host::HostError.
host::World render_checked(const FrameCase& frame_case);

/// What the effect prints about the driver when it starts.
std::string driver_lines();

}  // namespace flumo::test
