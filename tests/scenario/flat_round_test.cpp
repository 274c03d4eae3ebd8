// Rounds on a flat slab whose top lies at height 10, where every number can be told beforehand.

#include "core/module_manager.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "csg/csg_object.h"
#include "game/projectile.h"
#include "game/weapon.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "render/camera.h"
#include "render/hud.h"
#include "render/label_node.h"
#include "support/play.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/world_hash.h"

#include <gtest/gtest.h>

namespace {

/// Aims are positive upwards. Straight down: the rocket goes off at the shooter's feet.
constexpr float downward = -1.5f;
/// Up and away over the edge of the slab.
constexpr float upward = 0.8f;

std::string activeName() {
    const Worm* const worm = world::activeWorm();
    return worm == nullptr ? "" : worm->getWormName();
}

const Projectile* rocketInFlight() {
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        if (auto* const projectile = dynamic_cast<Projectile*>(node))
            return projectile;
    return nullptr;
}

csgObject& slab() {
    SceneNode* found = nullptr;
    theModuleManager->getSceneRoot()->forEachChild([&](SceneNode* node) {
        if (node->asCsgNode() != nullptr)
            found = node;
    });
    return *found->asCsgNode();
}

/// Every scenario ends in order: window closed, nothing left open, no misuse of the desktop or GL.
class FlatRound : public testing::Test {
protected:
    TestData data;

    void play(const std::function<Script()>& script, const PlaySettings& settings = {}) {
        EXPECT_EQ(playGame(script, settings), 0);
        EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
        EXPECT_TRUE(headless::messageBoxes().empty());
        for (const std::string& problem : headless::problems())
            ADD_FAILURE() << problem;
    }
};

TEST_F(FlatRound, TurnsPassFromTeamToTeamAndWithinTheTeams) {
    data.writeFlatLevel({{"A", {"A1", "A2"}, 2}, {"B", {"B1", "B2"}, 2}, {"C", {"C1", "C2"}, 2}});
    std::string order;
    play([&]() -> Script {
        co_await frames(60);
        for (int turn = 0; turn < 7; ++turn) {
            order += activeName() + " ";
            co_await fireBazooka(upward, 0.0f, 1);
        }
    });
    EXPECT_EQ(order, "C2 A2 B2 C1 A1 B1 C2 ");
}

TEST_F(FlatRound, TheTurnEndsTwoSecondsAfterTheRocketIsGone) {
    data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
    play([]() -> Script {
        co_await frames(60);
        co_await takeWeapon(0);
        co_await aimAt(downward, 0.0f);
        Worm* const shooter = world::activeWorm();
        Weapon* const bazooka = shooter->weapon;
        headless::leftButton(true);
        co_await frames(3);
        EXPECT_TRUE(bazooka->isCharging());
        EXPECT_EQ(bazooka->getShotsFired(), 0u);
        headless::leftButton(false);
        co_await until([&] { return bazooka->getShotsFired() == 1; }, 3);
        co_await until([&] { return bazooka->isTurnEnding(); }, 100);
        const unsigned before = headless::frameCount();
        co_await until([&] { return world::activeWorm() != shooter; }, 200);
        const unsigned pause = (headless::frameCount() - before) * 16;
        EXPECT_GE(pause, 2000u);
        EXPECT_LE(pause, 2032u);
        EXPECT_EQ(shooter->weapon, nullptr);
        EXPECT_EQ(shooter->getTeam()->getWeaponEntry(0).ammo, -1);
    });
}

TEST_F(FlatRound, ARocketCutsHurtsAndThrowsByItsNumbers) {
    data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
    play([]() -> Script {
        co_await frames(60);
        Worm* const shooter = world::activeWorm();
        const double volumeBefore = volumeOf(slab());
        co_await takeWeapon(0);
        co_await aimAt(downward, 0.0f);
        co_await pressFire(1);
        co_await until([] { return rocketInFlight() == nullptr; }, 100);
        // The rocket starts 3 units down the aim and touches the ground with its sphere of radius 1.
        const double carved = volumeBefore - volumeOf(slab());
        // A ball of radius 10 whose centre lies one unit above a plane: 1/3 pi 81 (30 - 9) cut away, a little less for
        // the polyhedron that stands in for the ball.
        EXPECT_NEAR(carved, 1781.3, 80.0);
        EXPECT_EQ(openEdgesOf(slab()), 0u);
        const float distance = shooter->getHealth();
        EXPECT_NEAR(distance, 100.0f - (1.0f - 4.0f / 10.0f) * 80.0f, 1.5f);
        EXPECT_TRUE(shooter->jumping);
        // One frame of decay may have passed.
        EXPECT_NEAR(shooter->jumpVelocity.y, 480.0f, 0.7f);
    });
}

TEST_F(FlatRound, WormsOutOfReachAreNeitherHurtNorThrown) {
    data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
    play([]() -> Script {
        co_await frames(60);
        const Worm* const shooter = world::activeWorm();
        const Worm* const other = world::worm(shooter->getWormName() == "A1" ? "B1" : "A1");
        const float apart = (shooter->getWorldPosition() - other->getWorldPosition()).length();
        EXPECT_GT(apart, 30.0f) << "the drop of this seed puts the worms too close for this test";
        co_await fireBazooka(downward, 0.0f, 1);
        EXPECT_EQ(other->getHealth(), 100.0f);
        EXPECT_FALSE(other->jumping);
    });
}

TEST_F(FlatRound, AFullChargeLeavesByItselfAtJustAboveAHundred) {
    data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
    play([]() -> Script {
        co_await frames(60);
        co_await takeWeapon(0);
        co_await aimAt(upward, 0.0f);
        headless::leftButton(true);
        co_await until([] { return rocketInFlight() != nullptr; }, 80);
        if (rocketInFlight() != nullptr) {
            const float speed = rocketInFlight()->getVelocity().length();
            EXPECT_GT(speed, 99.0f);
            EXPECT_LT(speed, 102.0f);
        }
        headless::leftButton(false);
        co_await frames(2);
    });
}

TEST_F(FlatRound, TheLastTeamWinsAndEnterBeginsTheNextRound) {
    data.writeFlatLevel({{"Alder", {"A1"}, 1}, {"Birch", {"B1"}, 1}});
    play([]() -> Script {
        headless::recordGl(true);
        co_await frames(60);
        const std::string loser = world::activeWorm()->getTeam()->getName();
        const std::string winner = loser == "Alder" ? "Birch" : "Alder";
        TeamManager* const teams = theModuleManager->getTeamManager();
        for (int turn = 0; turn < 20 && teams->getTeamCount() == 2; ++turn) {
            const bool suicidal = world::activeWorm()->getTeam()->getName() == loser;
            co_await fireBazooka(suicidal ? downward : upward, 0.0f, 1);
            headless::clearGlRecords();
        }
        EXPECT_EQ(teams->getTeamCount(), 1);
        co_await frames(1);
        headless::clearGlRecords();
        co_await frames(1);
        EXPECT_TRUE(isPrinted("Team " + winner + " win!"));
        EXPECT_TRUE(isPrinted("Press ENTER for Next Round"));
        headless::recordGl(false);

        headless::tapKey(VK_RETURN);
        co_await frames(2);
        EXPECT_EQ(theModuleManager->getTeamManager()->getTeamCount(), 2);
        EXPECT_EQ(activeName(), "B1");
        EXPECT_EQ(world::landFaces(), 12u) << "the next round has fresh land";
    });
}

TEST_F(FlatRound, AWormWalksJumpsAndFallsOffTheEdge) {
    data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
    play([]() -> Script {
        co_await frames(60);
        const Worm* const worm = world::activeWorm();
        EXPECT_TRUE(worm->isOnGround());
        // A worm rests 0.005 ellipsoid units above the ground.
        EXPECT_NEAR(worm->getPosition().y, 15.025f, 0.01f);

        const Vector3 start = worm->getPosition();
        co_await holdKey('W', 63);
        const Vector3 walked = worm->getPosition() - start;
        EXPECT_NEAR(walked.z, 15.0f, 0.6f); // about a second at 15 units per second, along +Z
        EXPECT_NEAR(walked.x, 0.0f, 0.05f);

        headless::keyDown('W');
        headless::keyDown('S');
        co_await frames(5);
        const Vector3 before = worm->getPosition();
        co_await frames(10);
        EXPECT_EQ((worm->getPosition() - before).length(), 0.0f);
        headless::keyUp('W');
        headless::keyUp('S');

        co_await holdKey(VK_SPACE, 2);
        EXPECT_TRUE(worm->jumping);
        float highest = 0.0f;
        co_await until([&] {
            highest = std::max(highest, worm->getPosition().y);
            return !worm->jumping;
        });
        // Off at 20 units per second net, slowing by 20 per second per second: 10 units up after one second.
        EXPECT_NEAR(highest - 15.025f, 10.0f, 0.6f);

        const std::string name = worm->getWormName();
        headless::keyDown('W');
        co_await until([&] { return world::worm(name) == nullptr; }, 3000);
        EXPECT_EQ(theModuleManager->getTeamManager()->getTeamCount(), 1);
    });
}

TEST_F(FlatRound, TheThreeViewsAndWhatTheyShow) {
    data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
    play([]() -> Script {
        co_await frames(60);
        const Worm* const worm = world::activeWorm();
        const auto camera = [] { return theModuleManager->getCamera(); };
        EXPECT_EQ(camera(), worm->getFollowCamera());
        headless::keyDown('E');
        co_await frames(2);
        EXPECT_EQ(camera(), worm->getOverviewCamera());
        EXPECT_NEAR(worm->getOverviewCamera()->getWorldPosition().y, worm->getWorldPosition().y + 70.0f, 0.01f);
        headless::keyDown('Q');
        co_await frames(2);
        EXPECT_EQ(camera(), worm->getAimCamera()) << "both held: the aim view wins";
        headless::keyUp('E');
        headless::keyUp('Q');
        co_await frames(2);
        EXPECT_EQ(camera(), worm->getFollowCamera());

        headless::moveMouse(0, 10000);
        co_await frames(3);
        EXPECT_FLOAT_EQ(worm->getPitch(), 1.5f);
        headless::moveMouse(0, -20000);
        co_await frames(3);
        EXPECT_FLOAT_EQ(worm->getPitch(), -1.5f);
        EXPECT_EQ(worm->getLabel().getText(), worm->getWormName() + " 100");
    });
}

TEST_F(FlatRound, ASpentWeaponAndASecondChoiceAfterTheShotAreRefused) {
    data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
    play([]() -> Script {
        co_await frames(60);
        Worm* const worm = world::activeWorm();
        Team* const team = worm->getTeam();
        const auto entry = [&](std::size_t index) { return team->getWeapons()[index]->weapon.get(); };
        headless::keyDown('1');
        co_await frames(2);
        EXPECT_EQ(worm->weapon, entry(0));
        headless::keyUp('1');
        team->getWeaponEntry(2).ammo = 0;
        co_await takeWeapon(2);
        EXPECT_EQ(worm->weapon, entry(0)) << "spent";
        co_await takeWeapon(1);
        EXPECT_EQ(worm->weapon, entry(1));
        co_await takeWeapon(0);
        co_await aimAt(upward, 0.0f);
        co_await pressFire(2);
        EXPECT_EQ(entry(0)->getShotsFired(), 1u);
        co_await takeWeapon(1);
        EXPECT_EQ(worm->weapon, entry(0)) << "it has fired in this turn";
    });
}

TEST_F(FlatRound, MinimisingStopsEverythingAndTheNextFrameIsLong) {
    data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
    play([]() -> Script {
        co_await frames(60);
        co_await takeWeapon(0);
        co_await aimAt(upward, 0.0f);
        co_await pressFire(30);
        EXPECT_NE(rocketInFlight(), nullptr);
        const unsigned before = headless::frameCount();
        unsigned idles = 0;
        headless::minimiseWindow();
        headless::onIdle([&idles] {
            if (++idles == 100) {
                headless::advance(6000);
                headless::restoreWindow();
            }
        });
        co_await frames(1);
        headless::onIdle(nullptr);
        EXPECT_GE(idles, 100u);
        EXPECT_EQ(headless::frameCount(), before + 1);
        // The rocket is past its lifetime and its smoke past its own; the turn ends all the same.
        co_await until([] { return rocketInFlight() == nullptr; }, 3);
        co_await awaitNextTurn();
    });
}

} // namespace
