#include "core/team.h"

#include "core/damageable.h"
#include "core/module_manager.h"
#include "core/scene_node.h"
#include "core/team_manager.h"
#include "csg/csg_object.h"
#include "game/weapon.h"
#include "game/worm.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class TeamTest : public testing::Test {
protected:
    TestData data;
    TestServices services;
};

TEST_F(TeamTest, AnEmptyManagerPassesTheTurnToNobody) {
    auto* const manager = new TeamManager;
    EXPECT_EQ(manager->nextTeam(), nullptr);
    manager->startTurn();
    manager->removeTeam(nullptr);
    EXPECT_EQ(manager->getTeamCount(), 0);
}

TEST_F(TeamTest, TheWeaponListHasItsOrderAndAmmunition) {
    const BoundingBox nowhere;
    const Team team("team", &nowhere, 0.25f, 0.5f, 0.75f, {}, 0);
    const int ammo[] = {-1, 2, 1, 1, 1};
    ASSERT_EQ(team.getWeapons().size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(team.getWeapons()[i]->ammo, ammo[i]);
        EXPECT_EQ(team.getWeapons()[i]->weapon->getWeaponIndex(), static_cast<int>(i));
        EXPECT_EQ(team.getWeapons()[i]->weapon->getShotsPerTurn(), i == 1 ? 2u : 1u);
    }
    EXPECT_EQ(team.getColour(), (std::array<float, 4>{0.25f, 0.5f, 0.75f, 1.0f}));
}

TEST_F(TeamTest, WithoutLandTheDropsAreGivenUp) {
    const BoundingBox empty;
    const Team team("team", &empty, 1, 1, 1, {"a"}, 2);
    EXPECT_EQ(team.getCurrentWorm(), nullptr);
}

/// Deadly to the first worms that it sees.
class Reaper : public SceneNode {
public:
    explicit Reaper(int count) : SceneNode("reaper"), left(count) {}

    void update() override {
        theModuleManager->getSceneRoot()->forEachChild([this](SceneNode* node) {
            if (node->asWorm() != nullptr && left > 0) {
                --left;
                node->getDamageableNode()->applyDamage(1000.0f);
            }
        });
    }

private:
    int left;
};

TEST_F(TeamTest, AWormMayEndInTheFrameInWhichItIsDropped) {
    data.writeFlatLevel({});
    new TeamManager;
    auto* const land = new csgObject;
    ASSERT_TRUE(land->load("./csg/slab"));
    SceneNode* const root = theModuleManager->getSceneRoot();
    root->addChild(land);
    root->addChild(new Reaper(3));
    const BoundingBox box = land->getLocalBounds();
    Team team("team", &box, 1, 1, 1, {"a", "b"}, 2);
    EXPECT_EQ(team.getWorms().size(), 2u) << "others are dropped in their place";
    std::vector<const Worm*> standing;
    root->forEachChild([&](SceneNode* node) {
        if (node->asWorm() != nullptr)
            standing.push_back(node->asWorm());
    });
    EXPECT_EQ(standing, std::vector<const Worm*>(team.getWorms().begin(), team.getWorms().end()));
}

TEST_F(TeamTest, ATeamOfOneKeepsTheTurn) {
    auto* const manager = new TeamManager;
    const BoundingBox nowhere;
    auto* const team = new Team("team", &nowhere, 1, 1, 1, {}, 0);
    manager->addTeam(team);
    EXPECT_EQ(manager->nextTeam(), team);
    EXPECT_EQ(manager->nextTeam(), team);
    team->nextWorm(); // no worms: nothing
    EXPECT_EQ(team->getCurrentWorm(), nullptr);
}

} // namespace
