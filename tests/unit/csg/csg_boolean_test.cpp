// Laws of the difference, each case moved, turned and mirrored.

#include "csg/csg_mesh.h"
#include "support/solids.h"
#include "support/variants.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

csgMeshData moved(csgMeshData data, const csgVector& offset) {
    for (csgMeshData::Part& part : data.parts) {
        for (csgMeshData::Corner& corner : part.corners)
            corner.position += offset;
    }
    return data;
}

/// A land and a tool in one of the variants.
struct Pair {
    Pair(const Variant& variant, const csgMeshData& landData, const csgMeshData& toolData) {
        land.build(variant.apply(landData));
        tool.build(variant.apply(toolData));
        before = volumeOf(land);
    }
    void carve() { land.carve(tool); }
    double carved() const { return before - volumeOf(land); }

    csgMesh land;
    csgMesh tool;
    double before;
};

void expectReset(const csgMesh& mesh) {
    for (const auto& vertex : mesh.getVertices()) {
        ASSERT_EQ(vertex->status, csgUnclassified);
        ASSERT_TRUE(vertex->adjacent.empty());
    }
    for (const csgFaceList& part : mesh.getParts()) {
        for (const auto& face : part)
            ASSERT_EQ(face->status, csgUnclassified);
    }
}

} // namespace

TEST(CsgBoolean, ToolInsideLeavesACavity) {
    for (const Variant& variant : variants()) {
        SCOPED_TRACE(variant.name);
        const csgMeshData ball = moved(sphereData(1, 2.0), {5.1, 4.9, 5.2});
        Pair pair(variant, boxData({0, 0, 0}, {10, 10, 10}), ball);
        const double ballVolume = volumeOf(pair.tool);
        const csgVector outward = pair.tool.getParts()[0][0]->normal;
        pair.carve();
        ASSERT_EQ(pair.land.countFaces(), 12u + 80u);
        EXPECT_NEAR(pair.carved(), ballVolume, 1e-9);
        EXPECT_EQ(openEdgesOf(pair.land), 0u);
        EXPECT_EQ(pair.land.getParts()[0][12]->normal, outward * -1.0);
        expectReset(pair.land);
    }
}

TEST(CsgBoolean, BoxesTakeWhatTheyShare) {
    struct Case {
        csgVector low;
        csgVector high;
        double shared;
    };
    const std::array<Case, 7> cases{
        Case{{3, 3, 3}, {6, 6, 6}, 1.0},      // corner in corner
        {{1.1, 1.3, 3}, {2.2, 2.6, 5}, 1.43}, // through one face
        {{1.5, -1, 1.5}, {2.5, 5, 2.5}, 4.0}, // a tunnel
        {{-1, -1, -1}, {5, 5, 2}, 32.0},      // half of it
        {{1, 1, 3}, {3, 3, 4}, 4.0},          // flush with the top
        {{1, 1, 4}, {3, 3, 5}, 0.0},          // standing on it
        {{6, 6, 6}, {7, 7, 7}, 0.0},          // elsewhere
    };
    for (const Case& c : cases) {
        for (const Variant& variant : variants()) {
            SCOPED_TRACE(variant.name + ", shared " + std::to_string(c.shared));
            Pair pair(variant, boxData({0, 0, 0}, {4, 4, 4}), boxData(c.low, c.high));
            pair.carve();
            EXPECT_NEAR(pair.carved(), c.shared, 1e-9);
            EXPECT_EQ(openEdgesOf(pair.land), 0u);
            expectReset(pair.land);
        }
    }
}

TEST(CsgBoolean, ToolThatSwallowsTheLandLeavesNothing) {
    for (const Variant& variant : variants()) {
        Pair pair(variant, boxData({0, 0, 0}, {1, 1, 1}), boxData({-2, -2, -2}, {3, 3, 3}));
        pair.carve();
        EXPECT_EQ(pair.land.countFaces(), 0u);
        Pair twin(variant, boxData({0, 0, 0}, {1, 1, 1}), boxData({0, 0, 0}, {1, 1, 1}));
        twin.carve();
        EXPECT_EQ(twin.land.countFaces(), 0u);
    }
}

TEST(CsgBoolean, ToolElsewhereChangesNoFace) {
    for (const Variant& variant : variants()) {
        Pair pair(variant, islandData(6, 30.0, 1), moved(sphereData(1, 5.0), {0, 60, 0}));
        const auto hash = hashOf(pair.land);
        pair.carve();
        pair.land.computeNormals();
        EXPECT_EQ(hashOf(pair.land), hash);
    }
}

TEST(CsgBoolean, VolumeIsKept) {
    // What A loses to B is what B would lose to A.
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(-12.0, 12.0);
    int hits = 0;
    int closed = 0;
    for (int i = 0; i < 40; ++i) {
        const Variant& variant = variants()[static_cast<std::size_t>(i) % variants().size()];
        const csgMeshData land = islandData(8, 30.0, static_cast<std::uint32_t>(i));
        const csgMeshData ball = moved(sphereData(2, 5.0), {place(random), 8.0 + 0.3 * place(random), place(random)});
        Pair pair(variant, land, ball);
        pair.carve();
        Pair reverse(variant, ball, land);
        reverse.carve();
        hits += pair.carved() > 1.0 ? 1 : 0;
        const bool slivers = pair.land.getCarveStats().tooSmall + reverse.land.getCarveStats().tooSmall > 0;
        EXPECT_NEAR(pair.carved(), reverse.carved(), slivers ? 1e-3 : 1e-8) << i;
        if (slivers)
            continue;
        EXPECT_EQ(openEdgesOf(pair.land), 0u) << i;
        ++closed;
    }
    EXPECT_GT(hits, 30);
    EXPECT_GT(closed, 25);
}

TEST(CsgBoolean, EveryColumnIsRightAfterManyCraters) {
    csgMesh land;
    csgMesh original;
    land.build(islandData(20, 60.0, 2));
    original.build(islandData(20, 60.0, 2));
    std::mt19937 random(8);
    std::uniform_real_distribution<double> place(-20.0, 20.0);
    std::vector<std::unique_ptr<csgMesh>> holes;
    for (int i = 0; i < 60; ++i) {
        const csgMeshData data = sphereData(i % 3 == 0 ? 1 : 2, i % 3 == 0 ? 3.5 : 8.0);
        const csgVector centre{place(random), 12.0 + 0.4 * place(random), place(random)};
        csgMesh tool;
        tool.build(data);
        tool.translate(centre.x, centre.y, centre.z);
        land.carve(tool);
        holes.push_back(std::make_unique<csgMesh>());
        holes.back()->build(data);
        holes.back()->translate(centre.x, centre.y, centre.z);
    }
    std::uniform_real_distribution<double> column(-29.9, 29.9);
    int changed = 0;
    for (int i = 0; i < 3000; ++i) {
        const double x = column(random);
        const double z = column(random);
        std::vector<std::pair<double, double>> cut;
        for (const auto& hole : holes) {
            for (const auto& stretch : columnOf(*hole, x, z))
                cut.push_back(stretch);
        }
        const auto before = columnOf(original, x, z);
        const double expected = lengthWithout(before, cut);
        ASSERT_NEAR(columnLength(land, x, z), expected, 1e-6) << x << ", " << z;
        changed += expected < lengthWithout(before, {}) - 0.1 ? 1 : 0;
    }
    EXPECT_GT(changed, 1000);
}

TEST(CsgBoolean, SameCentreAgainAndAgain) {
    csgMesh land;
    land.build(islandData(12, 60.0, 4));
    double afterFirst = 0.0;
    for (int i = 0; i < 6; ++i) {
        csgMesh tool;
        tool.build(sphereData(2, 10.0));
        tool.translate(3.0, 12.0, -4.0);
        land.carve(tool);
        if (i == 0)
            afterFirst = volumeOf(land);
    }
    // The tool steps aside by a few hundredths each time; it must not tear the wall open.
    const double loss = afterFirst - volumeOf(land);
    EXPECT_GT(loss, 0.0);
    EXPECT_LT(loss, 30.0);
    EXPECT_EQ(openEdgesOf(land), 0u);
    EXPECT_NEAR(columnLength(land, 3.1, -4.2), 27.0, 0.5) << "from the underside to the bottom of the crater";
}

TEST(CsgBoolean, TextureStaysWhereItWas) {
    csgMesh land;
    land.build(islandData(10, 40.0, 6));
    csgMesh tool;
    const csgVector centre{2.0, 11.0, 1.0};
    tool.build(sphereData(2, 7.0));
    tool.translate(centre.x, centre.y, centre.z);
    land.carve(tool);
    std::size_t fromTool = 0;
    for (const auto& face : land.getParts()[0]) {
        const auto isAt = [&](const csgVector& origin) {
            for (std::size_t i = 0; i < 3; ++i) {
                const csgVector p = face->cornerPosition(i) - origin;
                if (std::fabs(face->tex[i].u - (0.1 * p.x + 0.02 * p.y)) > 1e-6 ||
                    std::fabs(face->tex[i].v - (0.1 * p.z - 0.03 * p.y)) > 1e-6)
                    return false;
            }
            return true;
        };
        fromTool += isAt(centre) ? 1U : 0U;
        ASSERT_TRUE(isAt(csgVector{}) || isAt(centre));
    }
    EXPECT_EQ(fromTool, land.getCarveStats().adopted);
    EXPECT_GT(fromTool, 50u);
}

TEST(CsgBoolean, CraterWallsGoToThePartInFront) {
    csgMeshData two = boxData({0, 0, 0}, {10, 10, 10});
    two.parts.push_back(boxData({20, 0, 0}, {30, 10, 10}).parts[0]);
    csgMesh land;
    land.build(two);
    csgMesh tool;
    tool.build(moved(sphereData(1, 3.0), {25, 10, 5}));
    land.carve(tool);
    EXPECT_EQ(land.getParts()[0].size(), 12u + land.getCarveStats().adopted);
    EXPECT_GT(land.getCarveStats().adopted, 20u);
    EXPECT_EQ(openEdgesOf(land), 0u);
}

TEST(CsgBoolean, AdoptingNeedsAPart) {
    csgMesh empty;
    csgMesh box;
    box.build(boxData({0, 0, 0}, {1, 1, 1}));
    EXPECT_EQ(empty.adoptFace(*box.getParts()[0][0]), nullptr);
    EXPECT_TRUE(empty.getVertices().empty());
}

TEST(CsgBoolean, PublicStepsClassifyEveryFace) {
    csgMesh land;
    csgMesh tool;
    land.build(boxData({0, 0, 0}, {10, 10, 10}));
    tool.build(boxData({2, 2, 8}, {4, 4, 12}));
    land.splitAgainst(tool);
    land.classifyAgainst(tool);
    std::array<int, 6> count{};
    for (const auto& face : land.getParts()[0])
        ++count[static_cast<std::size_t>(face->status)];
    EXPECT_EQ(count[csgUnclassified], 0);
    EXPECT_GT(count[csgOutside], 10);
    double inside = 0.0;
    for (const auto& face : land.getParts()[0])
        inside += face->status == csgInside ? face->area() : 0.0;
    EXPECT_NEAR(inside, 4.0, 1e-9);
}

TEST(CsgBoolean, SameBitsInEveryBuild) {
    // Made with the four operations and the square root alone, which are the same everywhere.
    csgMesh land;
    land.build(boxData({-20, -8, -20}, {20, 8, 20}));
    for (int i = 0; i < 40; ++i) {
        csgMesh tool;
        tool.build(sphereData(i % 2 + 1, 3.0 + 0.25 * (i % 7)));
        tool.translate((i * 37 % 41) - 20.3, 7.6 - 0.1 * (i % 9), (i * 23 % 41) - 19.7);
        land.carve(tool);
        land.computeNormals();
    }
    EXPECT_EQ(hashOf(land), 15448822649031231320ULL) << "as the release, debug and sanitizer builds of x86-64 gave it";
}
