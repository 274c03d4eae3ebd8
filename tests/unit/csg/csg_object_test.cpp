#include "csg/csg_object.h"

#include "core/log.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string logged;

class CsgObject : public testing::Test {
protected:
    void SetUp() override {
        logged.clear();
        setLogSink([](const char* text) { logged += text; });
    }
    void TearDown() override { setLogSink(nullptr); }

    TestData directory;
    TestServices services;
};

void expectEmpty(const csgObject& solid) {
    EXPECT_TRUE(solid.getParts().empty());
    EXPECT_TRUE(solid.getVertices().empty());
    EXPECT_FALSE(solid.getBounds());
    EXPECT_EQ(solid.getLocalBounds().max, Vector3(0.0f, 0.0f, 0.0f));
}

} // namespace

TEST_F(CsgObject, MissingFilesAndDirectoriesCannotBeOpened) {
    directory.write("csg/place.csg/file", "");
    csgObject solid;
    for (const char* name : {"missing", "place"}) {
        logged.clear();
        EXPECT_FALSE(solid.load(std::string("./csg/") + name));
        EXPECT_EQ(logged, std::string(" csgObject: Could not open csg file './csg/") + name + ".csg' \n");
        expectEmpty(solid);
    }
}

TEST_F(CsgObject, MalformedFileLeavesItEmpty) {
    directory.writeSolid("good", boxData({0, 0, 0}, {1, 1, 1}));
    directory.write("csg/bad.csg", "1 2 0 0 0 0 0 1 1");
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/good"));
    logged.clear();
    EXPECT_FALSE(solid.load("./csg/bad"));
    EXPECT_EQ(logged, " csgObject: Bad csg file './csg/bad.csg': line 1, part 0: vertex 1: z is missing \n");
    expectEmpty(solid);
    solid.translate(1.0, 2.0, 3.0);
    solid.rotateX(1.0);
    expectEmpty(solid);
}

TEST_F(CsgObject, FileWithoutPartsLoads) {
    directory.write("csg/none.csg", "0");
    csgObject solid;
    EXPECT_TRUE(solid.load("./csg/none"));
    expectEmpty(solid);
}

TEST_F(CsgObject, LocalBoxFollowsThePlacing) {
    directory.writeSolid("box", boxData({0, 0, 0}, {1, 2, 3}));
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/box"));
    solid.scale(2.0, 1.0, 1.0);
    EXPECT_EQ(solid.getLocalBounds().max, Vector3(2.0f, 2.0f, 3.0f));
    solid.rotateZ(1.5707963267948966);
    EXPECT_NEAR(solid.getLocalBounds().min.x, -2.0f, 1e-6f);
    EXPECT_NEAR(solid.getLocalBounds().max.y, 2.0f, 1e-6f);
    const csgBounds before = *solid.getBounds();
    solid.translate(0.5, -1.0, 10.0);
    EXPECT_EQ(solid.getBounds()->max, before.max + (csgVector{0.5, -1.0, 10.0}));
    EXPECT_EQ(solid.getLocalBounds().max.z, static_cast<float>(before.max.z + 10.0));
}

TEST_F(CsgObject, SubtractLogsItsSteps) {
    directory.writeSolid("land", boxData({0, 0, 0}, {10, 10, 10}));
    directory.writeSolid("ball", sphereData(1, 2.0));
    csgObject land;
    csgObject ball;
    ASSERT_TRUE(land.load("./csg/land"));
    ASSERT_TRUE(ball.load("./csg/ball"));
    ball.translate(5.0, 5.0, 5.0);
    logged.clear();
    land.subtract(ball);
    EXPECT_EQ(logged, "Before split!!!!!!!!!!!!!!\nAfter first split!!!!!!!!!!!!!!\nAfter second split!!!!!!!!!!!!!!\n"
                      " csgObject: Needed time for CSG boolean Operation 0 \n");
    EXPECT_EQ(land.countFaces(), 12u + 80u);
}

TEST_F(CsgObject, SubtractingWithOrFromNothingDoesNothing) {
    directory.writeSolid("land", boxData({0, 0, 0}, {10, 10, 10}));
    csgObject land;
    csgObject nothing;
    ASSERT_TRUE(land.load("./csg/land"));
    const auto before = hashOf(land);
    land.subtract(nothing);
    nothing.subtract(land);
    EXPECT_EQ(hashOf(land), before);
    expectEmpty(nothing);
}
