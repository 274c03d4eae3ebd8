#include "csg/solid/csg_line.h"
#include "csg/solid/csg_mesh.h"
#include "csg/solid/csg_predicates.h"
#include "csg/solid/csg_segment.h"
#include "support/variants.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace {

constexpr std::array<csgVector, 3> faceCorners{csgVector{0, 0, 0}, csgVector{10, 0, 0}, csgVector{0, 8, 0}};

/// One face in the plane z = 0, cut along the stretch from-to by a face that stands on it.
class Cut {
public:
    Cut(const Variant& variant, std::size_t firstCorner, const csgVector& from, const csgVector& to)
        : list(mesh.addPart()),
          foot{csgVertex(variant.apply(from)), csgVertex(variant.apply(to)),
               csgVertex(variant.apply((from + to) * 0.5 + csgVector{0, 0, 3}))} {
        std::array<csgVertex*, 3> corners{};
        for (std::size_t i = 0; i < 3; ++i) {
            corners[i] = &mesh.addVertex(csgVertex(variant.apply(faceCorners[(firstCorner + i) % 3])));
            tex[i] = texAt(variant, corners[i]->position);
        }
        mesh.makeTexturedFace(list, *corners[0], *corners[1], *corners[2], tex[0], tex[1], tex[2]);
        // A face of no interest behind it: the pieces belong at the end of the list.
        csgVertex& far = mesh.addVertex(csgVertex(variant.apply({50, 50, 50})));
        mesh.makeFace(list, *corners[1], *corners[0], far);
    }

    /// Runs the cut; returns the face that was replaced, if it was.
    std::unique_ptr<csgFace> run() {
        const csgFace cutter(foot[0], foot[1], foot[2]);
        const csgFace& face = *list[0];
        const auto signs = cornerSigns(face, cutter);
        const auto cutterSigns = cornerSigns(cutter, face);
        const csgLine line(face, cutter);
        const csgSegment s(line, face, signs[0], signs[1], signs[2]);
        const csgSegment t(line, cutter, cutterSigns[0], cutterSigns[1], cutterSigns[2]);
        EXPECT_TRUE(overlaps(s, t));
        return mesh.cutFace(list, 0, s, t);
    }

    /// A texture coordinate that is linear in the position.
    static csgTexCoord texAt(const Variant& variant, const csgVector& position) {
        const csgVector p = position - variant.offset;
        return {0.3 + 0.1 * p.x + 0.02 * p.y - 0.07 * p.z, 0.05 * p.x - 0.08 * p.y + 0.1 * p.z};
    }

    csgMesh mesh;
    csgFaceList& list;
    std::array<csgVertex, 3> foot;
    std::array<csgTexCoord, 3> tex;
};

struct PatternCase {
    const char* name;
    csgVector from;
    csgVector to;
    std::size_t pieces;
    std::size_t newVertices;
};

void expectWholeCover(const Cut& cut, const Variant& variant, const csgFace& replaced) {
    double area = 0.0;
    for (std::size_t i = 1; i < cut.list.size(); ++i) {
        const csgFace& piece = *cut.list[i];
        area += piece.area();
        EXPECT_LT((piece.normal - replaced.normal).length(), 1e-12) << "piece " << i << " is turned over";
        for (std::size_t c = 0; c < 3; ++c) {
            const csgTexCoord expected = Cut::texAt(variant, piece.cornerPosition(c));
            EXPECT_NEAR(piece.tex[c].u, expected.u, 1e-12);
            EXPECT_NEAR(piece.tex[c].v, expected.v, 1e-12);
        }
    }
    EXPECT_NEAR(area, replaced.area(), 1e-9);
}

} // namespace

TEST(CsgCut, EightPatternsCoverTheFace) {
    const std::array<PatternCase, 11> cases{
        PatternCase{"one point on an edge", {-1, 0, 0}, {4, 0, 0}, 2, 1},
        {"one point on an edge, from a corner inwards", {-1, -1, 0}, {8, 8, 0}, 2, 1},
        {"two points on an edge", {3, 0, 0}, {6, 0, 0}, 3, 2},
        {"one inner point from a corner", {-1, -1, 0}, {2, 2, 0}, 3, 1},
        {"corner cut", {-1, 2, 0}, {12, 2, 0}, 3, 2},
        {"corner cut at another corner", {2, -1, 0}, {2, 12, 0}, 3, 2},
        {"corner cut at the right angle", {-1, 6, 0}, {6, -1, 0}, 3, 2},
        {"one inner point", {2, 2, 0}, {2.000005, 2, 0}, 3, 1},
        {"edge point and inner point", {-1, 2, 0}, {3, 2, 0}, 4, 2},
        {"two inner points", {1, 2, 0}, {3, 2, 0}, 5, 2},
        {"two inner points, in line with a corner", {1, 1, 0}, {3, 3, 0}, 5, 2},
    };
    for (const PatternCase& c : cases) {
        for (const Variant& variant : variants()) {
            for (std::size_t first = 0; first < 3; ++first) {
                for (const bool reversed : {false, true}) {
                    SCOPED_TRACE(std::string(c.name) + ", " + variant.name + ", corner " + std::to_string(first));
                    Cut cut(variant, first, reversed ? c.to : c.from, reversed ? c.from : c.to);
                    const std::size_t vertices = cut.mesh.getVertices().size();
                    const auto replaced = cut.run();
                    ASSERT_NE(replaced, nullptr);
                    EXPECT_EQ(cut.list.size(), 1 + c.pieces);
                    ASSERT_EQ(cut.mesh.getVertices().size(), vertices + c.newVertices);
                    EXPECT_EQ(cut.mesh.getVertices().back()->status, csgStatus::onCut);
                    expectWholeCover(cut, variant, *replaced);
                }
            }
        }
    }
}

TEST(CsgCut, PiecesFollowTheTable) {
    Cut cut(variants().front(), 0, {-3.75, -1, 0}, {15, 4, 0});
    EXPECT_EQ(csgMesh::interpolateTexture(*cut.list[0], faceCorners[0]), cut.tex[0]);
    const auto replaced = cut.run();
    const auto& [c0, c1, c2] = replaced->corners;
    csgVertex* const n = cut.mesh.getVertices().back().get();
    EXPECT_LT((n->position - csgVector{7.5, 2, 0}).length(), 1e-12);
    ASSERT_EQ(cut.list.size(), 3u);
    EXPECT_EQ(cut.list[1]->corners, (std::array<csgVertex*, 3>{c1, n, c0}));
    EXPECT_EQ(cut.list[2]->corners, (std::array<csgVertex*, 3>{n, c2, c0}));
    EXPECT_EQ(c0->status, csgStatus::onCut);
    EXPECT_EQ(c1->status, csgStatus::unclassified);
}

TEST(CsgCut, WholeEdgeOnTheCutOnlyMarksItsCorners) {
    for (const Variant& variant : variants()) {
        Cut cut(variant, 0, {-5, 0, 0}, {15, 0, 0});
        EXPECT_EQ(cut.run(), nullptr);
        EXPECT_EQ(cut.list.size(), 2u);
        EXPECT_EQ(cut.list[0]->corners[0]->status, csgStatus::onCut);
        EXPECT_EQ(cut.list[0]->corners[1]->status, csgStatus::onCut);
        EXPECT_EQ(cut.list[0]->corners[2]->status, csgStatus::unclassified);
    }
}

TEST(CsgCut, CutPointsFallInWithVerticesNearBy) {
    for (const Variant& variant : variants()) {
        for (const bool near : {true, false}) {
            Cut cut(variant, 0, {-3.75, -1, 0}, {15, 4, 0});
            csgVertex& there = cut.mesh.addVertex(csgVertex(variant.apply({7.5, 2, near ? 9e-6 : 1.1e-5})));
            const std::size_t vertices = cut.mesh.getVertices().size();
            ASSERT_NE(cut.run(), nullptr);
            EXPECT_EQ(cut.mesh.getVertices().size(), vertices + (near ? 0u : 1u));
            EXPECT_EQ(there.status, csgStatus::unclassified);
            EXPECT_EQ(there.faces.size(), near ? 2u : 0u);
        }
    }
}
