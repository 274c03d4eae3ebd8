#include "csg/solid/csg_vertex.h"

#include "core/base/expect.h"
#include "csg/solid/csg_face.h"

#include <algorithm>

namespace {

template <typename T>
void addOnce(std::vector<T*>& list, T* entry) {
    if (std::find(list.begin(), list.end(), entry) == list.end())
        list.push_back(entry);
}

} // namespace

void csgVertex::addAdjacent(csgVertex* vertex) {
    expect(vertex != nullptr && vertex != this);
    addOnce(adjacent, vertex);
}

void csgVertex::addFace(csgFace* face) {
    addOnce(faces, face);
    markNormalStale();
}

void csgVertex::removeFace(csgFace* face) {
    expect(std::find(faces.begin(), faces.end(), face) != faces.end());
    std::erase(faces, face);
    markNormalStale();
}

void csgVertex::computeNormal() {
    csgVector sum;
    for (const csgFace* face : faces)
        sum += face->normal * face->area();
    sum.normalize();
    normal = sum;
    normalStale = false;
}
