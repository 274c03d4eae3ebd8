#include "render/static_mesh.h"

#include "platform/headless/headless.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace {

class StaticMeshTest : public testing::Test {
protected:
    TestData data;
    TestServices services;
};

constexpr const char* twoGroups = "2\n3\n0 0 0 0 0\n1 0 0 1 0\n0 1 0 0 1\n1\n0 1 2\nwood\n"
                                  "1\n5 5 5 0.5 0.5\n0\nstone\n";

TEST_F(StaticMeshTest, ExpandsTrianglesIntoCorners) {
    data.write("mesh/hut.msh", twoGroups);
    StaticMesh mesh("hut");
    EXPECT_EQ(mesh.getGroupCount(), 2);
    EXPECT_EQ(mesh.getTriangleCounts(), (std::vector<int>{1, 0}));
    EXPECT_EQ(mesh.getCornerPositions(0)[1], Vector3(1, 0, 0));
    headless::captureGeometry(true);
    mesh.update();
    mesh.draw();
    EXPECT_EQ(headless::glPrimitives().at(0).vertices.size(), 3u);
    EXPECT_EQ(headless::glPrimitives().at(0).coordinates[2][1], 1.0f);
    headless::captureGeometry(false);
    EXPECT_EQ(mesh.getWorldBounds().min.x, -1000.0f);
    EXPECT_TRUE(headless::problems().empty());
}

TEST_F(StaticMeshTest, WhatIsNotWholeStaysEmpty) {
    EXPECT_EQ(StaticMesh("absent").getGroupCount(), 0);
    const std::string whole = twoGroups;
    for (std::size_t length = 0; length + 7 < whole.size(); ++length) {
        data.write("mesh/cut.msh", whole.substr(0, length));
        EXPECT_EQ(StaticMesh("cut").getGroupCount(), 0) << length;
    }
    for (const char* const bad :
         {"-1", "2000000000", "1 -3", "1 2000000000 0 0 0", "1 1 0 0 0 0 0 1 0 0 1 wood", "1 1 0 0 0 0 0 1 0 0 -1 wood",
          "1 1 0 0 nan 0 0 1 0 0 0 wood", "1 1 0 0 0 0 0 -1 wood"}) {
        data.write("mesh/bad.msh", bad);
        EXPECT_EQ(StaticMesh("bad").getGroupCount(), 0) << bad;
    }
}

} // namespace
