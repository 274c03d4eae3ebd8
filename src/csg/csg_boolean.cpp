#include "csg/csg_flood.h"
#include "csg/csg_mender.h"
#include "csg/csg_mesh.h"
#include "csg/csg_splitter.h"

#include "core/log.h"

#include <algorithm>

namespace {

/// Tools whose centres are this near to one another (world units) count as set off at the same place.
constexpr double sameCentre = 1e-4;
/// By how much a tool is moved away from the place of an earlier one, once for each of them. So far that old wall and
/// new are two surfaces and the pieces between them are larger than what a cut drops; far less than can be seen.
constexpr csgVector nudge{0.0131, 0.0217, -0.0173};

std::vector<csgVertex*> cornersOf(const std::vector<csgFace*>& faces) {
    std::vector<csgVertex*> corners;
    for (const csgFace* face : faces)
        corners.insert(corners.end(), face->corners.begin(), face->corners.end());
    return corners;
}

void resetVertex(csgVertex& vertex) {
    vertex.adjacent.clear();
    vertex.status = csgUnclassified;
}

} // namespace

void csgMesh::splitAgainst(const csgMesh& other) {
    csgSplitter(*this, other).run();
}

void csgMesh::classifyAgainst(const csgMesh& other) {
    for (const csgFaceList& part : parts) {
        for (const auto& face : part) {
            if (!other.bounds || !overlaps(face->bounds, *other.bounds))
                face->status = csgOutside;
        }
    }
    csgFlood(*this, other).run();
}

void csgMesh::carve(csgMesh& tool, CarveFinish finish) {
    if (!canBeCarvedBy(tool))
        return;
    stats = {};
    stats.facesBefore = countFaces();
    tool.stats = {};
    const std::size_t oldVertices = vertices.size();
    avoidEarlierCentre(tool);
    const csgBounds toolBox = *tool.bounds;
    std::vector<csgVertex*> touched = cornersOf(csgFlood::facesMeeting(*this, toolBox));

    logLine("Before split!!!!!!!!!!!!!!\n");
    splitAgainst(tool);
    logLine("After first split!!!!!!!!!!!!!!\n");
    tool.splitAgainst(*this);
    logLine("After second split!!!!!!!!!!!!!!\n");
    // The tool's pieces may end between two rim vertices of this mesh: give it those vertices too.
    if (finish == CarveFinish::closed)
        splitAgainst(tool);

    std::vector<csgFace*> near = csgFlood::facesMeeting(*this, toolBox);
    csgFlood(*this, tool).run();
    csgFlood(tool, *this).run();
    const std::vector<csgVertex*> classified = cornersOf(near);
    touched.insert(touched.end(), classified.begin(), classified.end());

    removeCarvedFaces(toolBox);
    adoptCarvedFaces(tool);
    if (finish == CarveFinish::closed)
        csgMender(*this, toolBox).run();
    resetClassification(touched, oldVertices);
    stats.facesAfter = countFaces();
    stats.tooSmall += tool.stats.tooSmall;
    stats.overruled += tool.stats.overruled;
    stats.keptUncut += tool.stats.keptUncut;
}

void csgMesh::avoidEarlierCentre(csgMesh& tool) {
    const csgVector centre = tool.bounds->centre();
    const auto isSame = [&](const csgVector& earlier) { return (earlier - centre).length() < sameCentre; };
    const auto repeats = static_cast<double>(std::count_if(carvedCentres.begin(), carvedCentres.end(), isSame));
    carvedCentres.push_back(centre);
    if (repeats > 0.0)
        tool.translate(nudge.x * repeats, nudge.y * repeats, nudge.z * repeats);
}

void csgMesh::removeCarvedFaces(const csgBounds& toolBox) {
    for (csgFaceList& part : parts) {
        std::vector<std::size_t> carved;
        part.forEachMeeting(toolBox, [&](std::size_t i) {
            const std::int32_t status = part[i]->status;
            if (status == csgInside || status == csgCoplanarSame || status == csgStraddling)
                carved.push_back(i);
        });
        for (const std::size_t index : carved)
            part.take(index);
        part.compact();
        stats.removed += carved.size();
    }
}

void csgMesh::adoptCarvedFaces(csgMesh& tool) {
    for (const csgFaceList& part : tool.parts) {
        for (const auto& face : part) {
            if (face->status != csgInside)
                continue;
            face->invert();
            if (adoptFace(*face) != nullptr)
                ++stats.adopted;
        }
    }
}

/// Forgets statuses and adjacency, also those of vertices that no face uses any more: used again, they would pass on
/// what they were in an earlier carve.
void csgMesh::resetClassification(const std::vector<csgVertex*>& touched, std::size_t oldVertices) {
    const auto resetFaces = [](csgVertex& vertex) {
        for (csgFace* face : vertex.faces)
            face->status = csgUnclassified;
        resetVertex(vertex);
    };
    for (csgVertex* vertex : touched)
        resetFaces(*vertex);
    for (std::size_t i = oldVertices; i < vertices.size(); ++i)
        resetFaces(*vertices[i]);
}
