#include "effect/gradient/value/interpolate_gradient.h"

#include <algorithm>
#include <iterator>

namespace flumo {
namespace {

using StopEntry = GradientStopMap::value_type;

// Weights of the left (v) and the right (u) side.
struct Weights {
    float v;
    float u;

    float operator()(float left, float right) const { return v * left + u * right; }
};

GradientStop BlendStops(const GradientStop& left, const GradientStop& right, const Weights& mix) {
    return {left.kind, mix(left.r, right.r), mix(left.g, right.g), mix(left.b, right.b),
            mix(left.a, right.a)};
}

void SetBlended(GradientStopMap& out, const StopEntry& left, const StopEntry& right, const Weights& mix) {
    out[mix(left.first, right.first)] = BlendStops(left.second, right.second, mix);
}

}  // namespace

GradientStopMap InterpolateGradients(const GradientStopMap& left, const GradientStopMap& right, double t) {
    const auto u = static_cast<float>(t);
    const Weights mix{1.0F - u, u};
    GradientStopMap out;

    // A missing stop counts as one at the other's position with the colour of a new stop.
    if (left.empty()) {
        for (const StopEntry& r : right)
            SetBlended(out, {r.first, {}}, r, mix);
        return out;
    }
    if (right.empty()) {
        for (const StopEntry& l : left)
            SetBlended(out, l, {l.first, {}}, mix);
        return out;
    }

    const auto lastLeft = std::prev(left.end());
    const auto lastRight = std::prev(right.end());
    auto l = left.begin();
    auto r = right.begin();
    for (size_t i = std::max(left.size(), right.size()); i > 0; --i) {
        SetBlended(out, *l, *r, mix);
        if (l != lastLeft) ++l;
        if (r != lastRight) ++r;
    }
    return out;
}

}  // namespace flumo
