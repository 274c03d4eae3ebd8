#include "game/blast.h"

#include "core/team.h"
#include "game/worm.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace {

class BlastTest : public testing::Test {
protected:
    BlastTest() {
        worm = new Worm("worm", &team);
        theModuleManager->getSceneRoot()->addChild(worm);
    }

    /// Sets a blast off at the origin with the worm standing there.
    void blastWithWormAt(const Vector3& position, float strength, float radius) {
        worm->setPosition(position);
        theModuleManager->getSceneRoot()->SceneNode::update();
        worm->setPosition(position);
        worm->SceneNode::update();
        Blast(Vector3(0, 0, 0), strength, radius).applyTo(theModuleManager->getSceneRoot());
    }

    TestData data;
    TestServices services;
    BoundingBox nowhere;
    Team team{"team", &nowhere, 1, 1, 1, {}, 0};
    Worm* worm;
};

TEST_F(BlastTest, DamageFallsOffToTheRadius) {
    blastWithWormAt(Vector3(3, 0, 0), 90, 15);
    EXPECT_FLOAT_EQ(worm->getHealth(), 100.0f - 72.0f);
    EXPECT_TRUE(worm->jumping);
    EXPECT_FLOAT_EQ(worm->jumpVelocity.x, 90.0f / 15.0f * 200.0f);
    EXPECT_FLOAT_EQ(worm->jumpVelocity.y, 360.0f);
}

TEST_F(BlastTest, TheRimThrowsWithoutHurtingAndBeyondItNothingHappens) {
    blastWithWormAt(Vector3(0, 0, 10), 80, 10);
    EXPECT_EQ(worm->getHealth(), 100.0f);
    EXPECT_TRUE(worm->jumping);
    worm->jumping = false;
    blastWithWormAt(Vector3(0, 0, 10.01f), 80, 10);
    EXPECT_EQ(worm->getHealth(), 100.0f);
    EXPECT_FALSE(worm->jumping);
}

TEST_F(BlastTest, TheCentreThrowsStraightUp) {
    blastWithWormAt(Vector3(0, 0, 0), 80, 10);
    EXPECT_FLOAT_EQ(worm->getHealth(), 20.0f);
    EXPECT_EQ(worm->jumpVelocity, Vector3(0, 480, 0));
}

} // namespace
