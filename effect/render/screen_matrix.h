// From output pixels to clip space.
#pragma once

#include <array>

#include "effect_api/types.h"

namespace flumo {

/// Four columns of four rows, one after the other.
using Matrix4 = std::array<float, 16>;
using Vector4 = std::array<float, 4>;

Vector4 MatrixTimesVector(const Matrix4& matrix, const Vector4& vector);

/// What every pass takes as ModelviewProjection: x in 0 to w and y in 0 to h go to -1 to 1, z and w stay.
/// No axis is flipped: y grows with the rows of the host's buffer.
Matrix4 ScreenMatrix(A_long w, A_long h);

}  // namespace flumo
