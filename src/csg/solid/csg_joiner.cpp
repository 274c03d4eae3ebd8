#include "csg/solid/csg_joiner.h"

#include "csg/solid/csg_mesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

namespace {

/// How far (world units) corners may be from the plane of their patch, and a vertex from its straight edge. Cut points
/// are right to some 1e-12; the vertex of a sliver, whose plane nobody knows, only has to lie in that of a larger face.
constexpr double flat = 1e-8;
/// How far texture coordinates may be from the patch's.
constexpr double sameTexture = 1e-5;
/// Faces lower than this (world units) come about only where there was one as low.
constexpr double slender = 0.02;
/// Every vertex drawn in may free its neighbours.
constexpr int mostPasses = 3;

/// Texture coordinates of the face's plane at a point.
csgTexCoord textureAt(const csgFace& face, const csgVector& p) {
    const csgVector& a = face.cornerPosition(0);
    const csgVector ab = face.cornerPosition(1) - a;
    const csgVector ac = face.cornerPosition(2) - a;
    const csgVector across = ab.cross(ac);
    const double whole = across.dot(across);
    const double s = (p - a).cross(ac).dot(across) / whole;
    const double t = ab.cross(p - a).dot(across) / whole;
    const auto [t0, t1, t2] = face.tex;
    return {t0.u + (t1.u - t0.u) * s + (t2.u - t0.u) * t, t0.v + (t1.v - t0.v) * s + (t2.v - t0.v) * t};
}

bool liesIn(const csgFace& face, const csgFace& patch) {
    for (std::size_t i = 0; i < 3; ++i) {
        const csgVector& p = face.cornerPosition(i);
        if (std::fabs(patch.signedDistance(p)) > flat)
            return false;
        const csgTexCoord tex = textureAt(patch, p);
        if (std::fabs(tex.u - face.tex[i].u) > sameTexture || std::fabs(tex.v - face.tex[i].v) > sameTexture)
            return false;
    }
    return true;
}

/// The faces of a vertex by the planes they lie in; more than two when it has to stay.
std::vector<std::vector<const csgFace*>> patchesOf(const csgVertex& vertex) {
    std::vector<csgFace*> faces = vertex.faces;
    std::stable_sort(faces.begin(), faces.end(),
                     [](const csgFace* a, const csgFace* b) { return a->area() > b->area(); });
    std::vector<std::vector<const csgFace*>> patches;
    for (const csgFace* face : faces) {
        const auto own = std::find_if(patches.begin(), patches.end(),
                                      [&](const auto& patch) { return liesIn(*face, *patch.front()); });
        if (own != patches.end())
            own->push_back(face);
        else
            patches.push_back({face});
        if (patches.size() > 2)
            break;
    }
    return patches;
}

std::vector<csgVertex*> neighboursOf(const csgVertex& vertex) {
    std::vector<csgVertex*> neighbours;
    for (const csgFace* face : vertex.faces) {
        for (csgVertex* corner : face->corners) {
            if (corner != &vertex && std::find(neighbours.begin(), neighbours.end(), corner) == neighbours.end())
                neighbours.push_back(corner);
        }
    }
    return neighbours;
}

} // namespace

void csgJoiner::run() {
    std::vector<csgVertex*> vertices;
    for (csgFaceList& part : mesh.parts) {
        part.forEachMeeting(where, [&](std::size_t i) {
            vertices.insert(vertices.end(), part[i]->corners.begin(), part[i]->corners.end());
        });
    }
    // Each once, in the order of the faces.
    std::vector<csgVertex*> once;
    std::unordered_set<const csgVertex*> known;
    for (csgVertex* vertex : vertices) {
        if (known.insert(vertex).second)
            once.push_back(vertex);
    }
    locateFaces();
    for (int pass = 0; pass < mostPasses; ++pass) {
        if (std::erase_if(once, [this](csgVertex* vertex) { return takeOut(*vertex); }) == 0)
            break;
    }
    for (csgFaceList& part : mesh.parts)
        part.compact();
}

/// Those that a vertex near the crater may have.
void csgJoiner::locateFaces() {
    csgBounds reach = where;
    for (csgFaceList& part : mesh.parts)
        part.forEachMeeting(where, [&](std::size_t i) { reach.merge(part[i]->bounds); });
    for (csgFaceList& part : mesh.parts)
        part.forEachMeeting(reach, [&](std::size_t i) { places.add(part, i); });
}

bool csgJoiner::takeOut(csgVertex& vertex) {
    const std::vector<Patch> patches = patchesOf(vertex);
    if (patches.empty() || patches.size() > 2)
        return false;
    const auto isPlaced = [this](const csgFace* face) { return places.contains(face); };
    if (!std::all_of(vertex.faces.begin(), vertex.faces.end(), isPlaced))
        return false;
    // Closed round the vertex: two faces on each edge, as many neighbours as faces.
    const std::vector<csgVertex*> neighbours = neighboursOf(vertex);
    if (neighbours.size() != vertex.faces.size())
        return false;
    std::vector<csgVertex*> ends;
    for (csgVertex* neighbour : neighbours) {
        const auto isOnEdge = [&](const csgFace* face) { return face->hasCorner(neighbour); };
        if (std::count_if(vertex.faces.begin(), vertex.faces.end(), isOnEdge) != 2)
            return false;
        if (patches.size() == 1 || std::count_if(patches[0].begin(), patches[0].end(), isOnEdge) == 1)
            ends.push_back(neighbour);
    }
    if (patches.size() == 2) {
        if (ends.size() != 2)
            return false;
        const double straight = triangleHeight(ends[0]->position, ends[1]->position, vertex.position);
        const double between = (ends[0]->position - vertex.position).dot(ends[1]->position - vertex.position);
        if (straight > flat || between >= 0.0)
            return false;
    }
    return std::any_of(ends.begin(), ends.end(), [&](csgVertex* end) { return draw(vertex, *end, patches); });
}

/// Moves the vertex into a neighbour, if the faces that are left can do with that.
bool csgJoiner::draw(csgVertex& vertex, csgVertex& into, const std::vector<Patch>& patches) {
    // Their common neighbours are the two tops of the faces that go, or faces would come to lie on one another.
    const std::vector<csgVertex*> beside = neighboursOf(into);
    const std::vector<csgVertex*> neighbours = neighboursOf(vertex);
    const auto isCommon = [&](const csgVertex* v) {
        return std::find(beside.begin(), beside.end(), v) != beside.end();
    };
    if (std::count_if(neighbours.begin(), neighbours.end(), isCommon) != 2)
        return false;
    double lowest = slender;
    for (const csgFace* face : vertex.faces)
        lowest = std::min(lowest, face->height());
    struct Moved {
        const csgFace* face;
        std::size_t corner;
        csgTexCoord tex;
    };
    std::vector<Moved> moved;
    std::vector<const csgFace*> gone;
    for (const Patch& patch : patches) {
        const csgFace& plane = *patch.front();
        for (const csgFace* face : patch) {
            if (face->hasCorner(&into)) {
                gone.push_back(face);
                continue;
            }
            const std::size_t corner = face->cornerOf(&vertex);
            const csgVector& b = face->cornerPosition((corner + 1) % 3);
            const csgVector& c = face->cornerPosition((corner + 2) % 3);
            const csgVector across = (b - into.position).cross(c - into.position);
            if (across.dot(plane.normal) <= 2.0 * csgPlaneTolerance ||
                std::fabs(plane.signedDistance(into.position)) > flat || triangleHeight(into.position, b, c) < lowest)
                return false;
            moved.push_back({face, corner, textureAt(plane, into.position)});
        }
    }
    for (const Moved& move : moved) {
        std::array<csgVertex*, 3> corners = move.face->corners;
        corners[move.corner] = &into;
        std::array<csgTexCoord, 3> tex = move.face->tex;
        tex[move.corner] = move.tex;
        places.append(places.listOf(*move.face), corners, tex);
        gone.push_back(move.face);
    }
    for (const csgFace* face : gone)
        places.take(*face);
    ++mesh.stats.joined;
    return true;
}
