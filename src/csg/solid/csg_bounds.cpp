#include "csg/solid/csg_bounds.h"

namespace {

void mergeAxis(double value, double& max, double& min) {
    if (value > max)
        max = value;
    else if (value < min)
        min = value;
}

bool overlapsOnAxis(double aMax, double aMin, double bMax, double bMin) {
    return !(bMax + csgGeometricTolerance < aMin || bMin - csgGeometricTolerance > aMax);
}

} // namespace

csgBounds::csgBounds(const csgVector& a, const csgVector& b, const csgVector& c) : max(a), min(a) {
    merge(b);
    merge(c);
}

void csgBounds::merge(const csgVector& point) {
    mergeAxis(point.x, max.x, min.x);
    mergeAxis(point.y, max.y, min.y);
    mergeAxis(point.z, max.z, min.z);
}

void csgBounds::merge(const csgBounds& other) {
    merge(other.max);
    merge(other.min);
}

void csgBounds::translate(double dx, double dy, double dz) {
    const csgVector offset{dx, dy, dz};
    max += offset;
    min += offset;
}

csgBounds csgBounds::grown(double margin) const {
    csgBounds box = *this;
    box.max += csgVector{margin, margin, margin};
    box.min += csgVector{-margin, -margin, -margin};
    return box;
}

bool csgBounds::contains(const csgBounds& other) const {
    return other.max.x <= max.x && other.max.y <= max.y && other.max.z <= max.z && other.min.x >= min.x &&
           other.min.y >= min.y && other.min.z >= min.z;
}

bool overlaps(const csgBounds& a, const csgBounds& b) {
    return overlapsOnAxis(a.max.x, a.min.x, b.max.x, b.min.x) && overlapsOnAxis(a.max.y, a.min.y, b.max.y, b.min.y) &&
           overlapsOnAxis(a.max.z, a.min.z, b.max.z, b.min.z);
}
