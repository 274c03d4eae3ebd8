// Gaps as dropped pieces leave them, made by hand, and what closes them.

#include "csg/csg_measure.h"
#include "csg/csg_mender.h"
#include "csg/csg_mesh.h"
#include "support/solids.h"

#include <gtest/gtest.h>

namespace {

/// A box of ten units with its lid taken off: faces 2 and 3 of boxData lie at the top.
class Lidless {
public:
    Lidless() {
        csgMeshData data = boxData({0, 0, 0}, {10, 10, 10});
        auto& triangles = data.parts[0].triangles;
        std::erase_if(triangles, [&](const csgMeshData::Triangle& t) {
            return std::all_of(t.begin(), t.end(),
                               [&](std::size_t i) { return data.parts[0].corners[i].position.y == 10.0; });
        });
        mesh.build(data);
    }

    csgVertex& at(double x, double z) { return mesh.addVertex(csgVertex({x, 10.0, z})); }
    /// Seen from above, counter-clockwise.
    void cover(csgVertex& a, csgVertex& b, csgVertex& c) {
        mesh.makeTexturedFace(mesh.getPart(0), a, b, c, {0, 0}, {1, 0}, {0, 1});
    }
    void mend() { csgMender(mesh, *mesh.getBounds()).run(); }

    csgMesh mesh;
};

} // namespace

TEST(CsgMender, AVertexOnAnEdgeSplitsTheFaceBeyond) {
    Lidless box;
    csgVertex& middle = box.at(5, 0);
    box.cover(box.at(0, 0), box.at(0, 10), middle);
    box.cover(middle, box.at(0, 10), box.at(10, 10));
    box.cover(middle, box.at(10, 10), box.at(10, 0));
    ASSERT_EQ(openEdgesOf(box.mesh), 3u);
    const std::size_t faces = box.mesh.countFaces();
    box.mend();
    EXPECT_EQ(openEdgesOf(box.mesh), 0u);
    EXPECT_EQ(box.mesh.countFaces(), faces + 1);
    EXPECT_NEAR(volumeOf(box.mesh), 1000.0, 1e-9);
}

TEST(CsgMender, ADroppedSliverComesBack) {
    for (const double width : {2e-5, 1e-4, 1.9e-3}) {
        Lidless box;
        // From the middle of the lid a sliver of less than the smallest area; it is refused, and its place stays open.
        csgVertex& tip = box.at(5, 5);
        csgVertex& left = box.at(5.004, 5.005);
        csgVertex& right = box.at(5.004 + width, 5.005 - width);
        const std::size_t before = box.mesh.countFaces();
        box.cover(tip, left, right);
        ASSERT_EQ(box.mesh.countFaces(), before);
        box.cover(box.at(0, 0), box.at(0, 10), tip);
        box.cover(box.at(0, 10), left, tip);
        box.cover(box.at(0, 10), box.at(10, 10), left);
        box.cover(left, box.at(10, 10), right);
        box.cover(right, box.at(10, 10), box.at(10, 0));
        box.cover(tip, right, box.at(10, 0));
        box.cover(tip, box.at(10, 0), box.at(0, 0));
        ASSERT_EQ(openEdgesOf(box.mesh), 3u) << width;
        box.mend();
        EXPECT_EQ(openEdgesOf(box.mesh), 0u) << width;
        EXPECT_NEAR(volumeOf(box.mesh), 1000.0, 1e-9) << width;
        for (const auto& face : box.mesh.getPart(0))
            EXPECT_NEAR(face->normal.length(), 1.0, 1e-12) << width;
    }
}

TEST(CsgMender, FacesWithTheSameCornersAreOneOrNone) {
    Lidless box;
    box.cover(box.at(0, 0), box.at(0, 10), box.at(10, 10));
    box.cover(box.at(0, 0), box.at(10, 10), box.at(10, 0));
    // One twice over, and a fin that faces both ways.
    box.cover(box.at(0, 10), box.at(10, 10), box.at(0, 0));
    csgVertex& top = box.mesh.addVertex(csgVertex({5.0, 14.0, 5.0}));
    box.cover(box.at(0, 0), box.at(10, 10), top);
    box.cover(box.at(10, 10), box.at(0, 0), top);
    ASSERT_GT(openEdgesOf(box.mesh), 0u);
    box.mend();
    EXPECT_EQ(openEdgesOf(box.mesh), 0u);
    EXPECT_EQ(box.mesh.countFaces(), 12u);
}

TEST(CsgMender, AnOpenSolidKeepsItsLongRim) {
    csgMeshData data = islandData(14, 60.0, 3);
    auto& part = data.parts[0];
    std::erase_if(part.triangles, [&](const csgMeshData::Triangle& t) {
        return std::all_of(t.begin(), t.end(), [&](std::size_t i) { return part.corners[i].position.y == -25.0; });
    });
    csgMesh land;
    land.build(data);
    const std::size_t rim = openEdgesOf(land);
    ASSERT_GT(rim, 50u);
    csgMesh tool;
    tool.build(sphereData(2, 6.0));
    tool.translate(2.0, 12.0, 3.0);
    land.carve(tool);
    EXPECT_GT(land.getCarveStats().adopted, 20u);
    EXPECT_EQ(openEdgesOf(land), rim);
}
