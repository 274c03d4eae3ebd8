#include "csg/solid/csg_line.h"

#include "csg/solid/csg_face.h"
#include "platform/crt_random.h"

#include <cmath>

namespace {

/// Largest turn of one coordinate by perturbDirection: 1e-5 in single precision.
constexpr double perturbation = 9.999999747378752e-6;

/// Solves two plane equations for the two coordinates that are left when the third is 0: returns the first unknown.
/// n1, n2: the planes' components along the other unknown; det: the determinant belonging to the order of the planes.
double solvePlanes(double n1, double d1, double n2, double d2, double det) {
    return (n1 * d2 - n2 * d1) / det;
}

} // namespace

csgLine::csgLine(const csgFace& f, const csgFace& g) : direction(f.normal.cross(g.normal)) {
    if (direction.length() >= csgGeometricTolerance) {
        const csgVector& n1 = f.normal;
        const csgVector& n2 = g.normal;
        const double d1 = f.plane.d;
        const double d2 = g.plane.d;
        if (std::fabs(direction.x) > csgGeometricTolerance) {
            point.y = solvePlanes(n1.z, d1, n2.z, d2, direction.x);
            point.z = solvePlanes(n2.y, d2, n1.y, d1, direction.x);
        } else if (std::fabs(direction.y) > csgGeometricTolerance) {
            point.x = solvePlanes(n2.z, d2, n1.z, d1, direction.y);
            point.z = solvePlanes(n1.x, d1, n2.x, d2, direction.y);
        } else {
            point.x = solvePlanes(n1.y, d1, n2.y, d2, direction.z);
            point.y = solvePlanes(n2.x, d2, n1.x, d1, direction.z);
        }
    }
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
