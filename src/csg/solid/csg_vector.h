#pragma once

#include "csg/solid/tolerances.h"

#include <cmath>

/// A point or direction of a solid, in double precision.
struct csgVector {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    void set(double newX, double newY, double newZ) {
        x = newX;
        y = newY;
        z = newZ;
    }

    csgVector operator+(const csgVector& v) const { return {x + v.x, y + v.y, z + v.z}; }
    csgVector operator-(const csgVector& v) const { return {x - v.x, y - v.y, z - v.z}; }
    csgVector operator*(double s) const { return {x * s, y * s, z * s}; }
    csgVector& operator+=(const csgVector& v) {
        x += v.x;
        y += v.y;
        z += v.z;
        return *this;
    }
    /// Exact, component by component.
    bool operator==(const csgVector& v) const = default;

    double dot(const csgVector& v) const { return x * v.x + y * v.y + z * v.z; }
    csgVector cross(const csgVector& v) const { return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x}; }
    double length() const { return std::sqrt(x * x + y * y + z * z); }

    /// Divides by the length; a vector of length exactly 0 stays as it is.
    void normalize() {
        const double len = length();
        if (len != 0.0) {
            x /= len;
            y /= len;
            z /= len;
        }
    }

    /// Same place: every coordinate differs by less than the plane tolerance.
    bool coincides(const csgVector& v) const {
        return std::fabs(x - v.x) < csgPlaneTolerance && std::fabs(y - v.y) < csgPlaneTolerance &&
               std::fabs(z - v.z) < csgPlaneTolerance;
    }
};
