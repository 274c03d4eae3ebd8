#include "render/math/matrix.h"

#include <cmath>

namespace {

constexpr std::array<float, 16> identityElements = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

} // namespace

Matrix::Matrix() : m(identityElements) {}

Matrix::Matrix(const std::array<float, 16>& values) : m(values) {}

void Matrix::loadIdentity() {
    m = identityElements;
}

Matrix Matrix::operator*(const Matrix& b) const {
    Matrix result;
    for (std::size_t column = 0; column < 16; column += 4)
        for (std::size_t row = 0; row < 4; ++row)
            result.m[column + row] = m[row] * b.m[column] + m[4 + row] * b.m[column + 1] +
                                     m[8 + row] * b.m[column + 2] + m[12 + row] * b.m[column + 3];
    return result;
}

Matrix& Matrix::operator*=(const Matrix& b) {
    *this = *this * b;
    return *this;
}

Vector3 Matrix::transform(const Vector3& p) const {
    return {m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12], m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13],
            m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14]};
}

void Matrix::setTranslation(float x, float y, float z) {
    m[12] = x;
    m[13] = y;
    m[14] = z;
}

void Matrix::rotationX(float angle) {
    loadIdentity();
    m[5] = std::cos(angle);
    m[6] = std::sin(angle);
    m[9] = -std::sin(angle);
    m[10] = std::cos(angle);
}

void Matrix::rotationY(float angle) {
    loadIdentity();
    m[0] = std::cos(angle);
    m[2] = -std::sin(angle);
    m[8] = std::sin(angle);
    m[10] = std::cos(angle);
}

void Matrix::rotationZ(float angle) {
    loadIdentity();
    m[0] = std::cos(angle);
    m[1] = std::sin(angle);
    m[4] = -std::sin(angle);
    m[5] = std::cos(angle);
}

void Matrix::setScale(double x, double y, double z) {
    m[0] = static_cast<float>(x);
    m[5] = static_cast<float>(y);
    m[10] = static_cast<float>(z);
}

Matrix rotationAbout(const Vector3& axis, float angle) {
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    const float k = 1.0f - c;
    const auto [x, y, z] = axis;
    return Matrix({c + k * x * x, k * x * y + s * z, k * x * z - s * y, 0,       //
                   k * x * y - s * z, c + k * y * y, k * y * z + s * x, 0,       //
                   k * x * z + s * y, k * y * z - s * x, c + k * z * z, 0, 0, 0, //
                   0, 1});
}
