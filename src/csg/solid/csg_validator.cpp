#include "csg/solid/csg_validator.h"

#include "csg/solid/csg_mesh.h"

#include <algorithm>

namespace {

bool holds(const csgBounds& box, const csgVector& p) {
    return p.x >= box.min.x && p.x <= box.max.x && p.y >= box.min.y && p.y <= box.max.y && p.z >= box.min.z &&
           p.z <= box.max.z;
}

bool isCorner(const csgFace& face, const csgVertex* vertex) {
    return std::find(face.corners.begin(), face.corners.end(), vertex) != face.corners.end();
}

const char* faultOf(const csgFace& face, const csgMesh& mesh) {
    if (face.status != csgStatus::unclassified)
        return "a face has a status";
    for (std::size_t i = 0; i < 3; ++i) {
        const csgVertex& corner = *face.corners[i];
        if (corner.equals(*face.corners[(i + 1) % 3]))
            return "two corners of a face are one place";
        if (std::find(corner.faces.begin(), corner.faces.end(), &face) == corner.faces.end())
            return "a corner does not know its face";
        if (!holds(face.bounds, corner.position))
            return "a corner stands outside the box of its face";
        const csgVertex* const found = mesh.findVertex(corner);
        if (found == nullptr || !found->equals(corner))
            return "a corner is not found at its place";
    }
    return nullptr;
}

const char* faultOf(const csgFaceList& part, const csgMesh& mesh) {
    std::size_t next = 0;
    for (const csgFaceList::Run& run : part.getRuns()) {
        if (run.begin != next || run.end <= run.begin || run.end > part.size())
            return "the runs of a part do not follow one another";
        for (next = run.begin; next < run.end; ++next) {
            const csgFace* const face = part[next];
            if (face == nullptr)
                return "a slot of a part is empty";
            if (!holds(run.box, face->bounds.min) || !holds(run.box, face->bounds.max))
                return "a face reaches out of the box of its run";
            if (const char* const fault = faultOf(*face, mesh))
                return fault;
        }
    }
    return next == part.size() ? nullptr : "a face is in no run";
}

const char* faultOf(const csgVertex& vertex) {
    if (vertex.status != csgStatus::unclassified || !vertex.adjacent.empty())
        return "a vertex remembers a carve";
    for (const csgFace* const face : vertex.faces) {
        if (!isCorner(*face, &vertex))
            return "a vertex knows a face that it is no corner of";
    }
    return nullptr;
}

} // namespace

std::string brokenPromiseOf(const csgMesh& mesh) {
    std::size_t known = 0;
    for (const auto& vertex : mesh.getVertices()) {
        if (const char* const fault = faultOf(*vertex))
            return fault;
        known += vertex->faces.size();
    }
    for (const csgFaceList& part : mesh.getParts()) {
        if (const char* const fault = faultOf(part, mesh))
            return fault;
    }
    return known == 3 * mesh.countFaces() ? "" : "a vertex knows a face that is in no part";
}
