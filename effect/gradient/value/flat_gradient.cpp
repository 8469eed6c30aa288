#include "effect/gradient/value/flat_gradient.h"

#include <cstring>

namespace flumo {
namespace {

// One stop in the stored form.
struct FlatStop {
    float position;
    GradientStop stop;
};
static_assert(sizeof(FlatStop) == kFlatStopSize);
static_assert(offsetof(FlatStop, stop) == kFlatPositionSize);
static_assert(offsetof(GradientStop, kind) == 0 && offsetof(GradientStop, a) == 16);

}  // namespace

A_u_long FlatGradientSize(const GradientStopMap& stops) {
    return static_cast<A_u_long>(kFlatHeaderSize + kFlatStopSize * stops.size());
}

void FlattenGradient(const GradientStopMap& stops, void* bytes) {
    auto* out = static_cast<std::byte*>(bytes);
    const auto count = static_cast<int32_t>(stops.size());
    std::memcpy(out, &count, kFlatHeaderSize);
    out += kFlatHeaderSize;
    for (const auto& [position, stop] : stops) {
        const FlatStop flat{position, stop};
        std::memcpy(out, &flat, kFlatStopSize);
        out += kFlatStopSize;
    }
}

void UnflattenGradient(const void* bytes, A_u_long size, GradientStopMap& stops) {
    if (size < kFlatHeaderSize) return;
    const auto* in = static_cast<const std::byte*>(bytes);
    int32_t count = 0;
    std::memcpy(&count, in, kFlatHeaderSize);
    stops.clear();

    size_t offset = kFlatHeaderSize;
    for (int32_t i = 0; i < count && offset + kFlatPositionSize <= size; ++i, offset += kFlatStopSize) {
        // The stored form takes the whole of a last stop whose position is within the size, whatever follows.
        FlatStop flat;
        std::memcpy(&flat, in + offset, kFlatStopSize);
        stops[flat.position] = flat.stop;
    }
}

}  // namespace flumo
