#include "sliver_joiner.h"

#include "csg/solid/csg_face_places.h"
#include "csg/solid/csg_mesh.h"
#include "csg/solid/tolerances.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace {

/// A turned edge may free the next sliver of a row of them.
constexpr int mostPasses = 16;
/// How far (world units) a corner may leave the plane of a face.
constexpr double farthestMove = 0.005;

csgVector across(const csgVector& a, const csgVector& b, const csgVector& c) {
    return (b - a).cross(c - a);
}

bool isSliver(const csgFace& face) {
    return face.area() <= csgPlaneTolerance;
}

/// Numbers of the corners where the sides start, the longest side first.
std::array<std::size_t, 3> sidesByLength(const csgFace& face) {
    const auto length = [&](std::size_t i) {
        return (face.cornerPosition((i + 1) % 3) - face.cornerPosition(i)).length();
    };
    std::array<std::size_t, 3> sides{0, 1, 2};
    std::stable_sort(sides.begin(), sides.end(), [&](std::size_t i, std::size_t j) { return length(i) > length(j); });
    return sides;
}

std::vector<csgFace*> facesOnEdge(const csgVertex& a, const csgVertex& b) {
    std::vector<csgFace*> faces;
    std::copy_if(a.faces.begin(), a.faces.end(), std::back_inserter(faces),
                 [&](const csgFace* face) { return face->hasCorner(&b); });
    return faces;
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

class SliverJoiner {
public:
    explicit SliverJoiner(csgMesh& joinedMesh) : mesh(joinedMesh) {
        for (std::size_t part = 0; part < mesh.getParts().size(); ++part) {
            csgFaceList& list = mesh.getPart(part);
            for (std::size_t i = 0; i < list.size(); ++i)
                places.add(list, i);
        }
    }

    JoinedSlivers run() {
        JoinedSlivers result;
        std::vector<const csgFace*> slivers = findSlivers();
        for (int pass = 0; pass < mostPasses && !slivers.empty(); ++pass) {
            std::size_t joined = 0;
            for (const csgFace* face : slivers) {
                // One that another's joining took away or replaced is gone.
                if (places.contains(face) && join(*face))
                    ++joined;
            }
            if (joined == 0)
                break;
            result.joined += joined;
            compact();
            slivers = findSlivers();
        }
        result.left = slivers.size();
        if (!slivers.empty())
            result.firstLeft = slivers.front()->centre();
        return result;
    }

private:
    std::vector<const csgFace*> findSlivers() const {
        std::vector<const csgFace*> slivers;
        for (const csgFaceList& part : mesh.getParts()) {
            for (const auto& face : part) {
                if (isSliver(*face))
                    slivers.push_back(face.get());
            }
        }
        return slivers;
    }

    /// Leaves the book of places right for the faces' new indices.
    void compact() {
        places.clear();
        for (std::size_t part = 0; part < mesh.getParts().size(); ++part) {
            csgFaceList& list = mesh.getPart(part);
            list.compact();
            for (std::size_t i = 0; i < list.size(); ++i)
                places.add(list, i);
        }
    }

    bool join(const csgFace& sliver) {
        const std::array<std::size_t, 3> sides = sidesByLength(sliver);
        return std::any_of(sides.begin(), sides.end(), [&](std::size_t side) { return turnEdge(sliver, side); }) ||
               std::any_of(sides.rbegin(), sides.rend(), [&](std::size_t side) { return shrinkEdge(sliver, side); });
    }

    /// Puts the other diagonal into the sliver and its neighbour across a side.
    bool turnEdge(const csgFace& sliver, std::size_t start) {
        csgVertex& a = *sliver.corners[start];
        csgVertex& b = *sliver.corners[(start + 1) % 3];
        csgVertex& c = *sliver.corners[(start + 2) % 3];
        const std::vector<csgFace*> both = facesOnEdge(a, b);
        if (both.size() != 2)
            return false;
        const csgFace& other = both[0] == &sliver ? *both[1] : *both[0];
        const std::size_t top = (other.cornerOf(&b) + 2) % 3;
        csgVertex& d = *other.corners[top];
        if (&d == &c || &d == &a || !facesOnEdge(c, d).empty())
            return false;
        const csgVector first = across(a.position, d.position, c.position);
        const csgVector second = across(d.position, b.position, c.position);
        if (first.dot(other.normal) <= 2.0 * csgPlaneTolerance || second.dot(other.normal) <= 2.0 * csgPlaneTolerance)
            return false;
        const csgTexCoord atC = csgMesh::interpolateTexture(other, c.position);
        const csgTexCoord atD = other.tex[top];
        const csgTexCoord atA = other.tex[other.cornerOf(&a)];
        const csgTexCoord atB = other.tex[other.cornerOf(&b)];
        csgFaceList& list = places.listOf(other);
        places.append(list, {&a, &d, &c}, {atA, atD, atC});
        places.append(list, {&d, &b, &c}, {atD, atB, atC});
        places.take(other);
        places.take(sliver);
        return true;
    }

    bool shrinkEdge(const csgFace& sliver, std::size_t start) {
        csgVertex& a = *sliver.corners[start];
        csgVertex& b = *sliver.corners[(start + 1) % 3];
        return draw(a, b) || draw(b, a);
    }

    /// Moves a vertex into its neighbour; the faces on the edge between them go.
    bool draw(const csgVertex& vertex, csgVertex& into) {
        const std::vector<csgFace*> gone = facesOnEdge(vertex, into);
        const std::vector<csgVertex*> ring = neighboursOf(vertex);
        const auto isOpen = [&](const csgVertex* v) { return facesOnEdge(vertex, *v).size() % 2 != 0; };
        const std::vector<csgVertex*> beside = neighboursOf(into);
        const auto common = std::count_if(ring.begin(), ring.end(), [&](const csgVertex* v) {
            return std::find(beside.begin(), beside.end(), v) != beside.end();
        });
        // More would lay faces over one another. Where two solids meet in an edge it has four faces.
        if (static_cast<std::size_t>(common) != gone.size() || std::any_of(ring.begin(), ring.end(), isOpen))
            return false;
        const std::vector<csgFace*> faces = vertex.faces;
        const auto keepsShape = [&](const csgFace* face) {
            if (face->hasCorner(&into) || isSliver(*face))
                return true;
            const std::size_t corner = face->cornerOf(&vertex);
            const csgVector moved =
                across(into.position, face->cornerPosition((corner + 1) % 3), face->cornerPosition((corner + 2) % 3));
            return moved.dot(face->normal) > 2.0 * csgPlaneTolerance &&
                   std::fabs(face->signedDistance(into.position)) <= farthestMove;
        };
        if (!std::all_of(faces.begin(), faces.end(), keepsShape))
            return false;
        for (const csgFace* face : faces) {
            if (!face->hasCorner(&into)) {
                std::array<csgVertex*, 3> corners = face->corners;
                corners[face->cornerOf(&vertex)] = &into;
                places.append(places.listOf(*face), corners, face->tex);
            }
        }
        for (const csgFace* face : faces)
            places.take(*face);
        return true;
    }

    csgMesh& mesh;
    csgFacePlaces places;
};

} // namespace

JoinedSlivers joinSlivers(csgMesh& mesh) {
    return SliverJoiner(mesh).run();
}
