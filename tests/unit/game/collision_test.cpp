#include "game/collision/collision_detection.h"

#include "core/scene/scene_node.h"
#include "game/collision/collision_packet.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

namespace {

using Triangle = std::array<Vector3, 3>;

/// An obstacle made of triangles and unit spheres.
class Obstacle : public SceneNode {
public:
    Obstacle() : SceneNode("obstacle") { localBounds.set(Vector3(9, -1e6f, -1e6f), Vector3(1e6f, 1e6f, 1e6f)); }
    int getCollisionType() override { return 1; }
    void collide(CollisionPacket* packet) override {
        CollisionDetection* const service = theModuleManager->getCollisionDetection();
        for (const Triangle& t : triangles)
            service->checkTriangle(packet, t[0] / packet->radius, t[1] / packet->radius, t[2] / packet->radius);
        for (const Vector3& centre : spheres)
            service->checkSphere(packet, centre / packet->radius);
    }
    void coverEverything() { localBounds.extend(Vector3(-1e6f, 0, 0)); }

    std::vector<Triangle> triangles;
    std::vector<Vector3> spheres;
};

constexpr float margin = 0.005f;

class Collision : public testing::Test {
protected:
    Collision() {
        root->addChild(obstacle);
        packet.radius = Vector3(1, 1, 1);
    }

    void addFloor() {
        obstacle->coverEverything();
        obstacle->triangles.push_back({Vector3(-500, 0, 500), Vector3(500, 0, 500), Vector3(0, 0, -800)});
    }
    /// A wall in the plane x, its front to -X.
    void addWall(float x) {
        obstacle->triangles.push_back({Vector3(x, -500, -500), Vector3(x, -500, 500), Vector3(x, 800, 0)});
    }
    /// Moves, or slides; returns where that ends.
    Vector3 move(const Vector3& from, const Vector3& by, bool sliding = false) {
        root->update();
        packet.worldPosition = from;
        packet.worldVelocity = by;
        if (sliding)
            service->moveAndSlide(&packet, root);
        else
            service->moveToContact(&packet, root);
        return packet.worldPosition;
    }
    /// What a bounce off the floor, or a move of five units down that meets nothing, makes of a velocity.
    Vector3 bounce(float height, Vector3 velocity) {
        root->update();
        packet.worldPosition = Vector3(0, height, 0);
        packet.worldVelocity = Vector3(0, -5, 0);
        service->moveAndBounce(&packet, root, &velocity);
        return velocity;
    }

    TestServices services;
    SceneNode* root = theModuleManager->getSceneRoot();
    CollisionDetection* service = theModuleManager->getCollisionDetection();
    Obstacle* obstacle = new Obstacle;
    CollisionPacket packet;
};

TEST_F(Collision, AFallStopsTheMarginAboveTheFloorAndRestsThere) {
    addFloor();
    packet.radius = Vector3(2, 5, 3);
    const Vector3 landed = move(Vector3(0, 50, 0), Vector3(0, -100, 0));
    EXPECT_TRUE(packet.foundCollision);
    EXPECT_NEAR(landed.y, 5.0f * (1 + margin), 1e-4f);
    const Vector3 again = move(landed, Vector3(0, -0.32f, 0));
    EXPECT_TRUE(packet.foundCollision);
    EXPECT_NEAR(again.y, landed.y, 1e-5f);
    EXPECT_EQ(move(landed, Vector3(0, 0, 0)), landed);
    EXPECT_FALSE(packet.foundCollision) << "no displacement, no contact";
    EXPECT_EQ(move(Vector3(0, -10, 0), Vector3(0, 100, 0)).y, 90.0f) << "back faces are never hit";
}

TEST_F(Collision, VerticesAndEdgesAreMetAsFarAsTheyReach) {
    // A triangle whose edge y = 0, z = 0 runs along X; the mover passes above it by half its radius, or beside it.
    obstacle->coverEverything();
    obstacle->triangles.push_back({Vector3(10, 0, 0), Vector3(-10, 0, 0), Vector3(0, -10, 0)});
    const float touching = std::sqrt(0.75f) + margin;
    struct Pass {
        float x;
        float y;
        float stop;
    };
    for (const Pass& pass : {Pass{3, 0.5f, touching}, Pass{10.5f, 0, touching}, Pass{-10.5f, 0, touching},
                             Pass{0, 1.1f, -20}, Pass{11.1f, 0, -20}, Pass{-11.1f, 0, -20}, Pass{10.8f, 0.8f, -20}}) {
        EXPECT_NEAR(move(Vector3(pass.x, pass.y, 10), Vector3(0, 0, -30)).z, pass.stop, 1e-3f) << pass.x;
        EXPECT_EQ(packet.foundCollision, pass.stop > 0.0f) << pass.x;
    }
}

TEST_F(Collision, TheNearestOfManyWins) {
    for (const float x : {30.0f, 10.0f, 20.0f})
        addWall(x);
    for (const float way : {50.0f, 9.5f}) // the shorter one brings only its front into the obstacle's box
        EXPECT_NEAR(move(Vector3(0, 0, 0), Vector3(way, 0, 0)).x, 9.0f - margin, 1e-4f);
    obstacle->spheres = {Vector3(8.0f, 0.0f, 0.0f), Vector3(13.0f, 0.0f, 0.0f)};
    EXPECT_NEAR(move(Vector3(0, 0, 0), Vector3(50, 0, 0)).x, 6.0f - margin, 1e-4f) << "two radii from a sphere";
    // A mover inside a sphere leaves it after two units and is stopped there.
    EXPECT_NEAR(move(Vector3(8, 0, 0), Vector3(0, 7, 0)).y, 2.0f - margin, 1e-4f);
    move(Vector3(8, 0, 0), Vector3(0, 1.9f, 0));
    EXPECT_FALSE(packet.foundCollision);
}

TEST_F(Collision, SlidingKeepsTheMotionAlongTheWallUntilACorner) {
    addFloor();
    addWall(10);
    const Vector3 along = move(Vector3(0, 1 + margin, 0), Vector3(20, 0, 6), true);
    EXPECT_LT((along - Vector3(9 - margin, 1 + margin, 6)).length(), 0.02f);
    obstacle->triangles.push_back({Vector3(-500, -500, 15), Vector3(0, 800, 15), Vector3(500, -500, 15)});
    const Vector3 corner = move(Vector3(0, 20, 0), Vector3(40, 0, 50), true);
    EXPECT_LT((corner - Vector3(9, 20, 14)).length(), 0.02f);
}

TEST_F(Collision, ABounceOnAFloorMirrorsTheFall) {
    addFloor();
    EXPECT_LT((bounce(3, Vector3(5, -50, 2)) - Vector3(5, 50, 2)).length(), 0.6f);
    const Vector3 slow = bounce(3, Vector3(0.1f, -0.3f, 0));
    EXPECT_LT((slow - Vector3(-0.1f, 0.3f, 0)).length(), 1e-6f) << "below a speed of 0.5: straight back";
    EXPECT_EQ(bounce(30, Vector3(1, 2, 3)), Vector3(1, 2, 3)) << "nothing met";
}

TEST_F(Collision, RandomMoversNeverPassAFloor) {
    addFloor();
    std::mt19937 random(11);
    std::uniform_real_distribution<float> place(-50.0f, 50.0f);
    std::uniform_real_distribution<float> size(0.5f, 6.0f);
    int hits = 0;
    for (int i = 0; i < 2000; ++i) {
        packet.radius = Vector3(size(random), size(random), size(random));
        const Vector3 start(place(random), packet.radius.y * 1.01f + size(random), place(random));
        const Vector3 by(place(random), place(random), place(random));
        const Vector3 end = move(start, by, true);
        hits += (end - (start + by)).length() > 0.01f ? 1 : 0; // the last sweep of a slide may be free again
        EXPECT_GT(end.y, packet.radius.y * 0.999f);
    }
    EXPECT_GT(hits, 300);
}

TEST(LowestRoot, BothLimitsAreExclusiveAndTheOrderDoesNotDependOnTheSign) {
    struct Parabola {
        float a, b, c, limit;
        float root; ///< -1 for none
    };
    for (const Parabola& p : {Parabola{1, -3, 2, 5, 1}, Parabola{1, -3, 2, 1, -1}, Parabola{-1, 3, -2, 5, 1},
                              Parabola{1, -2, 0, 5, 2}, Parabola{1, 0, 1, 5, -1}, Parabola{0, 0, 0, 5, -1}}) {
        float root = -1;
        EXPECT_EQ(lowestRoot(p.a, p.b, p.c, p.limit, root), p.root > 0);
        EXPECT_FLOAT_EQ(root, p.root);
    }
}

} // namespace
