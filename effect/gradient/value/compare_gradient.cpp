#include "effect/gradient/value/compare_gradient.h"

#include <algorithm>
#include <cmath>

namespace flumo {
namespace {

constexpr float kColourTolerance = 0.0001F;

bool Differs(float a, float b) {
    return std::abs(a - b) > kColourTolerance;
}

bool StopsMatch(const GradientStop& a, const GradientStop& b) {
    return a.kind == b.kind && !Differs(a.r, b.r) && !Differs(a.g, b.g) && !Differs(a.b, b.b) &&
           !Differs(a.a, b.a);
}

}  // namespace

bool GradientsMatch(const GradientStopMap& a, const GradientStopMap& b) {
    if (a.size() != b.size()) return false;
    return std::all_of(a.begin(), a.end(), [&b](const auto& entry) {
        const auto found = b.find(entry.first);
        return found != b.end() && StopsMatch(entry.second, found->second);
    });
}

}  // namespace flumo
