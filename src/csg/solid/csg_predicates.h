#pragma once

#include "csg/solid/csg_face.h"
#include "csg/solid/csg_vector.h"

#include <array>
#include <cstdint>

/// How an edge passes a point in a coordinate plane.
enum class csgEdgePass : std::int32_t {
    above = 6,
    below = 7,
    through = 8,
    beside = 9 ///< passes it by, or is upright in this plane
};

/// The coordinate plane in which a face is looked at, named after its sweep and height axes.
enum class csgCoordinatePlane { yz, xz, xy };

/// Whether the slack of what is calculated is more than the rounding of coordinates: up to 1024 world units from the
/// origin. Farther out lines are anchored at the faces, and the slack grows.
bool isNearOrigin(const csgVector& p);
/// How far (world units) from where it should be a point near p is calculated.
double slackAt(const csgVector& p);

/// Side of the face's plane on which a point lies: +1 outside, -1 inside, 0 within the plane tolerance.
int sign(const csgFace& face, const csgVector& point);

/// Signs of the three corners of `corners` against the plane of `face`.
std::array<int, 3> cornerSigns(const csgFace& corners, const csgFace& face);
/// True when all three signs are the same: the face does not cross the plane.
inline bool allEqual(const std::array<int, 3>& signs) {
    return signs[0] == signs[1] && signs[1] == signs[2];
}

/// The plane in which the face does not appear as a line.
csgCoordinatePlane projectionOf(const csgFace& face);

/// Where the edge a-b passes the point in the given coordinate plane.
csgEdgePass testInPlane(const csgVector& p, const csgVector& a, const csgVector& b, csgCoordinatePlane plane);

/// True when a point of the face's plane lies in the face, edges and corners included.
bool contains(const csgFace& face, const csgVector& point);
