#pragma once

#include "render/math/matrix.h"

/// A rotation as a quaternion; the default is no rotation.
struct Quaternion {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 1.0f;

    Quaternion() = default;
    constexpr Quaternion(float xValue, float yValue, float zValue, float wValue)
        : x(xValue), y(yValue), z(zValue), w(wValue) {}
    /// The rotation by Euler angles in radians: about X, then Y, then Z.
    static Quaternion fromEuler(const Vector3& angles);

    Quaternion operator*(float s) const { return {x * s, y * s, z * s, w * s}; }
    Quaternion& operator*=(float s) { return *this = *this * s; }
    Quaternion operator+(const Quaternion& q) const { return {x + q.x, y + q.y, z + q.z, w + q.w}; }
    float dot(const Quaternion& q) const { return x * q.x + y * q.y + z * q.z + w * q.w; }
    /// Scales to length 1; a quaternion of length exactly 1 is left as it is.
    void normalize();
    Matrix toMatrix() const;
};

/// The rotation a fraction f (0 to 1) of the way from one to another, along the shorter arc.
Quaternion slerp(Quaternion q1, Quaternion q2, float f);

/// The rotation matrix of Euler angles in radians: about X, then Y, then Z.
Matrix matrixFromEuler(const Vector3& angles);
