#pragma once

#include "core/base/expect.h"
#include "render/math/vector3.h"

#include <array>

/// A 4 x 4 single-precision matrix laid out as OpenGL loads it: column-major, element (row r, column c) at c * 4 + r,
/// translation in elements 12 to 14. Points are columns multiplied from the right. Angles are radians.
class Matrix {
public:
    /// The identity.
    Matrix();
    /// The sixteen elements in storage order: the first four are the first column.
    explicit Matrix(const std::array<float, 16>& values);

    void loadIdentity();

    float& operator[](int index) {
        expect(index >= 0 && index < 16);
        return m[static_cast<std::size_t>(index)];
    }
    float operator[](int index) const {
        expect(index >= 0 && index < 16);
        return m[static_cast<std::size_t>(index)];
    }
    /// The sixteen floats as glMultMatrixf takes them.
    const float* data() const { return m.data(); }
    float* data() { return m.data(); }

    /// this x b: b is applied to a point first.
    Matrix operator*(const Matrix& b) const;
    Matrix& operator*=(const Matrix& b);

    /// The point with w = 1, without perspective division.
    Vector3 transform(const Vector3& point) const;

    /// Sets the translation part; nothing else changes.
    void setTranslation(float x, float y, float z);
    Vector3 getTranslation() const { return {m[12], m[13], m[14]}; }

    /// The whole matrix becomes a rotation about one axis.
    void rotationX(float angle);
    void rotationY(float angle);
    void rotationZ(float angle);
    /// Sets the diagonal; nothing else changes.
    void setScale(double x, double y, double z);

    /// Debugging aid: shows the elements in a message box, a column a line.
    void print() const;

private:
    std::array<float, 16> m;
};

/// The rotation about a unit axis by an angle, counter-clockwise when seen against the axis.
Matrix rotationAbout(const Vector3& axis, float angle);
