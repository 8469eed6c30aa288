#include <array>
#include <cmath>

#include "tests/effect/render/noise_twin.h"

namespace flumo::twin {
namespace {

using Corner = std::array<int, 3>;

// Wraps a whole number to 0 to 289 in single precision, as the program does: at multiples of 289 the rounded
// reciprocal decides between 0 and 289, and the two are different hashes in the end.
float wrap289(float x) {
    return x - std::floor(x * (1.0f / 289.0f)) * 289.0f;
}

float permuted(float x) {
    return wrap289((x * 34.0f + 1.0f) * x);
}  // whole numbers below 2^24: exact

int corner_hash(const std::array<float, 3>& cell, const Corner& corner) {
    float state = 0;
    for (size_t axis : {2u, 1u, 0u}) {
        state = permuted(state + cell[axis] + static_cast<float>(corner[axis]));
    }
    return static_cast<int>(state);
}

// One of 49 directions: a point of a 7 x 7 grid over -1 to 1, folded onto an octahedron. Points on the fold's
// edge |x| + |y| = 1 go by the rounding of single precision, so the grid is built in it.
Vec3 direction(int hash) {
    const int ring = hash % 49;
    const float step = 2.0f * 0.142857142857f;
    const float start = 0.5f * 0.142857142857f - 1.0f;
    const float x = static_cast<float>(ring / 7) * step + start;
    const float y = static_cast<float>(ring % 7) * step + start;
    const float height = 1.0f - std::fabs(x) - std::fabs(y);
    if (height > 0) return {x, y, height};
    return {x - std::copysign(1.0, x), y - std::copysign(1.0, y), height};
}

// A linear stand-in for 1 / sqrt(r) around the lengths that occur.
double inverse_length(const Vec3& v) {
    return 1.79284291400159 - 0.85373472095314 * (v.x * v.x + v.y * v.y + v.z * v.z);
}

double contribution(const Vec3& offset, const Vec3& gradient) {
    const double reach = 0.6 - (offset.x * offset.x + offset.y * offset.y + offset.z * offset.z);
    if (reach <= 0) return 0;
    const double slope = offset.x * gradient.x + offset.y * gradient.y + offset.z * gradient.z;
    return std::pow(reach, 4) * slope * inverse_length(gradient);
}

// The four corners of the tetrahedron around an offset from the cell's origin: along the largest coordinate
// first, then along the two largest. Equal coordinates count as "at least" in the cyclic order x, y, z.
std::array<Corner, 4> corners_around(const std::array<double, 3>& offset) {
    std::array<Corner, 4> corners{Corner{0, 0, 0}, Corner{}, Corner{}, Corner{1, 1, 1}};
    for (size_t axis = 0; axis < 3; ++axis) {
        const bool beats_next = offset[axis] >= offset[(axis + 1) % 3];
        const bool beats_last = offset[axis] > offset[(axis + 2) % 3];
        corners[1][axis] = beats_next && beats_last;
        corners[2][axis] = beats_next || beats_last;
    }
    return corners;
}

}  // namespace

double simplex(Vec3 v) {
    const double skew = (v.x + v.y + v.z) / 3;
    const std::array<double, 3> cell{std::floor(v.x + skew), std::floor(v.y + skew), std::floor(v.z + skew)};
    const double unskew = (cell[0] + cell[1] + cell[2]) / 6;
    const std::array<double, 3> offset{v.x - cell[0] + unskew, v.y - cell[1] + unskew,
                                       v.z - cell[2] + unskew};

    std::array<float, 3> wrapped{};
    for (size_t axis = 0; axis < 3; ++axis)
        wrapped[axis] = wrap289(static_cast<float>(cell[axis]));
    double sum = 0;
    int number = 0;
    for (const Corner& corner : corners_around(offset)) {
        const double shift = number++ / 6.0;
        sum += contribution(
            {offset[0] - corner[0] + shift, offset[1] - corner[1] + shift, offset[2] - corner[2] + shift},
            direction(corner_hash(wrapped, corner)));
    }
    return 42 * sum;
}

}  // namespace flumo::twin
