#pragma once

#include "render/math/vector3.h"

class Matrix;

/// An axis-aligned box. A box with both corners exactly (0, 0, 0), as built, counts as empty for `merge`.
class BoundingBox {
public:
    Vector3 min{0.0f, 0.0f, 0.0f};
    Vector3 max{0.0f, 0.0f, 0.0f};

    BoundingBox() = default;
    BoundingBox(const Vector3& minCorner, const Vector3& maxCorner) : min(minCorner), max(maxCorner) {}

    /// Copies both corners as they are, min above max included.
    void set(const Vector3& minCorner, const Vector3& maxCorner);
    /// Grows the box to hold a point.
    void extend(float x, float y, float z);
    void extend(const Vector3& point) { extend(point.x, point.y, point.z); }
    /// Whether the boxes share a point; boxes that only touch do.
    bool intersects(const BoundingBox& other) const;
    /// The box around the eight transformed corners.
    BoundingBox transformed(const Matrix& matrix) const;
    /// Grows the box to hold another; an empty box takes the other's place and adds nothing itself.
    void merge(const BoundingBox& other);

private:
    bool isEmpty() const;
};
