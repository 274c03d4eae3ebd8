#pragma once

#include <cmath>

/// Two single-precision floats: a texture coordinate, x = s and y = t.
struct Vector2 {
    float x;
    float y;

    /// Leaves the components unset.
    Vector2() = default;
    constexpr Vector2(float xValue, float yValue) : x(xValue), y(yValue) {}

    float length() const { return std::sqrt(x * x + y * y); }
    /// Scales to length 1; a vector of length 0 is left unchanged.
    void normalize() {
        const float len = length();
        if (len == 0.0f)
            return;
        const float factor = 1.0f / len;
        x *= factor;
        y *= factor;
    }

    constexpr Vector2& operator+=(const Vector2& v) {
        x += v.x;
        y += v.y;
        return *this;
    }
    constexpr Vector2& operator-=(const Vector2& v) {
        x -= v.x;
        y -= v.y;
        return *this;
    }
    constexpr Vector2& operator*=(float s) {
        x *= s;
        y *= s;
        return *this;
    }
    constexpr Vector2& operator/=(float s) {
        x /= s;
        y /= s;
        return *this;
    }

    /// Exact comparison of both components.
    friend constexpr bool operator==(const Vector2& a, const Vector2& b) { return a.x == b.x && a.y == b.y; }
};

constexpr Vector2 operator+(const Vector2& a, const Vector2& b) {
    return {a.x + b.x, a.y + b.y};
}
constexpr Vector2 operator-(const Vector2& a, const Vector2& b) {
    return {a.x - b.x, a.y - b.y};
}
constexpr Vector2 operator*(const Vector2& v, float s) {
    return {v.x * s, v.y * s};
}
constexpr Vector2 operator/(const Vector2& v, float s) {
    return {v.x / s, v.y / s};
}
