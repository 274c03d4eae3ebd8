// The difference as the game runs it against the plain one: the same bits, whatever is cut.

#include "csg/csg_classify.h"
#include "csg/csg_mesh.h"
#include "csg/csg_vertex_grid.h"
#include "platform/crt_random.h"
#include "support/plain_boolean.h"
#include "support/solids.h"

#include <gtest/gtest.h>

#include <random>

namespace {

/// Carves one land twice in step, quickly and plainly, and compares after every cut.
class Twins {
public:
    explicit Twins(const csgMeshData& landData) {
        quick.build(landData);
        plain.build(landData);
    }

    /// False when the two differ.
    bool carve(const csgMeshData& toolData, const csgVector& centre) {
        csgMesh tool;
        csgMesh plainTool;
        tool.build(toolData);
        plainTool.build(toolData);
        tool.translate(centre.x, centre.y, centre.z);
        plainTool.translate(centre.x, centre.y, centre.z);
        quick.carve(tool);
        plainCarve(plain, plainTool);
        quick.computeNormals();
        plain.computeNormals();
        const csgMesh::CarveStats& stats = quick.getCarveStats();
        hits += stats.removed + stats.adopted > 0 ? 1 : 0;
        tooSmall += stats.tooSmall;
        return hashOf(quick) == hashOf(plain);
    }

    csgMesh quick;
    csgMesh plain;
    int hits = 0;
    std::size_t tooSmall = 0;
};

} // namespace

TEST(CsgTwin, RandomCratersOnIslands) {
    std::mt19937 random(20);
    std::uniform_real_distribution<double> place(-14.0, 14.0);
    std::uniform_real_distribution<double> height(4.0, 18.0);
    int hits = 0;
    std::size_t tooSmall = 0;
    for (std::uint32_t land = 0; land < 20; ++land) {
        Twins twins(islandData(6, 30.0, land));
        for (int cut = 0; cut < 30; ++cut) {
            const csgMeshData tool = sphereData(cut % 3 == 0 ? 0 : 1, cut % 2 == 0 ? 2.0 : 4.0);
            ASSERT_TRUE(twins.carve(tool, {place(random), height(random), place(random)})) << land << ", " << cut;
        }
        hits += twins.hits;
        tooSmall += twins.tooSmall;
    }
    EXPECT_GT(hits, 400);
    EXPECT_GT(tooSmall, 20U) << "no sliver was ever dropped: too tame a test";
}

TEST(CsgTwin, BoxesOnWholeNumbers) {
    // Faces, edges and corners of land and tool fall together in every way.
    std::mt19937 random(21);
    std::uniform_int_distribution<int> place(-1, 4);
    std::uniform_int_distribution<int> size(1, 3);
    int hits = 0;
    for (int land = 0; land < 150; ++land) {
        Twins twins(boxData({0, 0, 0}, {4, 4, 4}));
        for (int cut = 0; cut < 4; ++cut) {
            const csgVector extent{double(size(random)), double(size(random)), double(size(random))};
            const csgVector centre{double(place(random)), double(place(random)), double(place(random))};
            ASSERT_TRUE(twins.carve(boxData({0, 0, 0}, extent), centre)) << land << ", " << cut;
        }
        hits += twins.hits;
    }
    EXPECT_GT(hits, 250);
}

TEST(CsgTwin, NearlyRepeatedCentres) {
    // Old and new crater wall a little more than the tolerance apart: slivers, runaways of the split, leaks of the
    // flood.
    std::mt19937 random(22);
    std::uniform_real_distribution<double> shift(-3e-4, 3e-4);
    std::size_t overruled = 0;
    std::size_t keptUncut = 0;
    for (std::uint32_t land = 0; land < 10; ++land) {
        Twins twins(islandData(6, 30.0, land));
        for (int cut = 0; cut < 10; ++cut) {
            // Never so near that the quick one would move its tool.
            const csgVector centre{cut * 1.1e-4, 12.0 + shift(random), 3.0 + shift(random)};
            ASSERT_TRUE(twins.carve(sphereData(1, 5.0), centre)) << land << ", " << cut;
            overruled += twins.quick.getCarveStats().overruled;
            keptUncut += twins.quick.getCarveStats().keptUncut;
        }
    }
    EXPECT_GT(overruled, 100U) << "the flood never leaked: nothing was verified";
    EXPECT_GT(keptUncut, 10U) << "no split ever ran away: nothing was bounded";
}

TEST(CsgTwin, RaysSeeWhatEveryFaceWouldTell) {
    csgMesh land;
    land.build(islandData(10, 40.0, 5));
    for (const double x : {-8.0, 0.0, 9.0}) {
        csgMesh tool;
        tool.build(sphereData(2, 6.0));
        tool.translate(x, 10.0, 0.5 * x);
        land.carve(tool);
    }
    std::mt19937 random(23);
    std::uniform_real_distribution<double> place(-22.0, 22.0);
    std::uniform_real_distribution<double> side(-1.0, 1.0);
    int inside = 0;
    int outside = 0;
    for (int i = 0; i < 4000; ++i) {
        const csgVector point{place(random), place(random), place(random)};
        csgVector direction{side(random), side(random), side(random)};
        if (i % 4 == 0)
            direction = {i % 8 == 0 ? 1.0 : 0.0, i % 8 == 0 ? 0.0 : -1.0, 0.0};
        const std::int32_t status = castRay(point, direction, land.getParts());
        ASSERT_EQ(status, plainRay(point, direction, land)) << i;
        inside += status == csgInside ? 1 : 0;
        outside += status == csgOutside ? 1 : 0;
    }
    EXPECT_GT(inside, 300);
    EXPECT_GT(outside, 300);
}

TEST(CsgTwin, GridFindsTheFirstOfTheList) {
    std::mt19937 random(24);
    std::uniform_int_distribution<int> cell(-3, 3);
    std::uniform_real_distribution<double> jitter(-1.5e-5, 1.5e-5);
    csgVertexGrid grid;
    std::vector<csgVector> list;
    int found = 0;
    for (int i = 0; i < 6000; ++i) {
        // Clusters at cell corners, where equals are spread over eight cells.
        const csgVector place{cell(random) / 1024.0 + jitter(random), cell(random) / 1024.0 + jitter(random),
                              cell(random) * 1000.0 + jitter(random)};
        std::size_t expected = csgVertexGrid::notFound;
        for (std::size_t k = 0; k < list.size() && expected == csgVertexGrid::notFound; ++k) {
            if (list[k].coincides(place))
                expected = k;
        }
        ASSERT_EQ(grid.findFirst(place), expected);
        found += expected != csgVertexGrid::notFound ? 1 : 0;
        grid.add(place);
        list.push_back(place);
    }
    EXPECT_GT(found, 1000);
    EXPECT_LT(found, 5900);
}
