#include "core/team.h"

#include "core/team_manager.h"
#include "game/weapon.h"
#include "game/worm.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

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
