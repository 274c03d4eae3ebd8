#include "csg/land/csg_object.h"
#include "game/armoury/dynamite_projectile.h"
#include "game/armoury/grenade.h"
#include "game/armoury/rocket.h"
#include "game/armoury/shotgun_bullet.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

class ProjectileTest : public testing::Test {
protected:
    ProjectileTest() { services.tick(16); }

    /// Milliseconds of frames until it is gone, at most six seconds.
    unsigned framesUntilGone(const SceneNode* node) {
        unsigned passed = 0;
        for (; passed < 6000 && services.holds(node); passed += 16)
            services.frame(16);
        return passed;
    }
    static const std::string& lastNode() {
        return theModuleManager->getSceneRoot()->getChildren().back()->getNodeName();
    }

    TestData data;
    TestServices services;
};

TEST_F(ProjectileTest, ARocketFliesUnderGravityAndDetonatesAfterItsLifetime) {
    auto* const rocket = new Rocket(Vector3(0, 500, 0), Vector3(7, 0, 30), nullptr);
    for (int i = 0; i < 60; ++i)
        services.frame(16);
    EXPECT_NEAR(rocket->getVelocity().y, -9.6f, 0.01f);
    EXPECT_LT((rocket->getPosition() - Vector3(7 * 0.96f, 500 - 4.7f, 30 * 0.96f)).length(), 0.1f);
    // It flies with its Y axis ahead.
    const Vector3 axis(rocket->getRotationMatrix().data() + 4);
    EXPECT_GT(axis.dot(normalized(rocket->getVelocity())), 0.999f);
    EXPECT_EQ(60 * 16 + framesUntilGone(rocket), 5008u);
    EXPECT_EQ(lastNode(), "explosion");
}

TEST_F(ProjectileTest, BelowTheLevelRocketAndDynamiteVanishQuietlyAndABulletGoesOn) {
    const Projectile* const sinking[] = {new Rocket(Vector3(0, -4, 0), Vector3(0, -9, 1), nullptr),
                                         new DynamiteProjectile(Vector3(0, -4.5f, 0), Vector3(0, 0, 0), nullptr)};
    for (const Projectile* const each : sinking) {
        EXPECT_LT(framesUntilGone(each), 700u);
        EXPECT_NE(lastNode(), "explosion");
    }
    auto* const bullet = new ShotgunBullet(Vector3(0, 0, 0), Vector3(0, -1000, 0), nullptr);
    services.frame(16);
    EXPECT_NEAR(bullet->getPosition().y, -16.0f, 0.01f);
    EXPECT_EQ(16 + framesUntilGone(bullet), 1008u);
}

TEST_F(ProjectileTest, AGrenadeBouncesWithoutLossAndCutsAfterItsTime) {
    data.writeSolid("sphere", sphereData(2, 10.0));
    data.writeSolid("slab", boxData({-100, -20, -100}, {100, 0, 100}));
    auto* const land = new csgObject;
    ASSERT_TRUE(land->load("./csg/slab"));
    theModuleManager->getSceneRoot()->addChild(land);
    theModuleManager->getSceneRoot()->update();
    const auto* const grenade = new Grenade(Vector3(0, 15, 0), Vector3(0, 0, 0), nullptr);
    float lowest = 100.0f;
    float highestAfter = 0.0f;
    bool bounced = false;
    for (int i = 0; i < 400 && services.holds(grenade); ++i) {
        EXPECT_EQ(land->countFaces(), 12u);
        const float height = grenade->getPosition().y;
        lowest = std::min(lowest, height);
        bounced = bounced || grenade->getVelocity().y > 5.0f;
        if (bounced)
            highestAfter = std::max(highestAfter, height);
        services.frame(16);
    }
    EXPECT_TRUE(bounced);
    EXPECT_GE(lowest, 1.0f);
    EXPECT_NEAR(highestAfter, 15.0f, 1.0f);
    EXPECT_GT(land->countFaces(), 12u) << "its second bounce is near the ground";
}

} // namespace
