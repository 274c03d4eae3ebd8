#include "game/collision_detection.h"

#include "core/scene_node.h"
#include "game/collision_packet.h"
#include "game/plane.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

namespace {

using Triangle = std::array<Vector3, 3>;

/// An obstacle made of triangles and unit spheres, large enough for every box test.
class Obstacle : public SceneNode {
public:
    Obstacle() : SceneNode("obstacle") { localBounds.set(Vector3(-1e6f, -1e6f, -1e6f), Vector3(1e6f, 1e6f, 1e6f)); }
    int getCollisionType() override { return 1; }
    void collide(CollisionPacket* packet) override {
        CollisionDetection* const service = theModuleManager->getCollisionDetection();
        for (const Triangle& t : triangles)
            service->checkTriangle(packet, t[0] / packet->radius, t[1] / packet->radius, t[2] / packet->radius);
        for (const Vector3& centre : spheres)
            service->checkSphere(packet, centre / packet->radius);
    }

    std::vector<Triangle> triangles;
    std::vector<Vector3> spheres;
};

class Collision : public testing::Test {
protected:
    Collision() {
        theModuleManager->getSceneRoot()->addChild(obstacle);
        packet.radius = Vector3(1, 1, 1);
    }

    void addFloor(float height) {
        obstacle->triangles.push_back(
            {Vector3(-500, height, 500), Vector3(500, height, 500), Vector3(0, height, -800)});
    }
    /// A wall in the plane x, its front to -X.
    void addWall(float x) {
        obstacle->triangles.push_back({Vector3(x, -500, -500), Vector3(x, -500, 500), Vector3(x, 800, 0)});
    }
    Vector3 move(const Vector3& from, const Vector3& by) {
        refresh(from, by);
        service->moveToContact(&packet, theModuleManager->getSceneRoot());
        return packet.worldPosition;
    }
    Vector3 slide(const Vector3& from, const Vector3& by) {
        refresh(from, by);
        service->moveAndSlide(&packet, theModuleManager->getSceneRoot());
        return packet.worldPosition;
    }
    void refresh(const Vector3& from, const Vector3& by) {
        theModuleManager->getSceneRoot()->update();
        packet.worldPosition = from;
        packet.worldVelocity = by;
    }

    TestServices services;
    CollisionDetection* service = theModuleManager->getCollisionDetection();
    Obstacle* obstacle = new Obstacle;
    CollisionPacket packet;
};

TEST_F(Collision, AFallStopsTheMarginAboveTheFloorAndRestsThere) {
    addFloor(0);
    packet.radius = Vector3(2, 5, 2);
    const Vector3 landed = move(Vector3(0, 50, 0), Vector3(0, -100, 0));
    EXPECT_TRUE(packet.foundCollision);
    EXPECT_NEAR(landed.y, 5.0f * 1.005f, 1e-4f);
    const Vector3 again = move(landed, Vector3(0, -0.32f, 0));
    EXPECT_TRUE(packet.foundCollision);
    EXPECT_NEAR(again.y, landed.y, 1e-5f);
    EXPECT_EQ(move(landed, Vector3(0, 0, 0)), landed);
    EXPECT_FALSE(packet.foundCollision) << "no displacement, no contact";
}

TEST_F(Collision, BackFacesAreNeverHit) {
    addFloor(0);
    move(Vector3(0, -10, 0), Vector3(0, 100, 0));
    EXPECT_FALSE(packet.foundCollision);
    EXPECT_EQ(packet.worldPosition.y, 90.0f);
}

TEST_F(Collision, VerticesAndEdgesAreMet) {
    // A triangle whose edge y = 0, z = 0 runs along X; the mover passes above it by half its radius.
    obstacle->triangles.push_back({Vector3(10, 0, 0), Vector3(-10, 0, 0), Vector3(0, -10, 0)});
    const Vector3 atEdge = move(Vector3(0, 0.5f, 10), Vector3(0, 0, -20));
    EXPECT_TRUE(packet.foundCollision);
    EXPECT_NEAR(atEdge.z, std::sqrt(0.75f) + 0.005f, 1e-3f);
    const Vector3 atVertex = move(Vector3(10.5f, 0, 10), Vector3(0, 0, -20));
    EXPECT_TRUE(packet.foundCollision);
    EXPECT_NEAR(atVertex.z, std::sqrt(0.75f) + 0.005f, 1e-3f);
    move(Vector3(0, 1.1f, 10), Vector3(0, 0, -20));
    EXPECT_FALSE(packet.foundCollision);
}

TEST_F(Collision, TheNearestOfManyWins) {
    for (const float x : {30.0f, 10.0f, 20.0f})
        addWall(x);
    EXPECT_NEAR(move(Vector3(0, 0, 0), Vector3(50, 0, 0)).x, 9.0f - 0.005f, 1e-4f);
}

TEST_F(Collision, SpheresTouchAtTwoRadiiAndAnOwnSphereStopsLongSweeps) {
    obstacle->spheres.push_back(Vector3(10, 0, 0));
    EXPECT_NEAR(move(Vector3(0, 0, 0), Vector3(50, 0, 0)).x, 8.0f - 0.005f, 1e-4f);
    EXPECT_EQ(packet.intersectionPoint.y, 0.0f);
    // A mover inside a sphere leaves it after two units and is stopped there.
    EXPECT_NEAR(move(Vector3(10, 0, 0), Vector3(0, 7, 0)).y, 2.0f - 0.005f, 1e-4f);
    move(Vector3(10, 0, 0), Vector3(0, 1.9f, 0));
    EXPECT_FALSE(packet.foundCollision);
}

TEST_F(Collision, SlidingKeepsTheMotionAlongTheWall) {
    addFloor(0);
    addWall(10);
    const Vector3 end = slide(Vector3(0, 1.005f, 0), Vector3(20, 0, 6));
    EXPECT_NEAR(end.x, 9.0f, 0.02f);
    EXPECT_NEAR(end.z, 6.0f, 0.1f);
    EXPECT_GE(end.y, 1.0f);
}

TEST_F(Collision, ACornerEndsTheSlide) {
    addWall(10);
    obstacle->triangles.push_back({Vector3(-500, -500, 10), Vector3(0, 800, 10), Vector3(500, -500, 10)});
    const Vector3 end = slide(Vector3(0, 0, 0), Vector3(40, 0, 40));
    EXPECT_LT(end.x, 9.01f);
    EXPECT_LT(end.z, 9.01f);
    EXPECT_GT(end.x, 8.9f);
}

TEST_F(Collision, ABounceOnAFloorMirrorsTheFall) {
    addFloor(0);
    refresh(Vector3(0, 3, 0), Vector3(0.5f, -5, 0));
    Vector3 velocity(5, -50, 0);
    service->moveAndBounce(&packet, theModuleManager->getSceneRoot(), &velocity);
    EXPECT_TRUE(packet.foundCollision);
    EXPECT_NEAR(velocity.y, 50.0f, 0.5f);
    EXPECT_NEAR(velocity.x, 5.0f, 0.5f);

    refresh(Vector3(0, 3, 0), Vector3(0, -5, 0));
    velocity = Vector3(0, -0.3f, 0); // below the floor of 0.5: straight back
    service->moveAndBounce(&packet, theModuleManager->getSceneRoot(), &velocity);
    EXPECT_FLOAT_EQ(velocity.y, 0.3f);

    refresh(Vector3(0, 30, 0), Vector3(0, -5, 0));
    velocity = Vector3(1, 2, 3);
    service->moveAndBounce(&packet, theModuleManager->getSceneRoot(), &velocity);
    EXPECT_EQ(velocity, Vector3(1, 2, 3)) << "nothing met";
}

TEST_F(Collision, RandomMoversNeverPassAFloor) {
    addFloor(0);
    std::mt19937 random(11);
    std::uniform_real_distribution<float> place(-50.0f, 50.0f);
    std::uniform_real_distribution<float> size(0.5f, 6.0f);
    int hits = 0;
    for (int i = 0; i < 2000; ++i) {
        packet.radius = Vector3(size(random), size(random), size(random));
        const Vector3 start(place(random), packet.radius.y * 1.01f + size(random), place(random));
        const Vector3 by(place(random), place(random), place(random));
        const Vector3 end = slide(start, by);
        hits += (end - (start + by)).length() > 0.01f ? 1 : 0; // the last sweep of a slide may be free again
        EXPECT_GT(end.y, packet.radius.y * 0.999f);
    }
    EXPECT_GT(hits, 300);
}

TEST(LowestRoot, BothLimitsAreExclusive) {
    float root = -1;
    EXPECT_TRUE(lowestRoot(1, -3, 2, 5, root)); // 1 and 2
    EXPECT_FLOAT_EQ(root, 1);
    EXPECT_FALSE(lowestRoot(1, -3, 2, 1, root));
    EXPECT_TRUE(lowestRoot(1, -2, 0, 5, root)); // 0 and 2
    EXPECT_FLOAT_EQ(root, 2);
    EXPECT_FALSE(lowestRoot(1, 0, 1, 5, root));
    EXPECT_FALSE(lowestRoot(0, 0, 0, 5, root));
    EXPECT_TRUE(lowestRoot(-1, 3, -2, 5, root)); // the order does not depend on the sign
    EXPECT_FLOAT_EQ(root, 1);
}

TEST(PointInTriangle, InsideOutsideAndCorners) {
    const Vector3 a(0, 0, 0);
    const Vector3 b(4, 0, 0);
    const Vector3 c(0, 4, 0);
    EXPECT_TRUE(pointInTriangle(Vector3(1, 1, 0), a, b, c));
    EXPECT_TRUE(pointInTriangle(Vector3(1, 1, 0), a, c, b));
    EXPECT_FALSE(pointInTriangle(Vector3(3, 3, 0), a, b, c));
    EXPECT_FALSE(pointInTriangle(Vector3(-0.1f, 1, 0), a, b, c));
    EXPECT_TRUE(pointInTriangle(a, a, b, c));
    EXPECT_FALSE(pointInTriangle(b, a, b, c)) << "the far edge does not belong to it";
}

TEST(Plane, FacesAndDistances) {
    const Plane plane(Vector3(0, 2, 0), Vector3(0, 2, 1), Vector3(1, 2, 0));
    EXPECT_EQ(plane.normal, Vector3(0, 1, 0));
    EXPECT_DOUBLE_EQ(plane.signedDistanceTo(Vector3(7, 5, 7)), 3.0);
    EXPECT_TRUE(plane.isFrontFacingTo(Vector3(0, -1, 0)));
    EXPECT_TRUE(plane.isFrontFacingTo(Vector3(1, 0, 0)));
    EXPECT_FALSE(plane.isFrontFacingTo(Vector3(0, 1, 0)));
}

} // namespace
