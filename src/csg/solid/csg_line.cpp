#include "csg/solid/csg_line.h"

#include "csg/solid/csg_face.h"
#include "csg/solid/csg_predicates.h"
#include "platform/crt_random.h"

#include <algorithm>
#include <cmath>

namespace {

/// Largest turn of one coordinate by perturbDirection: 1e-5 in single precision.
constexpr double perturbation = 9.999999747378752e-6;

/// Solves two plane equations for the two coordinates that are left when the third is 0: returns the first unknown.
/// n1, n2: the planes' components along the other unknown; det: the determinant belonging to the order of the planes.
double solvePlanes(double n1, double d1, double n2, double d2, double det) {
    return (n1 * d2 - n2 * d1) / det;
}

/// The point of the line that has one coordinate 0.
csgVector pointByCoordinate(const csgFace& f, const csgFace& g, const csgVector& direction) {
    const csgVector& n1 = f.normal;
    const csgVector& n2 = g.normal;
    const double d1 = f.plane.d;
    const double d2 = g.plane.d;
    if (std::fabs(direction.x) > csgGeometricTolerance)
        return {0.0, solvePlanes(n1.z, d1, n2.z, d2, direction.x), solvePlanes(n2.y, d2, n1.y, d1, direction.x)};
    if (std::fabs(direction.y) > csgGeometricTolerance)
        return {solvePlanes(n2.z, d2, n1.z, d1, direction.y), 0.0, solvePlanes(n1.x, d1, n2.x, d2, direction.y)};
    return {solvePlanes(n1.y, d1, n2.y, d2, direction.z), solvePlanes(n2.x, d2, n1.x, d1, direction.z), 0.0};
}

/// The point of the line next to a place between the faces. The same for both orders of them, as all sums have two
/// terms.
csgVector pointBetween(const csgFace& f, const csgFace& g, const csgVector& direction) {
    const csgVector from = (f.cornerPosition(0) + g.cornerPosition(0)) * 0.5;
    const double d1 = f.normal.dot(f.cornerPosition(0) - from);
    const double d2 = g.normal.dot(g.cornerPosition(0) - from);
    const csgVector offset = g.normal.cross(direction) * d1 + direction.cross(f.normal) * d2;
    return from + offset * (1.0 / direction.dot(direction));
}

} // namespace

csgLine::csgLine(const csgFace& f, const csgFace& g) : direction(f.normal.cross(g.normal)) {
    if (direction.length() >= csgGeometricTolerance)
        point = isNearOrigin(f.cornerPosition(0)) && isNearOrigin(g.cornerPosition(0))
                    ? pointByCoordinate(f, g, direction)
                    : pointBetween(f, g, direction);
    direction.normalize();
}

csgLine::csgLine(const csgVector& along, const csgVector& through) : point(through), direction(along) {
    direction.normalize();
}

double csgLine::signedDistance(const csgVector& p) const {
    csgVector offset = p - point;
    const double distance = offset.length();
    offset.normalize();
    return offset.dot(direction) < 0.0 ? -distance : distance;
}

csgVector csgLine::intersect(const csgLine& other) const {
    const csgVector& d = direction;
    const csgVector& e = other.direction;
    const csgVector to = other.point - point;
    const double xy = d.x * e.y - d.y * e.x;
    if (std::fabs(xy) > csgGeometricTolerance)
        return point + d * ((to.x * e.y - to.y * e.x) / xy);
    const double xz = d.x * e.z - d.z * e.x;
    if (std::fabs(xz) > csgGeometricTolerance)
        return point + d * ((to.x * e.z - to.z * e.x) / xz);
    const double yz = d.y * e.z - d.z * e.y;
    if (std::fabs(yz) > csgGeometricTolerance)
        return point + d * ((to.y * e.z - to.z * e.y) / yz);
    return {};
}

csgVector csgLine::intersectPlane(const csgFace& face) const {
    const double distance = face.plane.d + face.normal.dot(point);
    const double fraction = face.normal.dot(direction);
    if (std::fabs(fraction) >= csgGeometricTolerance)
        return point + direction * (-distance / fraction);
    if (std::fabs(distance) < csgGeometricTolerance)
        return point;
    return {};
}

void csgLine::perturbDirection() {
    direction.x += crtRand() * perturbation / crtRandMax;
    direction.y += crtRand() * perturbation / crtRandMax;
    direction.z += crtRand() * perturbation / crtRandMax;
}
