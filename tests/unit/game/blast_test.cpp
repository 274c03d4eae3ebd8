#include "game/armoury/blast.h"

#include "core/teams/team.h"
#include "game/armoury/armoury.h"
#include "game/play/worm.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace {

TEST(Blast, HurtsByDistanceAndThrowsByDirectionWithinItsRadius) {
    const TestData data;
    const TestServices services;
    const BoundingBox nowhere;
    Team team("team", &nowhere, 1, 1, 1, {}, 0, issueWeapons);
    const Vector3 centre(5, -6, 7);
    struct Case {
        Vector3 offset;
        float strength;
        float radius;
        float health;
        bool thrown;
        Vector3 velocity;
    };
    for (const Case& each :
         {Case{{3, 0, 0}, 90, 15, 28, true, {1200, 360, 0}}, Case{{0, -6, 8}, 30, 20, 85, true, {0, 90, 240}},
          Case{{0, 0, -10}, 80, 10, 100, true, {0, 480, -1600}}, // the rim throws without hurting
          Case{{0, 0, 10.01f}, 80, 10, 100, false, {0, 0, 0}}, Case{{0, 0, 0}, 80, 10, 20, true, {0, 480, 0}}}) {
        auto* const worm = new Worm("worm", &team);
        theModuleManager->getSceneRoot()->addChild(worm);
        worm->setPosition(centre + each.offset);
        worm->SceneNode::update();
        Blast(centre, each.strength, each.radius).applyTo(theModuleManager->getSceneRoot());
        EXPECT_FLOAT_EQ(worm->getHealth(), each.health);
        EXPECT_EQ(worm->jumping, each.thrown);
        EXPECT_LT((worm->jumpVelocity - each.velocity).length(), 1e-3f) << each.health;
        theModuleManager->getSceneRoot()->deleteChild(worm);
    }
}

} // namespace
