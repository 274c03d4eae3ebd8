#include "csg/solid/csg_face.h"

#include <algorithm>
#include <utility>

namespace {

csgVector edgeCross(const csgVector& a, const csgVector& b, const csgVector& c) {
    return (b - a).cross(c - a);
}

} // namespace

csgFace::csgFace(csgVertex& a, csgVertex& b, csgVertex& c) : corners{&a, &b, &c} {
    for (csgVertex* corner : corners)
        corner->addFace(this);
    bounds = csgBounds(a.position, b.position, c.position);
    computeNormal();
    computePlane();
}

csgFace::~csgFace() {
    for (csgVertex* corner : corners)
        corner->removeFace(this);
}

std::size_t csgFace::cornerOf(const csgVertex* vertex) const {
    return static_cast<std::size_t>(std::find(corners.begin(), corners.end(), vertex) - corners.begin());
}

double csgFace::area() const {
    return triangleArea(cornerPosition(0), cornerPosition(1), cornerPosition(2));
}

double csgFace::height() const {
    return triangleHeight(cornerPosition(0), cornerPosition(1), cornerPosition(2));
}

csgVector csgFace::centre() const {
    const csgVector sum = cornerPosition(0) + cornerPosition(1) + cornerPosition(2);
    return {sum.x / 3.0, sum.y / 3.0, sum.z / 3.0};
}

bool csgFace::equals(const csgFace& other) const {
    for (std::size_t shift = 0; shift < 3; ++shift) {
        if (corners[0]->equals(*other.corners[shift]) && corners[1]->equals(*other.corners[(shift + 1) % 3]) &&
            corners[2]->equals(*other.corners[(shift + 2) % 3]))
            return true;
    }
    return false;
}

void csgFace::refresh() {
    bounds = csgBounds(cornerPosition(0), cornerPosition(1), cornerPosition(2));
    computeNormal();
    computePlane();
    for (csgVertex* corner : corners)
        corner->markNormalStale();
}

void csgFace::invert() {
    std::swap(corners[1], corners[2]);
    std::swap(tex[1], tex[2]);
    normal = normal * -1.0;
    computePlane();
    for (csgVertex* corner : corners)
        corner->markNormalStale();
}

void csgFace::computeNormal() {
    normal = edgeCross(cornerPosition(0), cornerPosition(1), cornerPosition(2));
    normal.normalize();
}

void csgFace::computePlane() {
    plane = {normal.x, normal.y, normal.z, -normal.dot(cornerPosition(0))};
}

double triangleArea(const csgVector& a, const csgVector& b, const csgVector& c) {
    return edgeCross(a, b, c).length() / 2.0;
}

double triangleHeight(const csgVector& a, const csgVector& b, const csgVector& c) {
    const double longest = std::max({(b - a).length(), (c - b).length(), (a - c).length()});
    return longest > 0.0 ? edgeCross(a, b, c).length() / longest : 0.0;
}
