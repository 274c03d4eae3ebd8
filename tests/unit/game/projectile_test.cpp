#include "core/team.h"
#include "game/bazooka.h"
#include "game/dynamite_projectile.h"
#include "game/grenade.h"
#include "game/rocket.h"
#include "game/shotgun_bullet.h"
#include "platform/headless/headless.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include "csg/csg_object.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class ProjectileTest : public testing::Test {
protected:
    ProjectileTest() {
        data.writeSolid("sphere", sphereData(2, 10.0));
        data.writeSolid("slab", boxData({-100, -20, -100}, {100, 0, 100}));
        services.tick(16);
    }

    csgObject& addLand() {
        auto* const land = new csgObject;
        land->load("./csg/slab");
        theModuleManager->getSceneRoot()->addChild(land);
        theModuleManager->getSceneRoot()->update();
        return *land;
    }
    bool inScene(const SceneNode* node) const {
        for (const SceneNode* const child : theModuleManager->getSceneRoot()->getChildren())
            if (child == node)
                return true;
        return false;
    }
    void framesUntilGone(const SceneNode* node, int limit) {
        for (int i = 0; i < limit && inScene(node); ++i)
            services.frame(16);
    }

    TestData data;
    TestServices services;
    BoundingBox nowhere;
};

TEST_F(ProjectileTest, ARocketFliesUnderGravityAndDetonatesAfterItsLifetime) {
    auto* const rocket = new Rocket(Vector3(0, 500, 0), Vector3(0, 0, 30), nullptr);
    const unsigned birth = GetTickCount();
    for (int i = 0; i < 60; ++i)
        services.frame(16);
    EXPECT_NEAR(rocket->getVelocity().y, -9.6f, 0.01f);
    EXPECT_NEAR(rocket->getPosition().z, 30.0f * 0.96f, 0.1f);
    // The model's Y axis points along the flight.
    const Vector3 axis(rocket->getRotationMatrix().data() + 4);
    EXPECT_GT(axis.dot(normalized(rocket->getVelocity())), 0.999f);
    framesUntilGone(rocket, 400);
    EXPECT_GT(GetTickCount() - birth, 5000u);
    EXPECT_LE(GetTickCount() - birth, 5016u);
    ASSERT_FALSE(theModuleManager->getSceneRoot()->getChildren().empty());
    EXPECT_EQ(theModuleManager->getSceneRoot()->getChildren().back()->getNodeName(), "explosion");
}

TEST_F(ProjectileTest, ARocketBelowTheLevelVanishesQuietly) {
    auto* const rocket = new Rocket(Vector3(0, -4, 0), Vector3(0, -10, 0.01f), nullptr);
    framesUntilGone(rocket, 20);
    EXPECT_FALSE(inScene(rocket));
    for (const SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        EXPECT_NE(node->getNodeName(), "explosion");
}

TEST_F(ProjectileTest, ContactSetsARocketOffButNotAStickOfDynamite) {
    csgObject& land = addLand();
    auto* const rocket = new Rocket(Vector3(0, 3, 0), Vector3(0, -20, 0.01f), nullptr);
    framesUntilGone(rocket, 20);
    EXPECT_FALSE(inScene(rocket));
    const std::size_t faces = land.countFaces();
    EXPECT_GT(faces, 12u);
    auto* const stick = new DynamiteProjectile(Vector3(50, 3, 0), Vector3(0, 0, 0), nullptr);
    for (int i = 0; i < 200; ++i)
        services.frame(16);
    ASSERT_TRUE(inScene(stick));
    EXPECT_NEAR(stick->getPosition().y, 1.005f, 0.01f);
    EXPECT_LT(stick->getVelocity().y, -30.0f) << "its velocity is never cleared";
    EXPECT_EQ(land.countFaces(), faces);
}

TEST_F(ProjectileTest, ABulletGoesOffAfterASecondWithoutALowerLimit) {
    auto* const bullet = new ShotgunBullet(Vector3(0, 0, 0), Vector3(0, -1000, 0), nullptr);
    const unsigned birth = GetTickCount();
    services.frame(16);
    EXPECT_TRUE(inScene(bullet));
    EXPECT_NEAR(bullet->getPosition().y, -16.0f, 0.01f);
    framesUntilGone(bullet, 100);
    EXPECT_GT(GetTickCount() - birth, 1000u);
    EXPECT_LE(GetTickCount() - birth, 1016u);
}

TEST_F(ProjectileTest, AGrenadeBouncesWithoutLossAndCutsAfterItsTime) {
    csgObject& land = addLand();
    auto* const grenade = new Grenade(Vector3(0, 21, 0), Vector3(0, 0, 0), nullptr);
    float lowest = 100.0f;
    float highestAfter = 0.0f;
    bool bounced = false;
    for (int i = 0; i < 300 && inScene(grenade); ++i) {
        services.frame(16);
        if (!inScene(grenade))
            break;
        lowest = std::min(lowest, grenade->getPosition().y);
        bounced = bounced || grenade->getVelocity().y > 5.0f;
        if (bounced)
            highestAfter = std::max(highestAfter, grenade->getPosition().y);
    }
    EXPECT_TRUE(bounced);
    EXPECT_GE(lowest, 1.0f);
    EXPECT_NEAR(highestAfter, 21.0f, 1.0f);
    framesUntilGone(grenade, 100);
    EXPECT_FALSE(inScene(grenade));
    EXPECT_GE(land.countFaces(), 12u);
}

TEST_F(ProjectileTest, TheOwnerIsToldOfTheEndAndADeadOwnerIsForgotten) {
    auto team = std::make_unique<Team>("team", &nowhere, 1.0f, 1.0f, 1.0f, std::vector<std::string>{}, 0u);
    Weapon* const bazooka = team->getWeaponEntry(0).weapon.get();
    auto* const first = new Rocket(Vector3(0, -4.9f, 0), Vector3(0, -30, 0.01f), bazooka);
    auto* const second = new Rocket(Vector3(0, 100, 0), Vector3(0, 0, 1), bazooka);
    framesUntilGone(first, 10);
    EXPECT_EQ(bazooka->getProjectilesFinished(), 1u);
    team.reset();
    EXPECT_EQ(second->getOwner(), nullptr);
    framesUntilGone(second, 400);
    EXPECT_FALSE(inScene(second));
}

TEST_F(ProjectileTest, SmokePastItsTimeDoesNotTroubleItsRocket) {
    auto* const rocket = new Rocket(Vector3(0, 100, 0), Vector3(0, 0, 1), nullptr);
    for (int i = 0; i < 10; ++i)
        services.frame(16);
    services.frame(4900); // the smoke's last puff is almost too old
    services.frame(60);
    services.frame(6000); // now both are: the smoke goes first
    EXPECT_FALSE(inScene(rocket));
}

TEST_F(ProjectileTest, TwoOverlappingSolidsAreBothCut) {
    csgObject& first = addLand();
    csgObject& second = addLand();
    auto* const rocket = new Rocket(Vector3(0, 3, 0), Vector3(0, -20, 0.01f), nullptr);
    framesUntilGone(rocket, 20);
    EXPECT_GT(first.countFaces(), 12u);
    EXPECT_EQ(first.countFaces(), second.countFaces());
}

} // namespace
