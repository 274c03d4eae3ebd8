#pragma once

#include "render/math/vector3.h"

#include <array>

/// A plane through a point with a unit normal.
struct Plane {
    /// a, b, c, d of a·x + b·y + c·z + d = 0
    std::array<float, 4> equation;
    Vector3 origin;
    Vector3 normal;

    Plane(const Vector3& pointOnPlane, const Vector3& unitNormal)
        : equation{unitNormal.x, unitNormal.y, unitNormal.z, -unitNormal.dot(pointOnPlane)},
          origin(pointOnPlane),
          normal(unitNormal) {}
    /// Through three points; the normal points to the side from which they run counter-clockwise.
    Plane(const Vector3& p1, const Vector3& p2, const Vector3& p3) : Plane(p1, normalized((p2 - p1).cross(p3 - p1))) {}

    bool isFrontFacingTo(const Vector3& direction) const { return normal.dot(direction) <= 0.0f; }
    double signedDistanceTo(const Vector3& point) const {
        return static_cast<double>(point.dot(normal)) + static_cast<double>(equation[3]);
    }
};
