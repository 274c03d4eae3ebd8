#include "csg/solid/csg_predicates.h"

#include <algorithm>
#include <cmath>

namespace {

/// A point seen in a coordinate plane: swept along u, height h.
struct Projected {
    double u;
    double h;
};

Projected project(const csgVector& p, csgCoordinatePlane plane) {
    switch (plane) {
    case csgCoordinatePlane::yz:
        return {p.y, p.z};
    case csgCoordinatePlane::xz:
        return {p.x, p.z};
    default:
        return {p.x, p.y};
    }
}

double farthestCoordinate(const csgVector& p) {
    return std::max({std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
}

constexpr double nearOrigin = 1024.0;
/// What ten thousand roundings of a coordinate may sum up to: normals of small faces carry them far.
constexpr double slackOfCoordinate = 4e-12;

} // namespace

bool isNearOrigin(const csgVector& p) {
    return farthestCoordinate(p) <= nearOrigin;
}

double slackAt(const csgVector& p) {
    return isNearOrigin(p) ? csgGeometricTolerance : slackOfCoordinate * farthestCoordinate(p);
}

int sign(const csgFace& face, const csgVector& point) {
    const double distance = face.signedDistance(point);
    if (distance > csgPlaneTolerance)
        return 1;
    return distance < -csgPlaneTolerance ? -1 : 0;
}

std::array<int, 3> cornerSigns(const csgFace& corners, const csgFace& face) {
    return {sign(face, corners.cornerPosition(0)), sign(face, corners.cornerPosition(1)),
            sign(face, corners.cornerPosition(2))};
}

csgCoordinatePlane projectionOf(const csgFace& face) {
    if (std::fabs(face.normal.x) > csgGeometricTolerance)
        return csgCoordinatePlane::yz;
    if (std::fabs(face.normal.y) > csgGeometricTolerance)
        return csgCoordinatePlane::xz;
    return csgCoordinatePlane::xy;
}

csgEdgePass testInPlane(const csgVector& p, const csgVector& a, const csgVector& b, csgCoordinatePlane plane) {
    const Projected point = project(p, plane);
    const Projected from = project(a, plane);
    const Projected to = project(b, plane);
    if (std::fabs(from.u - to.u) <= csgGeometricTolerance)
        return csgEdgePass::beside;
    if (point.u < std::min(from.u, to.u) || point.u > std::max(from.u, to.u))
        return csgEdgePass::beside;
    const double slope = (to.h - from.h) / (to.u - from.u);
    const double offset = from.h - slope * from.u;
    const double height = slope * point.u + offset;
    if (height > point.h + csgGeometricTolerance)
        return csgEdgePass::above;
    return height < point.h - csgGeometricTolerance ? csgEdgePass::below : csgEdgePass::through;
}

bool contains(const csgFace& face, const csgVector& point) {
    const csgCoordinatePlane plane = projectionOf(face);
    bool above = false;
    bool below = false;
    for (std::size_t i = 0; i < 3; ++i) {
        const csgEdgePass code = testInPlane(point, face.cornerPosition(i), face.cornerPosition((i + 1) % 3), plane);
        if (code == csgEdgePass::through)
            return true;
        above = above || code == csgEdgePass::above;
        below = below || code == csgEdgePass::below;
    }
    return above && below;
}
