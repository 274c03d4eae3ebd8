// Gaps as dropped pieces leave them, made by hand, and what closes them.

#include "csg/solid/csg_measure.h"
#include "csg/solid/csg_mender.h"
#include "csg/solid/csg_mesh.h"
#include "support/solids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// As in boxData.
csgTexCoord texAt(const csgVector& p) {
    return {0.1 * p.x + 0.02 * p.y, 0.1 * p.z - 0.03 * p.y};
}

void cover(csgMesh& mesh, csgVertex& a, csgVertex& b, csgVertex& c) {
    mesh.makeTexturedFace(mesh.getPart(0), a, b, c, texAt(a.position), texAt(b.position), texAt(c.position));
}

/// A box of ten units with its lid taken off.
class Lidless {
public:
    Lidless() {
        csgMeshData data = boxData({0, 0, 0}, {10, 10, 10});
        std::erase_if(data.parts[0].triangles, [&](const csgMeshData::Triangle& t) {
            return std::all_of(t.begin(), t.end(),
                               [&](std::size_t i) { return data.parts[0].corners[i].position.y == 10.0; });
        });
        mesh.build(data);
    }

    csgVertex& at(double x, double z) { return mesh.addVertex(csgVertex({x, 10.0, z})); }
    /// Seen from above, counter-clockwise.
    void lid(csgVertex& a, csgVertex& b, csgVertex& c) { cover(mesh, a, b, c); }
    void expectMended(std::size_t faces) {
        csgMender(mesh, *mesh.getBounds()).run();
        EXPECT_EQ(openEdgesOf(mesh), 0u);
        EXPECT_EQ(mesh.countFaces(), faces);
        EXPECT_NEAR(volumeOf(mesh), 1000.0, 1e-9);
        for (const auto& face : mesh.getPart(0)) {
            EXPECT_NEAR(face->normal.length(), 1.0, 1e-12);
            for (std::size_t i = 0; i < 3 && face->height() > 1e-2; ++i) {
                EXPECT_NEAR(face->tex[i].u, texAt(face->cornerPosition(i)).u, 1e-12);
                EXPECT_NEAR(face->tex[i].v, texAt(face->cornerPosition(i)).v, 1e-12);
            }
        }
    }

    csgMesh mesh;
};

} // namespace

TEST(CsgMender, AVertexOnAnEdgeSplitsTheFaceBeyond) {
    Lidless box;
    csgVertex& foot = box.at(3, 0);
    box.lid(box.at(0, 0), box.at(0, 10), foot);
    box.lid(foot, box.at(0, 10), box.at(10, 10));
    box.lid(foot, box.at(10, 10), box.at(10, 0));
    ASSERT_EQ(openEdgesOf(box.mesh), 3u);
    box.expectMended(14);
}

TEST(CsgMender, ADroppedSliverComesBack) {
    for (const double width : {2e-5, 1e-4, 1.9e-3}) {
        SCOPED_TRACE(width);
        Lidless box;
        // From the middle of the lid a sliver of less than the smallest area; it is refused, and its place stays open.
        csgVertex& tip = box.at(5, 5);
        csgVertex& left = box.at(5.004, 5.005);
        csgVertex& right = box.at(5.004 + width, 5.005 - width);
        box.lid(tip, left, right);
        ASSERT_EQ(box.mesh.countFaces(), 10u);
        box.lid(box.at(0, 0), box.at(0, 10), tip);
        box.lid(box.at(0, 10), left, tip);
        box.lid(box.at(0, 10), box.at(10, 10), left);
        box.lid(left, box.at(10, 10), right);
        box.lid(right, box.at(10, 10), box.at(10, 0));
        box.lid(tip, right, box.at(10, 0));
        box.lid(tip, box.at(10, 0), box.at(0, 0));
        ASSERT_EQ(openEdgesOf(box.mesh), 3u);
        box.expectMended(18);
    }
}

TEST(CsgMender, FacesWithTheSameCornersAreOneOrNone) {
    Lidless box;
    box.lid(box.at(0, 0), box.at(0, 10), box.at(10, 10));
    box.lid(box.at(0, 0), box.at(10, 10), box.at(10, 0));
    // One twice over, and a fin that faces both ways.
    box.lid(box.at(0, 10), box.at(10, 10), box.at(0, 0));
    csgVertex& top = box.mesh.addVertex(csgVertex({4.0, 14.0, 6.0}));
    box.lid(box.at(0, 0), box.at(10, 10), top);
    box.lid(box.at(10, 10), box.at(0, 0), top);
    ASSERT_GT(openEdgesOf(box.mesh), 0u);
    box.expectMended(12);
}

TEST(CsgMender, WhatWasOpenOrDoubledBeforeACarveStays) {
    csgMesh land;
    csgMeshData data = islandData(8, 40.0, 2);
    data.parts.push_back(boxData({0, 0, 0}, {1, 1, 1}).parts[0]);
    csgMeshData::Part& extras = data.parts[1];
    // Beside the crater a card, and one that lies there twice; through it another.
    extras.corners = {{{-6, 30, 0}, {}}, {{-6, 33, 0}, {}}, {{-6, 30, 3}, {}}, {{-7, 30, 0}, {}}, {{-7, 33, 0}, {}},
                      {{-7, 30, 3}, {}}, {{-4, 31, 1}, {}}, {{12, 31, 1}, {}}, {{12, 44, 1}, {}}};
    extras.triangles = {{0, 1, 2}, {3, 4, 5}, {3, 5, 4}, {6, 7, 8}};
    land.build(data);
    csgMesh tool;
    tool.build(sphereData(1, 5.0));
    tool.translate(0.0, 32.0, 1.5);
    land.carve(tool);
    EXPECT_GT(land.getCarveStats().cuts, 0u);
    double left = 0.0;
    for (const auto& face : land.getPart(1))
        left += face->cornerPosition(0).x < -5.0 ? face->area() : 0.0;
    EXPECT_EQ(left, 3 * 4.5);
    EXPECT_LT(land.getPart(1).size(), 40u) << "the open edges of the cut card were filled";
    EXPECT_EQ(land.getCarveStats().mended, 0u);
}

TEST(CsgMender, RimsOf48EdgesAreFilledAndLongerOnesStay) {
    for (const std::size_t sides : {47u, 48u, 49u}) {
        csgMesh cone;
        cone.addPart();
        const auto rim = [&](std::size_t i) -> csgVertex& {
            const double angle = 2.0 * std::numbers::pi * static_cast<double>(i % sides) / static_cast<double>(sides);
            return cone.addVertex(csgVertex({10.0 * std::cos(angle), 4.0, 7.0 * std::sin(angle)}));
        };
        csgVertex& foot = cone.addVertex(csgVertex({1.0, 0.0, 2.0}));
        for (std::size_t i = 0; i < sides; ++i)
            cover(cone, foot, rim(i), rim(i + 1));
        csgBounds box(foot.position);
        csgMender(cone, box.grown(20.0)).run();
        EXPECT_EQ(openEdgesOf(cone), sides <= 48 ? 0u : sides);
    }
}
