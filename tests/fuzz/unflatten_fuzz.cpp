// Any bytes as a stored gradient: reading stays within its buffer and what was read survives a second
// round bit for bit, and every other operation takes it.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "effect/gradient/value/compare_gradient.h"
#include "effect/gradient/value/flat_gradient.h"
#include "effect/gradient/value/gradient_text.h"
#include "effect/gradient/value/interpolate_gradient.h"
#include "effect/gradient/value/sample_gradient.h"

namespace {

void Require(bool held) {
    if (!held) std::abort();
}

std::vector<std::byte> Flat(const flumo::GradientStopMap& stops) {
    std::vector<std::byte> bytes(flumo::FlatGradientSize(stops));
    flumo::FlattenGradient(stops, bytes.data());
    return bytes;
}

flumo::GradientStopMap Unflat(const void* data, size_t size) {
    // A cut last stop is read whole, from what follows.
    std::vector<std::byte> padded(size + flumo::kFlatOverread);
    if (size > 0) std::memcpy(padded.data(), data, size);
    flumo::GradientStopMap stops = flumo::WhiteGradient();
    flumo::UnflattenGradient(padded.data(), static_cast<A_u_long>(size), stops);
    return stops;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const flumo::GradientStopMap stops = Unflat(data, size);
    Require(size < 4 || stops.size() * 24 < size + 20);
    const std::vector<std::byte> flat = Flat(stops);
    const flumo::GradientStopMap again = Unflat(flat.data(), flat.size());
    Require(Flat(again) == flat);
    Require(flumo::GradientsMatch(stops, again));

    for (const float t : {-1.0F, 0.0F, 0.3F, 1.0F, 2.0F, std::numeric_limits<float>::quiet_NaN()})
        flumo::SampleGradient(stops, t);
    const auto between = flumo::InterpolateGradients(stops, flumo::WhiteGradient(), 0.25);
    Require(stops.empty() || between.size() <= std::max<size_t>(stops.size(), 2));
    Require(flumo::FormatGradientText(stops).starts_with("Gradient"));
    return 0;
}
