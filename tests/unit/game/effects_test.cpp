#include "core/services/timer.h"
#include "game/effects/explosion.h"
#include "game/effects/particle_system.h"
#include "support/play.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

class Effects : public testing::Test {
protected:
    Effects() { services.tick(100); }

    static std::vector<headless::GlPrimitive> drawn(SceneNode& node) {
        return captured([&node] { node.draw(); });
    }

    TestData data;
    TestServices services;
};

TEST_F(Effects, AnExplosionPlaysItsSheetInOneSecond) {
    auto* const explosion = new Explosion("explosion", Vector3(1, 2, 3), 10);
    theModuleManager->getSceneRoot()->addChild(explosion);
    unsigned passed = 0;
    // The cells run along the rows of five.
    for (const auto& [milliseconds, cell] :
         {std::pair{0u, 0l}, {39u, 0l}, {40u, 1l}, {559u, 13l}, {999u, 24l}, {1000u, 24l}}) {
        services.frame(milliseconds - passed);
        passed = milliseconds;
        const auto upperLeft = drawn(*explosion).at(0).coordinates.at(2);
        EXPECT_EQ(std::lround(upperLeft[0] * 5 + upperLeft[1] * 25), cell) << milliseconds;
    }
    EXPECT_TRUE(services.holds(explosion));
    services.frame(1);
    EXPECT_FALSE(services.holds(explosion));
}

TEST_F(Effects, PuffsKeepTheirDistanceInTimeGrowAndFade) {
    auto* const smoke = new ParticleSystem("smoke");
    theModuleManager->getSceneRoot()->addChild(smoke);
    services.tick(50);
    smoke->emit(0, 0, 0);
    EXPECT_EQ(smoke->getEmitted(), 0);
    services.tick(1);
    smoke->emit(10, 20, 30);
    services.frame(30);
    smoke->emit(0, 0, 0);
    EXPECT_EQ(smoke->getEmitted(), 1);
    services.frame(470);
    const auto puffs = drawn(*smoke);
    ASSERT_EQ(puffs.size(), 1u);
    EXPECT_EQ(puffs[0].vertices.size(), 800u) << "dead puffs are drawn too";
    EXPECT_NEAR(puffs[0].color[3], 0.5f, 1e-5f);
    const auto& corners = puffs[0].vertices;
    EXPECT_NEAR(corners[0][0] - corners[3][0], 2 * 0.5f * 3.0f, 1e-4f);
    for (std::size_t axis = 0; axis < 3; ++axis)
        EXPECT_NEAR((corners[0][axis] + corners[2][axis]) / 2, 10.0f * static_cast<float>(axis + 1), 0.2501f);
    services.frame(600);
    EXPECT_EQ(drawn(*smoke)[0].color[3], 0.0f);
}

TEST_F(Effects, TheRingOverwritesItsOldestPuffAndTheSystemEnds) {
    auto* const smoke = new ParticleSystem("smoke");
    auto* const idle = new ParticleSystem("smoke");
    theModuleManager->getSceneRoot()->addChild(smoke);
    theModuleManager->getSceneRoot()->addChild(idle);
    for (int i = 0; i < 202; ++i) {
        services.tick(51);
        smoke->emit(static_cast<float>(i), 0, 0);
    }
    const auto corners = drawn(*smoke).at(0).vertices;
    for (const auto& [slot, x] : {std::pair{0, 200.0f}, {1, 201.0f}, {2, 2.0f}, {199, 199.0f}})
        EXPECT_NEAR(corners.at(4 * static_cast<std::size_t>(slot))[0], x, 0.26f) << "size 0 at birth";
    services.frame(5000);
    EXPECT_TRUE(services.holds(smoke));
    services.frame(1);
    EXPECT_FALSE(services.holds(smoke));
    EXPECT_TRUE(services.holds(idle)) << "it never had a puff";
}

} // namespace
