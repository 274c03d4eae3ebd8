#pragma once

#include "csg/solid/csg_vector.h"

class csgFace;

/// An infinite line. The direction is of unit length after construction.
class csgLine {
public:
    csgVector point;
    csgVector direction;

    /// The line where the planes of two faces meet; point (0,0,0) when they are parallel.
    csgLine(const csgFace& f, const csgFace& g);
    csgLine(const csgVector& along, const csgVector& through);

    /// Distance from `point` to p, negative behind it. The place of p along the line when p lies on it.
    double signedDistance(const csgVector& p) const;
    /// Where this line meets another one; (0,0,0) when they are parallel.
    csgVector intersect(const csgLine& other) const;
    /// Where this line meets a face's plane: `point` when it lies in the plane, (0,0,0) when it runs beside it.
    csgVector intersectPlane(const csgFace& face) const;
    /// Turns the direction by at most 1e-5 in each coordinate, drawn from the game's random stream.
    void perturbDirection();
};
