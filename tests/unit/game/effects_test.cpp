#include "core/timer.h"
#include "game/explosion.h"
#include "game/particle_system.h"
#include "platform/headless/headless.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace {

class Effects : public testing::Test {
protected:
    TestData data;
    TestServices services;

    std::vector<headless::GlPrimitive> drawn(SceneNode& node) {
        headless::captureGeometry(true);
        node.draw();
        std::vector<headless::GlPrimitive> primitives = headless::glPrimitives();
        headless::captureGeometry(false);
        return primitives;
    }
    bool inScene(const SceneNode* node) const {
        for (const SceneNode* const child : theModuleManager->getSceneRoot()->getChildren())
            if (child == node)
                return true;
        return false;
    }
};

TEST_F(Effects, AnExplosionPlaysItsSheetInOneSecond) {
    services.tick(100);
    auto* const explosion = new Explosion("explosion", Vector3(1, 2, 3), 10);
    theModuleManager->getSceneRoot()->addChild(explosion);
    const auto frameAt = [&](unsigned milliseconds) {
        const unsigned target = 100 + milliseconds;
        services.frame(target - theModuleManager->getTimer()->getLastTick());
        const auto upperLeft = drawn(*explosion).at(0).coordinates.at(2);
        return static_cast<int>(std::lround(upperLeft[0] * 5 + upperLeft[1] * 25));
    };
    EXPECT_EQ(frameAt(0), 0);
    EXPECT_EQ(frameAt(39), 0);
    EXPECT_EQ(frameAt(40), 1);
    EXPECT_EQ(frameAt(999), 24);
    EXPECT_EQ(frameAt(1000), 24);
    EXPECT_TRUE(inScene(explosion));
    services.frame(1);
    EXPECT_FALSE(inScene(explosion));
}

TEST_F(Effects, PuffsKeepTheirDistanceInTimeAndFade) {
    services.tick(100);
    auto* const smoke = new ParticleSystem("smoke");
    theModuleManager->getSceneRoot()->addChild(smoke);
    services.tick(50);
    smoke->emit(0, 0, 0);
    EXPECT_EQ(smoke->getEmitted(), 0);
    services.tick(1);
    smoke->emit(10, 20, 30);
    EXPECT_EQ(smoke->getEmitted(), 1);
    services.frame(30);
    smoke->emit(0, 0, 0);
    EXPECT_EQ(smoke->getEmitted(), 1);
    services.frame(470);
    const auto puffs = drawn(*smoke);
    ASSERT_EQ(puffs.size(), 1u);
    EXPECT_EQ(puffs[0].vertices.size(), 800u) << "dead puffs are drawn too";
    EXPECT_NEAR(puffs[0].color[3], 0.5f, 1e-5f);
    const float width = puffs[0].vertices[0][0] - puffs[0].vertices[3][0];
    EXPECT_NEAR(width, 2 * 0.5f * 3.0f, 1e-4f);
    const float centreX = (puffs[0].vertices[0][0] + puffs[0].vertices[3][0]) / 2;
    EXPECT_NEAR(centreX, 10.0f, 0.2501f);
    services.frame(600);
    EXPECT_EQ(drawn(*smoke)[0].color[3], 0.0f);
}

TEST_F(Effects, TheRingOverwritesItsOldestPuffAndTheSystemEnds) {
    auto* const smoke = new ParticleSystem("smoke");
    auto* const idle = new ParticleSystem("smoke");
    theModuleManager->getSceneRoot()->addChild(smoke);
    theModuleManager->getSceneRoot()->addChild(idle);
    for (int i = 0; i < 201; ++i) {
        services.tick(51);
        smoke->emit(static_cast<float>(i), 0, 0);
    }
    EXPECT_EQ(smoke->getEmitted(), 201);
    const auto puffs = drawn(*smoke);
    EXPECT_NEAR(puffs[0].vertices[0][0], 200.0f, 0.26f) << "size 0 at birth";
    services.frame(5000);
    EXPECT_TRUE(inScene(smoke));
    services.frame(1);
    EXPECT_FALSE(inScene(smoke));
    EXPECT_TRUE(inScene(idle)) << "it never had a puff";
}

} // namespace
