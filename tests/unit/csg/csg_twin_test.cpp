// The difference as the game runs it against the plain one: the same bits, whatever is cut.

#include "core/base/log.h"
#include "csg/solid/csg_mesh.h"
#include "csg/solid/csg_vertex_grid.h"
#include "platform/crt_random.h"
#include "support/plain_boolean.h"
#include "support/solids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string_view>
#include <vector>

namespace {

std::size_t loggedSmall = 0;

void countSmall(const char* text) {
    loggedSmall += std::string_view(text).starts_with("small polygon") ? 1 : 0;
}

/// Carves lands twice in step, quickly and plainly, and compares after every cut.
class CsgTwin : public testing::Test {
protected:
    void begin(const csgMeshData& landData) {
        quick.build(landData);
        plain.build(landData);
        centres.clear();
    }

    /// False when the two differ.
    bool carve(const csgMeshData& toolData, const csgVector& centre) {
        csgMesh tool;
        csgMesh plainTool;
        tool.build(toolData);
        plainTool.build(toolData);
        tool.translate(centre.x, centre.y, centre.z);
        plainTool.translate(centre.x, centre.y, centre.z);
        const csgVector middle = tool.getBounds()->centre();
        const auto isSame = [&](const csgVector& earlier) { return (earlier - middle).length() < 1e-3; };
        if (std::any_of(centres.begin(), centres.end(), isSame))
            return true; // only the quick one knows that it has been there
        centres.push_back(middle);
        loggedSmall = 0;
        crtSrand(1); // a ray that runs along a face draws from the stream, and may then meet a wall or not
        setLogSink(countSmall);
        quick.carve(tool);
        setLogSink(nullptr);
        crtSrand(1);
        plainCarve(plain, plainTool);
        quick.computeNormals();
        plain.computeNormals();
        const csgMesh::CarveStats& stats = quick.getCarveStats();
        EXPECT_EQ(stats.tooSmall, loggedSmall);
        hits += stats.removed + stats.adopted > 0 ? 1 : 0;
        tooSmall += stats.tooSmall;
        overruled += stats.overruled;
        keptUncut += stats.keptUncut;
        return hashOf(quick) == hashOf(plain);
    }
    double uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); }
    double whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    std::mt19937 random{20};
    std::vector<csgVector> centres;
    csgMesh quick;
    csgMesh plain;
    std::size_t hits = 0;
    std::size_t tooSmall = 0;
    std::size_t overruled = 0;
    std::size_t keptUncut = 0;
};

} // namespace

TEST_F(CsgTwin, RandomCratersOnIslands) {
    for (std::uint32_t land = 0; land < 20; ++land) {
        begin(islandData(6, 30.0, land));
        for (int cut = 0; cut < 30; ++cut) {
            const csgMeshData tool = sphereData(cut % 3 == 0 ? 0 : 1, cut % 2 == 0 ? 2.0 : 4.0);
            const csgVector centre{uniform(-14.0, 14.0), uniform(4.0, 18.0), uniform(-14.0, 14.0)};
            ASSERT_TRUE(carve(tool, centre)) << land << ", " << cut;
        }
    }
    EXPECT_GT(hits, 400U);
    EXPECT_GT(tooSmall, 20U) << "no sliver was ever dropped: too tame a test";
}

TEST_F(CsgTwin, BoxesOnWholeNumbers) {
    // Faces, edges and corners of land and tool fall together in every way.
    for (int land = 0; land < 150; ++land) {
        begin(boxData({0, 0, 0}, {4, 4, 4}));
        for (int cut = 0; cut < 4; ++cut) {
            const csgMeshData tool = boxData({0, 0, 0}, {whole(1, 3), whole(1, 3), whole(1, 3)});
            ASSERT_TRUE(carve(tool, {whole(-1, 4), whole(-1, 4), whole(-1, 4)})) << land << ", " << cut;
        }
    }
    EXPECT_GT(hits, 250U);
}

TEST_F(CsgTwin, NearlyRepeatedCentres) {
    // Old and new crater wall a little more than the tolerance apart: slivers, runaways of the split, leaks of the
    // flood.
    for (std::uint32_t land = 0; land < 8; ++land) {
        begin(islandData(6, 30.0, land));
        for (int cut = 0; cut < 10; ++cut) {
            const csgVector centre{cut * 1.3e-3, 12.0 + uniform(-3e-4, 3e-4), 3.0 + uniform(-3e-4, 3e-4)};
            ASSERT_TRUE(carve(sphereData(1, 5.0), centre)) << land << ", " << cut;
        }
    }
    EXPECT_GT(overruled, 100U) << "the flood never leaked: nothing was verified";
    EXPECT_GT(keptUncut, 10U) << "no split ever ran away: nothing was bounded";
}

TEST_F(CsgTwin, GridFindsTheFirstOfTheList) {
    csgVertexGrid grid;
    std::vector<csgVector> list;
    int found = 0;
    for (int i = 0; i < 6000; ++i) {
        // Clusters at cell corners, where equals are spread over eight cells.
        const auto jitter = [&] { return uniform(-1.5e-5, 1.5e-5); };
        const csgVector place{whole(-3, 3) / 1024.0 + jitter(), whole(-3, 3) / 1024.0 + jitter(),
                              whole(-3, 3) * 1000.0 + jitter()};
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
