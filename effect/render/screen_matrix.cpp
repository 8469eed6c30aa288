#include "effect/render/screen_matrix.h"

namespace flumo {

Vector4 MatrixTimesVector(const Matrix4& matrix, const Vector4& vector) {
    Vector4 product{};
    for (size_t row = 0; row < 4; ++row) {
        for (size_t column = 0; column < 4; ++column) {
            product[row] += matrix[column * 4 + row] * vector[column];
        }
    }
    return product;
}

Matrix4 ScreenMatrix(A_long w, A_long h) {
    constexpr Matrix4 translation = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -1, -1, 0, 1};
    const std::array<Vector4, 4> scaling = {{{2.0F / static_cast<float>(w), 0, 0, 0},
                                             {0, 2.0F / static_cast<float>(h), 0, 0},
                                             {0, 0, 1, 0},
                                             {0, 0, 0, 1}}};
    Matrix4 product{};
    for (size_t column = 0; column < 4; ++column) {
        const Vector4 moved = MatrixTimesVector(translation, scaling[column]);
        for (size_t row = 0; row < 4; ++row)
            product[column * 4 + row] = moved[row];
    }
    return product;
}

}  // namespace flumo
