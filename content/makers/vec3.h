#pragma once

#include <cmath>

/// A point or direction of the makers, double precision.
struct Vec3 {
    double x = 0;
    double y = 0;
    double z = 0;
};

constexpr Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr Vec3 operator-(const Vec3& a) {
    return {-a.x, -a.y, -a.z};
}
constexpr Vec3 operator*(const Vec3& a, double s) {
    return {a.x * s, a.y * s, a.z * s};
}
constexpr Vec3 operator*(double s, const Vec3& a) {
    return a * s;
}
constexpr double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vec3& a) {
    return std::sqrt(dot(a, a));
}

/// Unit vector along a; the zero vector stays zero.
inline Vec3 normalized(const Vec3& a) {
    const double l = length(a);
    return l > 0 ? a * (1 / l) : a;
}
