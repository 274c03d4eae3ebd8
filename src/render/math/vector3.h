#pragma once

#include <cmath>

/// Three single-precision floats: a position, direction, normal, colour without alpha or set of Euler angles.
struct Vector3 {
    float x;
    float y;
    float z;

    /// Leaves the components unset.
    Vector3() = default;
    constexpr Vector3(float xValue, float yValue, float zValue) : x(xValue), y(yValue), z(zValue) {}
    /// Copies three floats that follow one another in memory.
    explicit constexpr Vector3(const float* values) : x(values[0]), y(values[1]), z(values[2]) {}

    constexpr float dot(const Vector3& v) const { return x * v.x + y * v.y + z * v.z; }
    constexpr Vector3 cross(const Vector3& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    constexpr float lengthSquared() const { return x * x + y * y + z * z; }
    float length() const { return std::sqrt(lengthSquared()); }
    /// Scales to length 1; a vector of length 0 is left unchanged.
    void normalize() {
        const float len = length();
        if (len == 0.0f)
            return;
        const float factor = 1.0f / len;
        x *= factor;
        y *= factor;
        z *= factor;
    }

    constexpr Vector3& operator+=(const Vector3& v) {
        x += v.x;
        y += v.y;
        z += v.z;
        return *this;
    }
    constexpr Vector3& operator-=(const Vector3& v) {
        x -= v.x;
        y -= v.y;
        z -= v.z;
        return *this;
    }
    constexpr Vector3& operator*=(float s) {
        x *= s;
        y *= s;
        z *= s;
        return *this;
    }
    constexpr Vector3& operator/=(float s) {
        x /= s;
        y /= s;
        z /= s;
        return *this;
    }

    /// Exact comparison of all three components.
    friend constexpr bool operator==(const Vector3& a, const Vector3& b) {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    }
};

constexpr Vector3 operator+(const Vector3& a, const Vector3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr Vector3 operator-(const Vector3& a, const Vector3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr Vector3 operator+(const Vector3& v, float s) {
    return {v.x + s, v.y + s, v.z + s};
}
constexpr Vector3 operator-(const Vector3& v, float s) {
    return {v.x - s, v.y - s, v.z - s};
}
constexpr Vector3 operator*(const Vector3& v, float s) {
    return {v.x * s, v.y * s, v.z * s};
}
constexpr Vector3 operator/(const Vector3& v, float s) {
    return {v.x / s, v.y / s, v.z / s};
}
/// Component-wise product.
constexpr Vector3 operator*(const Vector3& a, const Vector3& b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}
/// Component-wise quotient.
constexpr Vector3 operator/(const Vector3& a, const Vector3& b) {
    return {a.x / b.x, a.y / b.y, a.z / b.z};
}

/// The vector scaled to length 1; the zero vector stays zero.
inline Vector3 normalized(Vector3 v) {
    v.normalize();
    return v;
}
