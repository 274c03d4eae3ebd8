#include "core/bounding_box.h"

#include "render/matrix.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

TEST(BoundingBox, MergeTakesTheFirstBoxAndIgnoresEmptyOnes) {
    BoundingBox box;
    box.merge(BoundingBox({5, 6, 7}, {8, 9, 10}));
    EXPECT_EQ(box.min, Vector3(5, 6, 7));
    box.merge(BoundingBox());
    EXPECT_EQ(box.min, Vector3(5, 6, 7));
    EXPECT_EQ(box.max, Vector3(8, 9, 10));
    box.merge(BoundingBox({-1, 7, 8}, {6, 20, 9}));
    EXPECT_EQ(box.min, Vector3(-1, 6, 7));
    EXPECT_EQ(box.max, Vector3(8, 20, 10));
}

TEST(BoundingBox, BoxesThatTouchIntersect) {
    const BoundingBox unit({0, 0, 0}, {1, 1, 1});
    EXPECT_TRUE(unit.intersects(BoundingBox({1, 0, 0}, {2, 1, 1})));
    EXPECT_FALSE(unit.intersects(BoundingBox({1.001f, 0, 0}, {2, 1, 1})));
    EXPECT_FALSE(unit.intersects(BoundingBox({0, 0, -2}, {1, 1, -0.5f})));
    EXPECT_TRUE(unit.intersects(BoundingBox({-9, -9, -9}, {9, 9, 9})));
}

TEST(BoundingBox, TransformedHoldsTheTurnedCorners) {
    Matrix turn;
    turn.rotationZ(std::numbers::pi_v<float> / 2);
    turn.setTranslation(10, 0, 0);
    const BoundingBox turned = BoundingBox({0, 0, 0}, {4, 1, 2}).transformed(turn);
    EXPECT_NEAR(turned.min.x, 9, 1e-5);
    EXPECT_NEAR(turned.max.x, 10, 1e-5);
    EXPECT_NEAR(turned.max.y, 4, 1e-5);
    EXPECT_NEAR(turned.max.z, 2, 1e-5);
}

TEST(BoundingBox, AnInvertedBoxTransformsToTheFullOne) {
    const BoundingBox box = BoundingBox({100, 100, 100}, {-100, -100, -100}).transformed(Matrix());
    EXPECT_EQ(box.min, Vector3(-100, -100, -100));
    EXPECT_EQ(box.max, Vector3(100, 100, 100));
}

} // namespace
