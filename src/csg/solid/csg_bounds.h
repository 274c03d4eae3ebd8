#pragma once

#include "csg/solid/csg_vector.h"

/// Axis-aligned box of a face or a solid, in double precision.
struct csgBounds {
    csgVector max;
    csgVector min;

    csgBounds() = default;
    /// The box of one point.
    explicit csgBounds(const csgVector& point) : max(point), min(point) {}
    /// The box of a triangle.
    csgBounds(const csgVector& a, const csgVector& b, const csgVector& c);

    void merge(const csgVector& point);
    void merge(const csgBounds& other);
    void translate(double dx, double dy, double dz);
    /// Moves every side outwards by `margin`.
    csgBounds grown(double margin) const;
    bool contains(const csgBounds& other) const;
    csgVector centre() const { return (max + min) * 0.5; }
};

/// Boxes that touch, or are less than the geometric tolerance apart, overlap. Not quite symmetric in its rounding: `a`
/// is the box of the face or solid under treatment, `b` that of the other solid.
bool overlaps(const csgBounds& a, const csgBounds& b);
