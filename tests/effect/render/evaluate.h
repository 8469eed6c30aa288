// Single functions of the main fragment text, evaluated on the driver at hand:
//     evaluate("vec4(rand(a.xy))", points)[i][0]
#pragma once

#include <span>
#include <string>
#include <vector>

#include "effect/params/param_snapshot.h"
#include "tests/effect/render/gl_scope.h"
#include "tests/effect/render/noise_twin.h"

namespace flumo::test {

/// Arguments of one evaluation: in the expression they are the vec4s a (0 to 3), b (4 to 7) and c (8 to 11).
using Point = std::array<float, 12>;

/// The value of a vec4 expression at each point; it may call every function and read every uniform.
std::vector<Texel> evaluate(const std::string& expression, std::span<const Point> points,
                            const ParamSnapshot& controls = {});

/// llvmpipe and softpipe: sines good to the last bits, no fused multiply-add in sums.
bool is_software_driver();

/// The driver's own hashes, kept from the first time that they were asked for. With them a twin needs none of
/// the driver's sines. Lines go up to 1000, cells reach 40 to all sides; std::out_of_range beyond.
double driver_rand(int line, float seed);
twin::Vec2 driver_hash2(int x, int y);

}  // namespace flumo::test
