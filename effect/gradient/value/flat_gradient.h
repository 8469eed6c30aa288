// The stored form of a gradient, as projects keep it: a signed 32-bit count, then 24 bytes a stop
// (position, kind, r, g, b, a), in memory order, without magic, version or checksum.
#pragma once

#include <cstddef>

#include "effect/gradient/value/gradient.h"

namespace flumo {

/// Bytes of the count that a stored gradient starts with.
inline constexpr std::size_t kFlatHeaderSize = 4;
/// Bytes of one stored stop; its first kFlatPositionSize bytes are the position.
inline constexpr std::size_t kFlatStopSize = 24;
inline constexpr std::size_t kFlatPositionSize = 4;
/// How far UnflattenGradient may read behind the size that it is given.
inline constexpr std::size_t kFlatOverread = kFlatStopSize - kFlatPositionSize;

/// Size in bytes of the stored form.
A_u_long FlatGradientSize(const GradientStopMap& stops);

/// Writes the stored form, FlatGradientSize(stops) bytes, in ascending position.
void FlattenGradient(const GradientStopMap& stops, void* bytes);

/// Replaces `stops` by those stored in `size` bytes, as many as the count names and the size reaches.
/// Fewer than four bytes leave `stops` as they are; a count below one leaves none. Of two stops at one
/// position the later stays. A last stop whose position lies within the size but whose rest does not
/// is stored whole from whatever follows, so kFlatOverread bytes behind `size` must be readable.
void UnflattenGradient(const void* bytes, A_u_long size, GradientStopMap& stops);

}  // namespace flumo
