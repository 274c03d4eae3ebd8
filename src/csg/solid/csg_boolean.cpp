#include "csg/solid/csg_flood.h"

#include "core/base/expect.h"
#include "csg/solid/csg_divider.h"
#include "csg/solid/csg_joiner.h"
#include "csg/solid/csg_mender.h"
#include "csg/solid/csg_mesh.h"
#include "csg/solid/csg_splitter.h"
#include "csg/solid/csg_validator.h"

#include "core/base/log.h"

#include <algorithm>

namespace {

/// Tools of one shape whose centres are this near to one another (world units) cut out the same: what the later one
/// would still find is thinner than this, and its walls would run so close along the earlier one's that all pieces
/// between them are slivers.
constexpr double samePlace = 1e-3;
/// Vertices of a shape that is the same differ by the rounding of their places.
constexpr double sameVertex = 1e-6;

constexpr const char* beforeSplit = "Before split!!!!!!!!!!!!!!";
constexpr const char* afterFirstSplit = "After first split!!!!!!!!!!!!!!";
constexpr const char* afterSecondSplit = "After second split!!!!!!!!!!!!!!";

std::vector<csgVertex*> cornersOf(const std::vector<csgFace*>& faces) {
    std::vector<csgVertex*> corners;
    for (const csgFace* face : faces)
        corners.insert(corners.end(), face->corners.begin(), face->corners.end());
    return corners;
}

void resetVertex(csgVertex& vertex) {
    vertex.adjacent.clear();
    vertex.status = csgStatus::unclassified;
}

} // namespace

void csgMesh::splitAgainst(const csgMesh& other) {
    csgSplitter(*this, other).run();
}

void csgMesh::classifyAgainst(const csgMesh& other) {
    for (const csgFaceList& part : parts) {
        for (const auto& face : part) {
            if (!other.bounds || !overlaps(face->bounds, *other.bounds))
                face->status = csgStatus::outside;
        }
    }
    csgFlood(*this, other).run();
}

void csgMesh::carve(csgMesh& tool, CarveFinish finish) {
    if (!canBeCarvedBy(tool))
        return;
    expect(&tool != this);
    expect(brokenPromiseOf(*this).empty());
    stats = {};
    stats.facesBefore = countFaces();
    tool.stats = {};
    stats.facesAfter = stats.facesBefore;
    stats.isRepeat = !noteCrater(tool);
    if (stats.isRepeat) {
        logLine("%s\n", beforeSplit);
        logLine("%s\n", afterFirstSplit);
        logLine("%s\n", afterSecondSplit);
        return;
    }
    const std::size_t oldVertices = vertices.size();
    const csgBounds toolBox = *tool.bounds;
    csgMender mender(*this, toolBox);
    if (finish == CarveFinish::closed) {
        mender.rememberFaults();
        csgDivider(*this, toolBox).run();
    }
    std::vector<csgVertex*> touched = cornersOf(csgFlood::facesMeeting(*this, toolBox));

    logLine("%s\n", beforeSplit);
    splitAgainst(tool);
    logLine("%s\n", afterFirstSplit);
    tool.splitAgainst(*this);
    logLine("%s\n", afterSecondSplit);
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
    if (finish == CarveFinish::closed && stats.cuts + stats.removed + stats.adopted > 0)
        mender.run();
    if (finish == CarveFinish::closed && divided)
        csgJoiner(*this, toolBox).run();
    resetClassification(touched, oldVertices);
    expect(brokenPromiseOf(*this).empty());
    stats.facesAfter = countFaces();
    stats.tooSmall += tool.stats.tooSmall;
    stats.overruled += tool.stats.overruled;
    stats.keptUncut += tool.stats.keptUncut;
}

bool csgMesh::noteCrater(const csgMesh& tool) {
    const csgVector centre = tool.bounds->centre();
    std::vector<csgVector> shape;
    shape.reserve(tool.vertices.size());
    for (const auto& vertex : tool.vertices)
        shape.push_back(vertex->position - centre);
    const auto isSame = [&](const std::vector<csgVector>& known) {
        return std::equal(known.begin(), known.end(), shape.begin(), shape.end(),
                          [](const csgVector& a, const csgVector& b) { return (a - b).length() < sameVertex; });
    };
    const auto found = std::find_if(toolShapes.begin(), toolShapes.end(), isSame);
    const auto number = static_cast<std::size_t>(found - toolShapes.begin());
    const auto isHere = [&](const Crater& earlier) {
        return earlier.shape == number && (earlier.centre - centre).length() < samePlace;
    };
    if (std::any_of(craters.begin(), craters.end(), isHere))
        return false;
    if (found == toolShapes.end())
        toolShapes.push_back(std::move(shape));
    craters.push_back({centre, number});
    return true;
}

void csgMesh::removeCarvedFaces(const csgBounds& toolBox) {
    for (csgFaceList& part : parts) {
        std::vector<std::size_t> carved;
        part.forEachMeeting(toolBox, [&](std::size_t i) {
            const csgStatus status = part[i]->status;
            if (status == csgStatus::inside || status == csgStatus::coplanarSame || status == csgStatus::straddling)
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
            if (face->status != csgStatus::inside)
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
        for (csgFace* face : vertex.faces) {
            face->status = csgStatus::unclassified;
            face->partlyCut = false;
        }
        resetVertex(vertex);
    };
    for (csgVertex* vertex : touched)
        resetFaces(*vertex);
    for (std::size_t i = oldVertices; i < vertices.size(); ++i)
        resetFaces(*vertices[i]);
}
