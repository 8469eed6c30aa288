// Frames in worlds that are filled with marks before the effect gets them and examined afterwards.
#pragma once

#include <string>
#include <vector>

#include "host/instance.h"
#include "judge/engine/fixture.h"

namespace flumo::judge {

/// Depths that the effect says it renders. Throws Skipped for an effect without smart rendering.
std::vector<host::Depth> depths_of(const Fixture& fixture);
/// A step for each of them, named "NAME@BITS".
void for_each_depth(Fixture& fixture, const std::string& name, const std::function<void(host::Depth)>& body);

/// "17x9@16+3" for 17 x 9 pixels of 16 bits with 3 unused pixels after each row.
std::string name_of(const host::FrameRequest& request);

/// A picture without symmetry whose colours depend on place and `variant` alone, not on the padding.
host::Layer pattern(const host::WorldShape& shape, int variant = 0);
/// The input layer for a request: a pattern with the size, depth, row order and flags that it asks for.
host::Layer input_pattern(const host::FrameRequest& request);

/// A frame that was rendered twice into worlds with different marks.
struct ObservedFrame {
    host::World frame;
    /// Pixels that still carry the marks.
    int unwritten = 0;
    /// Other pixels that differ between the two.
    int changing = 0;
};
/// Reports bytes written outside of the pixels, two sizes, and a changed input layer. Throws HostError.
ObservedFrame observed_frame(CaseContext& context, host::Instance& instance,
                             const host::FrameRequest& request);

/// As observed_frame(); also reports pixels that are not written, and frames that differ.
host::World judged_frame(CaseContext& context, host::Instance& instance, const host::FrameRequest& request);

/// Reports two frames that should be equal.
void judge_same(CaseContext& context, const host::World& expected, const host::World& seen,
                const std::string& whose);

/// Sets every control at random: numbers within their slider's range, layers of odd sizes, values between
/// the default and a fresh one. Sets the same from the same state of `random`.
void set_randomly(host::Instance& instance, std::mt19937_64& random, host::Depth depth);
/// Gives every layer control a picture of this depth, padding, row order and flags; the size is set here.
void set_layers(host::Instance& instance, host::WorldShape shape);

}  // namespace flumo::judge
