#include "csg/solid/csg_face.h"

#include "core/base/expect.h"
#include "csg/solid/csg_line.h"
#include "csg/solid/csg_mesh.h"
#include "csg/solid/csg_segment.h"

#include "core/base/log.h"

#include <array>
#include <cmath>
#include <initializer_list>

namespace {

using Pieces = csgMesh::Pieces;

struct Corner {
    csgVertex* vertex;
    csgTexCoord tex;
};

/// One end of the overlap of the two segments.
struct CutEnd {
    double distance;
    csgVector position;
    csgSegmentType type;
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

/// The eight ways to cut one face. Each appends its pieces to the list.
class CutPatterns {
public:
    CutPatterns(csgMesh& owner, csgFaceList& target, const csgFace& cut) : mesh(owner), list(target), face(cut) {}

    /// Number (0 to 2) of the corner where the edge between two corners starts.
    std::size_t edgeBetween(const csgVertex* v1, const csgVertex* v2) const {
        for (std::size_t a = 0; a < 2; ++a) {
            if ((v1 == face.corners[a] && v2 == face.corners[a + 1]) ||
                (v2 == face.corners[a] && v1 == face.corners[a + 1]))
                return a;
        }
        return 2;
    }

    Pieces onePointOnEdge(const csgVector& point, std::size_t a) {
        const Corner n = fresh(point);
        return finish(1, {{at(a), n, at(a + 2)}, {n, at(a + 1), at(a + 2)}});
    }
    Pieces onePointOnEdge(const csgVector& point, const csgVertex& first) {
        const std::size_t a = cornerEqual(first);
        const Corner n = fresh(point);
        return finish(2, {{at(a), n, at(a + 2)}, {n, at(a + 1), at(a + 2)}});
    }
    Pieces twoPointsOnEdge(const csgVector& first, const csgVector& second, std::size_t a) {
        const Corner n1 = fresh(first);
        const Corner n2 = fresh(second);
        return finish(3, {{at(a), n1, at(a + 2)}, {n1, n2, at(a + 2)}, {n2, at(a + 1), at(a + 2)}});
    }
    Pieces innerPointFromCorner(const csgVector& point, const csgVertex& corner) {
        const std::size_t a = cornerEqual(corner);
        const Corner n = fresh(point);
        return finish(4, {{at(a), at(a + 1), n}, {at(a + 1), at(a + 2), n}, {at(a + 2), at(a), n}});
    }
    Pieces cornerCut(const csgVector& first, const csgVector& second, const csgVertex& v1, const csgVertex& v2);
    Pieces oneInnerPoint(const csgVector& point) {
        const Corner n = fresh(point);
        return finish(6, {{at(0), at(1), n}, {at(1), at(2), n}, {at(2), at(0), n}});
    }
    Pieces edgeAndInnerPoint(const csgVector& edgePoint, const csgVector& innerPoint, const csgVertex& first) {
        const std::size_t a = cornerEqual(first);
        const Corner n1 = fresh(edgePoint);
        const Corner n2 = fresh(innerPoint);
        return finish(7, {{at(a), n1, n2}, {n1, at(a + 1), n2}, {at(a + 1), at(a + 2), n2}, {at(a + 2), at(a), n2}});
    }
    Pieces twoInnerPoints(const csgVector& p, const csgVector& q);

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
    Pieces finish(int pattern, std::initializer_list<Triangle> triangles);

    csgMesh& mesh;
    csgFaceList& list;
    const csgFace& face;
};

Pieces CutPatterns::finish(int pattern, std::initializer_list<Triangle> triangles) {
    std::size_t made = 0;
    for (const Triangle& t : triangles) {
        if (mesh.makeTexturedFace(list, *t[0].vertex, *t[1].vertex, *t[2].vertex, t[0].tex, t[1].tex, t[2].tex))
            ++made;
    }
    if (made == 0)
        logLine("kill %d\n", pattern);
    return {made, triangles.size()};
}

Pieces CutPatterns::cornerCut(const csgVector& first, const csgVector& second, const csgVertex& v1,
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

Pieces CutPatterns::twoInnerPoints(const csgVector& p, const csgVector& q) {
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
Pieces cutOnEdge(CutPatterns& patterns, const csgFace& face, const CutEnd& start, const CutEnd& end,
                 const csgVertex* v1, const csgVertex* v2) {
    const std::size_t a = patterns.edgeBetween(v1, v2);
    if (start.type == csgSegmentType::corner && end.type == csgSegmentType::edge)
        return patterns.onePointOnEdge(end.position, a);
    if (start.type == csgSegmentType::edge && end.type == csgSegmentType::corner)
        return patterns.onePointOnEdge(start.position, a);
    if (start.type != csgSegmentType::edge || end.type != csgSegmentType::edge)
        return {};
    if (start.distance == end.distance)
        return patterns.onePointOnEdge(end.position, a);
    if (v1 == face.corners[a] && v2 == face.corners[(a + 1) % 3])
        return patterns.twoPointsOnEdge(start.position, end.position, a);
    return patterns.twoPointsOnEdge(end.position, start.position, a);
}

/// Cuts through the inside of the face.
Pieces cutInside(CutPatterns& patterns, const CutEnd& start, const CutEnd& end, const csgVertex& v1,
                 const csgVertex& v2) {
    const csgVector& p = start.position;
    const csgVector& q = end.position;
    const auto runs = [&](csgSegmentType from, csgSegmentType to) { return start.type == from && end.type == to; };
    using enum csgSegmentType;
    if (runs(corner, edge))
        return patterns.onePointOnEdge(q, v2);
    if (runs(edge, corner))
        return patterns.onePointOnEdge(p, v1);
    if (runs(corner, inFace))
        return patterns.innerPointFromCorner(q, v1);
    if (runs(inFace, corner))
        return patterns.innerPointFromCorner(p, v2);
    if (runs(edge, edge))
        return patterns.cornerCut(p, q, v1, v2);
    if (runs(edge, inFace))
        return patterns.edgeAndInnerPoint(p, q, v1);
    if (runs(inFace, edge))
        return patterns.edgeAndInnerPoint(q, p, v2);
    if (runs(inFace, inFace))
        return p.coincides(q) ? patterns.oneInnerPoint(p) : patterns.twoInnerPoints(p, q);
    return {};
}

} // namespace

csgVertex& csgMesh::newCutVertex(const csgVector& position) {
    const std::size_t found = grid.findFirst(position);
    return found != csgVertexGrid::notFound ? *vertices[found] : appendVertex(position, csgStatus::onCut);
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

csgMesh::Pieces csgMesh::appendPieces(csgFaceList& list, const csgFace& face, const csgSegment& s,
                                      const csgSegment& t) {
    csgVertex* v1 = s.start.vertex;
    csgVertex* v2 = s.end.vertex;
    if (v1 == nullptr || v2 == nullptr)
        return {};
    const CutEnd start = startOfCut(s, t);
    const CutEnd end = endOfCut(s, t);
    if (start.type == csgSegmentType::corner)
        v1->status = csgStatus::onCut;
    if (end.type == csgSegmentType::corner)
        v2->status = csgStatus::onCut;
    if (start.type == csgSegmentType::corner && end.type == csgSegmentType::corner)
        return {};
    CutPatterns patterns(*this, list, face);
    if (s.middleType == csgSegmentType::edge)
        return cutOnEdge(patterns, face, start, end, v1, v2);
    if (s.middleType == csgSegmentType::inFace)
        return cutInside(patterns, start, end, *v1, *v2);
    return {};
}

std::unique_ptr<csgFace> csgMesh::cutFace(csgFaceList& list, std::size_t index, const csgSegment& s,
                                          const csgSegment& t) {
    expect(index < list.size());
    if (appendPieces(list, *list[index], s, t).made == 0)
        return nullptr;
    return removeFaceAt(list, index);
}
