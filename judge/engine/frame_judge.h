// Frames in worlds that are filled with marks before the effect gets them and examined afterwards.
#pragma once

#include <string>
#include <vector>

#include "host/instance.h"
#include "judge/engine/fixture.h"

namespace flumo::judge {

/// Depths that the effect says it renders. Throws Skipped for an effect without smart rendering.
std::vector<host::Depth> depths_of(const Fixture& fixture);

/// "17x9@16+3" for 17 x 9 pixels of 16 bits with 3 unused pixels after each row.
std::string name_of(const host::FrameRequest& request);

/// A picture without symmetry whose colours depend on place and `variant` alone, not on the padding.
host::Layer pattern(int width, int height, host::Depth depth, int row_padding, int variant = 0);

/// Renders the request twice into differently marked worlds. Reports bytes written outside of the
/// pixels, pixels that are not written, frames that differ, and a changed input layer. Throws HostError.
host::World judged_frame(CaseContext& context, host::Instance& instance, const host::FrameRequest& request);

/// Reports two frames that should be equal.
void judge_same(CaseContext& context, const host::World& expected, const host::World& seen,
                const std::string& whose);

/// Sets every control at random: numbers within their slider's range, layers of odd sizes, values between
/// the default and a fresh one. Sets the same from the same state of `random`.
void set_randomly(host::Instance& instance, std::mt19937_64& random, host::Depth depth);
/// Gives every layer control a picture of this depth.
void set_layers(host::Instance& instance, host::Depth depth, int row_padding);

}  // namespace flumo::judge
