#include "csg/csg_face.h"
#include "csg/csg_line.h"
#include "csg/csg_mesh.h"
#include "csg/csg_segment.h"

#include "core/log.h"

#include <array>
#include <cmath>
#include <initializer_list>

namespace {

struct Corner {
    csgVertex* vertex;
    csgTexCoord tex;
};

/// One end of the overlap of the two segments.
struct CutEnd {
    double distance;
    csgVector position;
    std::int32_t type;
};

CutEnd startOfCut(const csgSegment& s, const csgSegment& t) {
    if (t.start.distance > s.start.distance + csgPlaneTolerance)
        return {t.start.distance, t.start.position, s.middleType};
    return {s.start.distance, s.start.position, s.start.type};
}

CutEnd endOfCut(const csgSegment& s, const csgSegment& t) {
    if (t.end.distance < s.end.distance - csgPlaneTolerance)
        return {t.end.distance, t.end.position, s.middleType};
    return {s.end.distance, s.end.position, s.end.type};
}

/// The eight ways to cut one face. Each appends its pieces to the list and returns how many there are.
class CutPatterns {
public:
    CutPatterns(csgMesh& owner, csgFaceList& target, const csgFace& cut, std::size_t& wantedPieces)
        : mesh(owner), list(target), face(cut), wanted(wantedPieces) {}

    /// Number (0 to 2) of the corner where the edge between two corners starts.
    std::size_t edgeBetween(const csgVertex* v1, const csgVertex* v2) const {
        for (std::size_t a = 0; a < 2; ++a) {
            if ((v1 == face.corners[a] && v2 == face.corners[a + 1]) ||
                (v2 == face.corners[a] && v1 == face.corners[a + 1]))
                return a;
        }
        return 2;
    }

    std::size_t onePointOnEdge(const csgVector& point, std::size_t a) {
        const Corner n = fresh(point);
        return finish(1, {{at(a), n, at(a + 2)}, {n, at(a + 1), at(a + 2)}});
    }
    std::size_t onePointOnEdge(const csgVector& point, const csgVertex& first) {
        const std::size_t a = cornerEqual(first);
        const Corner n = fresh(point);
        return finish(2, {{at(a), n, at(a + 2)}, {n, at(a + 1), at(a + 2)}});
    }
    std::size_t twoPointsOnEdge(const csgVector& first, const csgVector& second, std::size_t a) {
        const Corner n1 = fresh(first);
        const Corner n2 = fresh(second);
        return finish(3, {{at(a), n1, at(a + 2)}, {n1, n2, at(a + 2)}, {n2, at(a + 1), at(a + 2)}});
    }
    std::size_t innerPointFromCorner(const csgVector& point, const csgVertex& corner) {
        const std::size_t a = cornerEqual(corner);
        const Corner n = fresh(point);
        return finish(4, {{at(a), at(a + 1), n}, {at(a + 1), at(a + 2), n}, {at(a + 2), at(a), n}});
    }
    std::size_t cornerCut(const csgVector& first, const csgVector& second, const csgVertex& v1, const csgVertex& v2);
    std::size_t oneInnerPoint(const csgVector& point) {
        const Corner n = fresh(point);
        return finish(6, {{at(0), at(1), n}, {at(1), at(2), n}, {at(2), at(0), n}});
    }
    std::size_t edgeAndInnerPoint(const csgVector& edgePoint, const csgVector& innerPoint, const csgVertex& first) {
        const std::size_t a = cornerEqual(first);
        const Corner n1 = fresh(edgePoint);
        const Corner n2 = fresh(innerPoint);
        return finish(7, {{at(a), n1, n2}, {n1, at(a + 1), n2}, {at(a + 1), at(a + 2), n2}, {at(a + 2), at(a), n2}});
    }
    std::size_t twoInnerPoints(const csgVector& p, const csgVector& q);

private:
    using Triangle = std::array<Corner, 3>;

    Corner at(std::size_t corner) const {
        const std::size_t i = corner % 3;
        return {face.corners[i], face.tex[i]};
    }
    Corner fresh(const csgVector& position) {
        return {&mesh.newCutVertex(position), csgMesh::interpolateTexture(face, position)};
    }
    /// The first corner that coincides with v; the last one when none of the others does.
    std::size_t cornerEqual(const csgVertex& v) const {
        if (face.corners[0]->equals(v))
            return 0;
        return face.corners[1]->equals(v) ? 1 : 2;
    }
    /// The corner that the two points are most nearly in line with. Of equals the last one: a piece may then fold over
    /// its neighbour, which changes neither the surface seen nor the volume.
    std::size_t linedCorner(const csgVector& p, const csgVector& q) const;
    std::size_t finish(int pattern, std::initializer_list<Triangle> triangles);

    csgMesh& mesh;
    csgFaceList& list;
    const csgFace& face;
    std::size_t& wanted;
};

std::size_t CutPatterns::finish(int pattern, std::initializer_list<Triangle> triangles) {
    std::size_t made = 0;
    for (const Triangle& t : triangles) {
        if (mesh.makeTexturedFace(list, *t[0].vertex, *t[1].vertex, *t[2].vertex, t[0].tex, t[1].tex, t[2].tex))
            ++made;
    }
    if (made == 0)
        logLine("kill %d\n", pattern);
    wanted = triangles.size();
    return made;
}

std::size_t CutPatterns::cornerCut(const csgVector& first, const csgVector& second, const csgVertex& v1,
                                   const csgVertex& v2) {
    const Corner n1 = fresh(first);
    const Corner n2 = fresh(second);
    // The corner that is cut off lies between the two edges; the pairs are tried in a fixed order.
    struct Case {
        std::size_t edge1;
        std::size_t edge2;
        std::size_t separated;
        bool firstEnters; ///< n1 lies on the edge that leads to the separated corner
    };
    constexpr std::array<Case, 5> cases{Case{0, 1, 1, true}, Case{1, 0, 1, false}, Case{1, 2, 2, true},
                                        Case{2, 1, 2, false}, Case{2, 0, 0, true}};
    Case match{0, 2, 0, false};
    for (const Case& candidate : cases) {
        if (v1.equals(*face.corners[candidate.edge1]) && v2.equals(*face.corners[candidate.edge2])) {
            match = candidate;
            break;
        }
    }
    const Corner s = at(match.separated);
    const Corner x = at(match.separated + 2);
    const Corner y = at(match.separated + 1);
    const Corner entering = match.firstEnters ? n1 : n2;
    const Corner leaving = match.firstEnters ? n2 : n1;
    return finish(5, {{x, entering, leaving}, {x, leaving, y}, {entering, s, leaving}});
}

std::size_t CutPatterns::linedCorner(const csgVector& p, const csgVector& q) const {
    const csgVector along = p - q;
    std::array<double, 3> d{};
    for (std::size_t i = 0; i < 3; ++i) {
        csgVector toEnd = q - face.cornerPosition(i);
        toEnd.normalize();
        d[i] = std::fabs(along.dot(toEnd));
    }
    if (d[0] > d[1] && d[0] > d[2])
        return 0;
    return d[1] > d[2] && d[1] > d[0] ? 1 : 2;
}

std::size_t CutPatterns::twoInnerPoints(const csgVector& p, const csgVector& q) {
    const std::size_t lined = linedCorner(p, q);
    const csgVector& corner = face.cornerPosition(lined);
    const bool pIsFar = (p - corner).length() > (q - corner).length();
    const Corner n1 = fresh(pIsFar ? p : q);
    const Corner n2 = fresh(pIsFar ? q : p);
    const Corner a = at(lined);
    const Corner b = at(lined + 1);
    const Corner c = at(lined + 2);
    return finish(8, {{b, c, n1}, {b, n1, n2}, {c, n2, n1}, {b, n2, a}, {c, a, n2}});
}

/// Cuts along an edge of the face.
std::size_t cutOnEdge(CutPatterns& patterns, const csgFace& face, const CutEnd& start, const CutEnd& end,
                      const csgVertex* v1, const csgVertex* v2) {
    const std::size_t a = patterns.edgeBetween(v1, v2);
    if (start.type == csgAtCorner && end.type == csgOnEdge)
        return patterns.onePointOnEdge(end.position, a);
    if (start.type == csgOnEdge && end.type == csgAtCorner)
        return patterns.onePointOnEdge(start.position, a);
    if (start.type != csgOnEdge || end.type != csgOnEdge)
        return 0;
    if (start.distance == end.distance)
        return patterns.onePointOnEdge(end.position, a);
    if (v1 == face.corners[a] && v2 == face.corners[(a + 1) % 3])
        return patterns.twoPointsOnEdge(start.position, end.position, a);
    return patterns.twoPointsOnEdge(end.position, start.position, a);
}

/// Cuts through the inside of the face.
std::size_t cutInside(CutPatterns& patterns, const CutEnd& start, const CutEnd& end, const csgVertex& v1,
                      const csgVertex& v2) {
    const csgVector& p = start.position;
    const csgVector& q = end.position;
    switch (10 * start.type + end.type) {
    case 10 * csgAtCorner + csgOnEdge:
        return patterns.onePointOnEdge(q, v2);
    case 10 * csgOnEdge + csgAtCorner:
        return patterns.onePointOnEdge(p, v1);
    case 10 * csgAtCorner + csgInFace:
        return patterns.innerPointFromCorner(q, v1);
    case 10 * csgInFace + csgAtCorner:
        return patterns.innerPointFromCorner(p, v2);
    case 10 * csgOnEdge + csgOnEdge:
        return patterns.cornerCut(p, q, v1, v2);
    case 10 * csgOnEdge + csgInFace:
        return patterns.edgeAndInnerPoint(p, q, v1);
    case 10 * csgInFace + csgOnEdge:
        return patterns.edgeAndInnerPoint(q, p, v2);
    case 10 * csgInFace + csgInFace:
        return p.coincides(q) ? patterns.oneInnerPoint(p) : patterns.twoInnerPoints(p, q);
    default:
        return 0;
    }
}

} // namespace

csgVertex& csgMesh::newCutVertex(const csgVector& position) {
    const std::size_t found = grid.findFirst(position);
    return found != csgVertexGrid::notFound ? *vertices[found] : appendVertex(position, csgOnCut);
}

csgTexCoord csgMesh::interpolateTexture(const csgFace& face, const csgVector& position) {
    const csgVector& c0 = face.cornerPosition(0);
    const csgVector& c1 = face.cornerPosition(1);
    const csgVector& c2 = face.cornerPosition(2);
    const csgLine opposite(c1 - c2, c2);
    const csgLine through(position - c0, c0);
    const csgVector meeting = through.intersect(opposite);
    const double reach = (meeting - c0).length();
    if (reach == 0.0 || position == c0)
        return face.tex[0];
    const double s = (meeting - c2).length() / (c1 - c2).length();
    const double u = (position - c0).length() / reach;
    const auto [t0, t1, t2] = face.tex;
    const csgTexCoord met{t2.u + (t1.u - t2.u) * s, t2.v + (t1.v - t2.v) * s};
    return {t0.u + (met.u - t0.u) * u, t0.v + (met.v - t0.v) * u};
}

std::size_t csgMesh::appendPieces(csgFaceList& list, const csgFace& face, const csgSegment& s, const csgSegment& t,
                                  std::size_t& wanted) {
    wanted = 0;
    csgVertex* v1 = s.start.vertex;
    csgVertex* v2 = s.end.vertex;
    if (v1 == nullptr || v2 == nullptr)
        return 0;
    const CutEnd start = startOfCut(s, t);
    const CutEnd end = endOfCut(s, t);
    if (start.type == csgAtCorner)
        v1->status = csgOnCut;
    if (end.type == csgAtCorner)
        v2->status = csgOnCut;
    if (start.type == csgAtCorner && end.type == csgAtCorner)
        return 0;
    CutPatterns patterns(*this, list, face, wanted);
    if (s.middleType == csgOnEdge)
        return cutOnEdge(patterns, face, start, end, v1, v2);
    if (s.middleType == csgInFace)
        return cutInside(patterns, start, end, *v1, *v2);
    return 0;
}

std::unique_ptr<csgFace> csgMesh::cutFace(csgFaceList& list, std::size_t index, const csgSegment& s,
                                          const csgSegment& t) {
    std::size_t wanted = 0;
    if (appendPieces(list, *list[index], s, t, wanted) == 0)
        return nullptr;
    return removeFaceAt(list, index);
}
