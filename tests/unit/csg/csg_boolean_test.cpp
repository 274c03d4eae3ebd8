// Laws of the difference, each case moved, turned and mirrored.

#include "csg/solid/csg_divider.h"
#include "csg/solid/csg_mesh.h"
#include "support/solids.h"
#include "support/variants.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <random>

namespace {

std::unique_ptr<csgMesh> ballAt(const csgVector& centre, int subdivisions, double radius) {
    auto ball = std::make_unique<csgMesh>();
    ball->build(sphereData(subdivisions, radius));
    ball->translate(centre.x, centre.y, centre.z);
    return ball;
}

} // namespace

TEST(CsgBoolean, BoxesTakeWhatTheyShare) {
    struct Case {
        csgVector low;
        csgVector high;
        double shared;
        std::size_t faces; ///< 0: whatever the cut makes
    };
    const std::array<Case, 10> cases{
        Case{{3, 3, 3}, {6, 7, 8}, 6.0, 0},      // corner in corner
        {{1.1, 1.3, 5}, {2.2, 2.6, 7}, 1.43, 0}, // through one face
        {{1.5, -1, 2}, {2.5, 7, 4.5}, 12.5, 0},  // a tunnel
        {{-1, -1, -1}, {5, 6, 2}, 40.0, 0},      // a third of it
        {{1, 1.5, 4}, {3, 2, 6}, 2.0, 0},        // flush with the top
        {{1, 2, 3}, {2, 4, 5.5}, 5.0, 24},       // a cavity
        {{-2, -2, -2}, {7, 7, 7}, 120.0, 0},     // everything
        {{0, 0, 0}, {4, 5, 6}, 120.0, 0},        // the land itself
        {{1, 1, 6}, {3, 2, 7}, 0.0, 0},          // standing on it
        {{6, 7, 8}, {7, 9, 9}, 0.0, 12},         // elsewhere
    };
    for (const Case& c : cases) {
        for (const Variant& variant : variants()) {
            SCOPED_TRACE(variant.name + ", shared " + std::to_string(c.shared));
            csgMesh land;
            csgMesh tool;
            land.build(variant.apply(boxData({0, 0, 0}, {4, 5, 6})));
            tool.build(variant.apply(boxData(c.low, c.high)));
            land.carve(tool);
            EXPECT_NEAR(volumeOf(land), 120.0 - c.shared, 1e-9);
            EXPECT_EQ(land.countFaces() == 0, c.shared == 120.0);
            EXPECT_TRUE(c.faces == 0 || land.countFaces() == c.faces) << land.countFaces();
            EXPECT_EQ(openEdgesOf(land), 0u);
        }
    }
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
        const int subdivisions = i % 3 == 0 ? 1 : 2;
        const csgVector centre{place(random), 12.0 + 0.4 * place(random), place(random)};
        land.carve(*ballAt(centre, subdivisions, 4.5 * subdivisions - 1.0));
        holes.push_back(ballAt(centre, subdivisions, 4.5 * subdivisions - 1.0));
        ASSERT_LE(measureOpenEdges(land).widestGap, 1e-6) << i;
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

TEST(CsgBoolean, TheSameToolAtTheSamePlaceCutsNothingAgain) {
    csgMesh land;
    land.build(islandData(12, 60.0, 4));
    struct Blast {
        csgVector centre;
        double radius;
        bool isRepeat;
    };
    const std::array<Blast, 7> blasts{{{{3.0, 12.0, -4.0}, 10.0, false},
                                       {{3.0, 12.0, -4.0}, 10.0, true},
                                       {{3.0, 12.0, -4.0}, 11.0, false},
                                       {{9.0, 12.0, -4.0}, 10.0, false},
                                       {{3.0, 12.00099, -4.0}, 10.0, true},
                                       {{9.0, 12.0, -4.00101}, 10.0, false},
                                       {{9.0, 12.0, -4.0}, 10.0, true}}};
    for (const Blast& blast : blasts) {
        SCOPED_TRACE(&blast - blasts.data());
        const std::uint64_t before = hashOf(land);
        land.carve(*ballAt(blast.centre, 2, blast.radius));
        EXPECT_EQ(land.getCarveStats().isRepeat, blast.isRepeat);
        EXPECT_EQ(hashOf(land) == before, blast.isRepeat);
    }
    EXPECT_LE(measureOpenEdges(land).widestGap, 1e-6);
    // Land that moved is another place.
    land.translate(0.0, 1.0, 0.0);
    land.carve(*ballAt({9.0, 12.0, -4.0}, 2, 10.0));
    EXPECT_FALSE(land.getCarveStats().isRepeat);
}

TEST(CsgBoolean, LongFacesAreHalvedAroundTheToolAndTidiedAfterwards) {
    // A plank of twelve faces; its ends stay as they are, and so does what is not near.
    csgMesh plank;
    plank.build(boxData({-100, -1, -6}, {100, 1, 6}));
    const double volume = volumeOf(plank);
    csgMesh untouched;
    untouched.build(boxData({-100, -1, -6}, {100, 1, 6}));
    const auto tool = ballAt({30.0, 1.5, 2.0}, 1, 1.5);
    csgDivider(plank, *tool->getBounds()).run();
    EXPECT_EQ(openEdgesOf(plank), 0u);
    EXPECT_NEAR(volumeOf(plank), volume, 1e-9);
    std::size_t longFaces = 0;
    for (const auto& face : plank.getPart(0)) {
        const csgVector size = face->bounds.max - face->bounds.min;
        longFaces += size.x > 3.5 * 3.0 ? 1 : 0;
        for (std::size_t i = 0; i < 3; ++i) {
            const csgVector& p = face->cornerPosition(i);
            EXPECT_NEAR(face->tex[i].u, 0.1 * p.x + 0.02 * p.y, 1e-12);
        }
        const bool isTop = face->bounds.min.y > 0.5;
        EXPECT_FALSE(size.x > 3.5 * 3.0 && isTop && overlaps(face->bounds, *tool->getBounds()));
    }
    EXPECT_GT(longFaces, 4u);
    EXPECT_LT(plank.countFaces(), 120u);
    // Craters that overlap leave walls cut by walls; of those no more is kept than the shape needs.
    for (int i = 0; i < 24; ++i) {
        const double before = volumeOf(plank);
        plank.carve(*ballAt({-60.0 + 3.1 * i, 1.2 + 0.03 * (i % 5), 0.1 * (i % 7)}, 1, 3.5));
        EXPECT_LT(volumeOf(plank), before);
        EXPECT_EQ(openEdgesOf(plank), 0u) << i;
    }
    EXPECT_LT(plank.countFaces(), 2200u);
    untouched.carve(*ballAt({30.0, 9.0, 2.0}, 1, 1.5));
    EXPECT_EQ(untouched.countFaces(), 12u) << "beside the land";
}

TEST(CsgBoolean, TextureStaysWhereItWas) {
    csgMesh land;
    land.build(islandData(10, 40.0, 6));
    const csgVector centre{2.0, 11.0, 1.0};
    land.carve(*ballAt(centre, 2, 7.0));
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
    csgMesh land;
    csgMeshData three = boxData({0, 0, 0}, {10, 10, 10});
    three.parts.push_back(boxData({20, 0, 0}, {30, 10, 10}).parts[0]);
    three.parts.push_back(boxData({40, 0, 0}, {50, 10, 10}).parts[0]);
    land.build(three);
    land.carve(*ballAt({45.1, 10.2, 5.3}, 1, 3.0));
    EXPECT_EQ(land.getParts()[0].size(), 12u + land.getCarveStats().adopted);
    EXPECT_EQ(land.getParts()[1].size(), 12u);
    EXPECT_GT(land.getCarveStats().adopted, 20u);
    EXPECT_EQ(openEdgesOf(land), 0u);

    csgMesh empty;
    EXPECT_EQ(empty.adoptFace(*land.getParts()[0][0]), nullptr);
    EXPECT_TRUE(empty.getVertices().empty());
}

TEST(CsgBoolean, EveryFaceIsClassified) {
    for (const Variant& variant : variants()) {
        csgMesh land;
        csgMesh tool;
        // One side of the tool is flush with one of the land's, 2 x 2; the tool takes 3 x 2 of another.
        land.build(variant.apply(boxData({0, 0, 0}, {10, 10, 10})));
        tool.build(variant.apply(boxData({0, 2, 8}, {3, 4, 11})));
        land.splitAgainst(tool);
        land.classifyAgainst(tool);
        std::map<csgStatus, double> area;
        for (const auto& face : land.getParts()[0])
            area[face->status] += face->area();
        EXPECT_NEAR(area[csgStatus::inside], 6.0, 1e-9) << variant.name;
        EXPECT_NEAR(area[csgStatus::coplanarSame], 4.0, 1e-9) << variant.name;
        EXPECT_NEAR(area[csgStatus::outside], 590.0, 1e-9) << variant.name;
    }
}

TEST(CsgBoolean, SameBitsInEveryBuild) {
    // Made with the four operations and the square root alone, which are the same everywhere.
    csgMesh land;
    land.build(boxData({-20, -8, -20}, {20, 8, 20}));
    for (int i = 0; i < 40; ++i) {
        const csgVector centre{(i * 37 % 41) - 20.3, 7.6 - 0.1 * (i % 9), (i * 23 % 41) - 19.7};
        land.carve(*ballAt(centre, i % 2 + 1, 3.0 + 0.25 * (i % 7)));
        land.computeNormals();
    }
    EXPECT_EQ(hashOf(land), 3667345005830488382ULL) << "as the release, debug and sanitizer builds of x86-64 gave it";
}
