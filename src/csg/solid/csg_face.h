#pragma once

#include "csg/solid/csg_bounds.h"
#include "csg/solid/csg_status.h"
#include "csg/solid/csg_tex_coord.h"
#include "csg/solid/csg_vector.h"
#include "csg/solid/csg_vertex.h"

#include <array>

/// One triangle. Its corners, counter-clockwise seen from outside, belong to the solid and outlive it; while it lives
/// it stands in the face list of each of them. Box, normal and plane are valid from creation and follow `refresh`.
class csgFace {
public:
    /// Normal (a, b, c) and distance d: a point p lies on the plane when a x + b y + c z + d is 0.
    struct Plane {
        double a = 0.0;
        double b = 0.0;
        double c = 0.0;
        double d = 0.0;
    };

    std::array<csgVertex*, 3> corners;
    std::array<csgTexCoord, 3> tex;
    Plane plane;
    csgVector normal; ///< unit, outwards
    csgBounds bounds;
    csgStatus status = csgStatus::unclassified;
    /// While a carve runs: a cut of it was left undone, or lost a piece, so that it may lie on both sides.
    bool partlyCut = false;

    csgFace(csgVertex& a, csgVertex& b, csgVertex& c);
    ~csgFace();
    csgFace(const csgFace&) = delete;
    csgFace& operator=(const csgFace&) = delete;

    const csgVector& cornerPosition(std::size_t corner) const { return corners[corner]->position; }
    /// Number of the corner that is this vertex; 3 when none is.
    std::size_t cornerOf(const csgVertex* vertex) const;
    bool hasCorner(const csgVertex* vertex) const { return cornerOf(vertex) < corners.size(); }
    double area() const;
    /// Extent across the longest side.
    double height() const;
    csgVector centre() const;
    double signedDistance(const csgVector& p) const { return normal.dot(p) + plane.d; }
    /// Same three corners (by position) in the same cyclic order.
    bool equals(const csgFace& other) const;

    /// Recomputes box, normal and plane from the corners' positions.
    void refresh();
    /// Turns the face round: corners and texture coordinates 1 and 2 change places.
    void invert();

private:
    void computeNormal();
    void computePlane();
};

/// Half the length of the cross product of two edges.
double triangleArea(const csgVector& a, const csgVector& b, const csgVector& c);
/// Distance of the longest side from the corner that faces it; 0 when all corners are one.
double triangleHeight(const csgVector& a, const csgVector& b, const csgVector& c);
