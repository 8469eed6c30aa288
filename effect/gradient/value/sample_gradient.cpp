#include "effect/gradient/value/sample_gradient.h"

#include <cmath>
#include <iterator>

namespace flumo {
namespace {

constexpr float kPi = 3.1415927F;

GradientSample Held(const GradientStop& stop) {
    return {stop.r, stop.g, stop.b, stop.a};
}

// Cosine ease mixed with 30% of the straight line. The cosine is rounded from a double: the float functions
// of two platforms differ in the last bit, and so would the frames.
float EaseSin(float u) {
    const auto cosine = static_cast<float>(std::cos(static_cast<double>(kPi * u)));
    return (0.5F - 0.5F * cosine) * 0.7F + u * 0.3F;
}

GradientSample Blend(const GradientStop& prev, const GradientStop& next, float u) {
    const float v = 1.0F - u;
    return {u * next.r + v * prev.r, u * next.g + v * prev.g, u * next.b + v * prev.b,
            u * next.a + v * prev.a};
}

GradientSample WithKind(const GradientSample& sample, A_long value, A_long* kind) {
    if (kind) *kind = value;
    return sample;
}

}  // namespace

GradientSample SampleGradient(const GradientStopMap& stops, float t, A_long* kind) {
    if (stops.empty()) return WithKind(Held({}), kStopSin, kind);
    const auto next = stops.upper_bound(t);
    if (next == stops.begin()) return WithKind(Held(next->second), next->second.kind, kind);
    const auto prev = std::prev(next);
    if (next == stops.end()) return WithKind(Held(prev->second), prev->second.kind, kind);
    if (!(prev->first <= t && t <= next->first)) return WithKind(Held({}), kStopSin, kind);
    if (prev->second.kind == kStopEdge) return WithKind(Held(prev->second), kStopEdge, kind);

    float u = (t - prev->first) / (next->first - prev->first);
    if (prev->second.kind == kStopSin) u = EaseSin(u);
    return WithKind(Blend(prev->second, next->second, u), kStopSin, kind);
}

}  // namespace flumo
