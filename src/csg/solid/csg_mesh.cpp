#include "csg/solid/csg_mesh.h"

#include "core/base/expect.h"

#include "csg/solid/csg_mesh_data.h"

#include "core/base/log.h"

csgMesh::~csgMesh() = default;

std::size_t csgMesh::countFaces() const {
    std::size_t count = 0;
    for (const csgFaceList& part : parts)
        count += part.size();
    return count;
}

void csgMesh::build(const csgMeshData& data) {
    clearParts();
    clearVertices();
    craters.clear();
    toolShapes.clear();
    divided = false;
    for (const csgMeshData::Part& part : data.parts) {
        csgFaceList& list = addPart();
        for (const csgMeshData::Triangle& t : part.triangles) {
            const auto& [i, j, k] = t;
            // Last corner first: the order in which vertices enter the list.
            csgVertex& c = addVertex(csgVertex(part.corners[k].position));
            csgVertex& b = addVertex(csgVertex(part.corners[j].position));
            csgVertex& a = addVertex(csgVertex(part.corners[i].position));
            makeTexturedFace(list, a, b, c, part.corners[i].tex, part.corners[j].tex, part.corners[k].tex);
        }
    }
    rebuildBounds();
    computeNormals();
}

csgVertex* csgMesh::findVertex(const csgVertex& v) const {
    const std::size_t found = grid.findFirst(v.position);
    return found != csgVertexGrid::notFound ? vertices[found].get() : nullptr;
}

csgVertex& csgMesh::addVertex(const csgVertex& v) {
    csgVertex* found = findVertex(v);
    return found != nullptr ? *found : appendVertex(v.position, csgStatus::unclassified);
}

csgVertex& csgMesh::appendVertex(const csgVector& position, csgStatus status) {
    vertices.push_back(std::make_unique<csgVertex>(position, status));
    grid.add(position);
    return *vertices.back();
}

csgFaceList& csgMesh::addPart() {
    return parts.emplace_back();
}

csgFace* csgMesh::makeFace(csgFaceList& list, csgVertex& a, csgVertex& b, csgVertex& c) {
    if (a.equals(b) || a.equals(c) || b.equals(c))
        return nullptr;
    if (triangleArea(a.position, b.position, c.position) <= csgPlaneTolerance) {
        logLine("small polygon .................................................\n");
        ++stats.tooSmall;
        return nullptr;
    }
    list.append(std::make_unique<csgFace>(a, b, c));
    return list.last();
}

csgFace* csgMesh::makeTexturedFace(csgFaceList& list, csgVertex& a, csgVertex& b, csgVertex& c, const csgTexCoord& ta,
                                   const csgTexCoord& tb, const csgTexCoord& tc) {
    csgFace* face = makeFace(list, a, b, c);
    if (face != nullptr)
        face->tex = {ta, tb, tc};
    return face;
}

std::unique_ptr<csgFace> csgMesh::removeFaceAt(csgFaceList& list, std::size_t index) {
    expect(index < list.size());
    return list.removeAt(index);
}

csgFace* csgMesh::adoptFace(const csgFace& foreign) {
    if (parts.empty())
        return nullptr;
    std::array<csgVertex*, 3> corners{};
    for (std::size_t i = 0; i < 3; ++i) {
        csgVertex* own = findVertex(*foreign.corners[i]);
        corners[i] = own != nullptr ? own : &appendVertex(foreign.cornerPosition(i), foreign.corners[i]->status);
    }
    csgFace* face = makeFace(parts.front(), *corners[0], *corners[1], *corners[2]);
    if (face != nullptr)
        face->tex = foreign.tex;
    return face;
}

void csgMesh::clearVertices() {
    expect(parts.empty() || countFaces() == 0);
    vertices.clear();
    grid.clear();
    bounds.reset();
}

void csgMesh::clearParts() {
    parts.clear();
}

void csgMesh::computeNormals() {
    for (const auto& vertex : vertices) {
        if (vertex->isNormalStale())
            vertex->computeNormal();
    }
}
