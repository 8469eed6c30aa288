// The stored form of a gradient, as projects keep it: a signed 32-bit count, then 24 bytes a stop
// (position, kind, r, g, b, a), in memory order, without magic, version or checksum.
#pragma once

#include <cstddef>

#include "effect/gradient/value/gradient.h"

namespace flumo {

/// Bytes of the count that a stored gradient starts with.
inline constexpr size_t kFlatHeaderSize = 4;
/// Bytes of one stored stop; its first kFlatPositionSize bytes are the position.
inline constexpr size_t kFlatStopSize = 24;
inline constexpr size_t kFlatPositionSize = 4;
/// How many bytes UnflattenGradient may read past the size that it is given.
inline constexpr size_t kFlatOverread = kFlatStopSize - kFlatPositionSize;

/// Size in bytes of the stored form.
A_u_long FlatGradientSize(const GradientStopMap& stops);

/// Writes the stored form, FlatGradientSize(stops) bytes, in ascending position.
void FlattenGradient(const GradientStopMap& stops, void* bytes);

/// Replaces `stops` by those stored in `size` bytes, as many as the count names and the size reaches.
/// Fewer than four bytes leave `stops` as they are; a count below one leaves none. Of two stops at one
/// position the later stays. When only the position of the last stop is within the size, the whole
/// stop is read nevertheless, so kFlatOverread bytes after `size` must be readable.
void UnflattenGradient(const void* bytes, A_u_long size, GradientStopMap& stops);

}  // namespace flumo
