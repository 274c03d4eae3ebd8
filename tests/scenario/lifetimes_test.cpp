// Things that end while others still know them. Meant to be run under the address sanitizer as well.

#include "core/module_manager.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "game/projectile.h"
#include "game/rocket.h"
#include "game/weapon.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "render/camera.h"
#include "support/play.h"
#include "support/test_data.h"
#include "support/world_hash.h"

#include <gtest/gtest.h>

namespace {

int rocketsInFlight() {
    int count = 0;
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        count += dynamic_cast<Rocket*>(node) != nullptr ? 1 : 0;
    return count;
}

int teamsLeft() {
    return theModuleManager->getTeamManager()->getTeamCount();
}

class Lifetimes : public testing::Test {
protected:
    Lifetimes() { data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}}); }

    void play(const std::function<Script()>& script) {
        const int status = playGame([&script]() -> Script {
            co_await frames(60);
            co_await script();
        });
        EXPECT_GE(status, 0);
        EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
        for (const std::string& problem : headless::problems())
            ADD_FAILURE() << problem;
    }

    TestData data;
};

TEST_F(Lifetimes, TheShootersTeamEndsWhileFourOfItsRocketsFly) {
    play([]() -> Script {
        Worm* const shooter = world::activeWorm();
        co_await takeWeapon(4);
        headless::keyDown('E');
        co_await aimAt(-1.5f, 0.0f); // nearly straight down: at the worm itself
        co_await pressFire(2);
        headless::keyUp('E');
        EXPECT_EQ(rocketsInFlight(), 5);
        // The first rocket to go off ends the worm; with it go its team and the airstrike.
        shooter->applyDamage(99.0f);
        co_await until([] { return teamsLeft() == 1; }, 600);
        EXPECT_GE(rocketsInFlight(), 3);
        for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
            if (const auto* const rocket = dynamic_cast<Rocket*>(node)) {
                EXPECT_EQ(rocket->getOwner(), nullptr);
            }
        co_await until([] { return rocketsInFlight() == 0; }, 600);
        co_await frames(400);
    });
}

TEST_F(Lifetimes, TheLastTwoTeamsEndInOneFrame) {
    play([]() -> Script {
        for (const char* const name : {"A1", "B1"})
            world::worm(name)->applyDamage(1000.0f);
        co_await frames(2);
        EXPECT_EQ(teamsLeft(), 0);
        EXPECT_EQ(theModuleManager->getCamera(), nullptr);
        headless::recordGl(true);
        co_await frames(1);
        EXPECT_TRUE(isPrinted("You are all loosers!"));
        headless::recordGl(false);
        headless::tapKey(VK_RETURN);
        co_await frames(3);
        EXPECT_EQ(teamsLeft(), 2);
    });
}

TEST_F(Lifetimes, TheActiveWormEndsWithItsWeaponChargingInEachView) {
    data.writeTeams({{"A", {"A1", "A2"}, 2}, {"B", {"B1", "B2"}, 2}});
    play([]() -> Script {
        for (const int view : {int{'Q'}, int{'E'}}) {
            Worm* const worm = world::activeWorm();
            Team* const team = worm->getTeam();
            co_await takeWeapon(0);
            headless::keyDown(view);
            headless::leftButton(true);
            co_await frames(5);
            Weapon* const bazooka = worm->weapon;
            EXPECT_TRUE(bazooka->isCharging());
            worm->applyDamage(1000.0f);
            co_await frames(2);
            EXPECT_NE(world::activeWorm(), nullptr);
            EXPECT_FALSE(bazooka->isCharging()) << "it would go off by itself in the next hand";
            headless::leftButton(false);
            headless::keyUp(view);
            co_await frames(3);
            EXPECT_EQ(team->getWorms().size(), 1u);
            EXPECT_EQ(theModuleManager->getCamera(), world::activeWorm()->getFollowCamera());
        }
    });
}

TEST_F(Lifetimes, AWormEndsWhileAnothersTurnPauseRuns) {
    data.writeTeams({{"A", {"A1", "A2"}, 2}, {"B", {"B1", "B2"}, 2}});
    play([]() -> Script {
        Worm* const shooter = world::activeWorm();
        co_await takeWeapon(0);
        co_await aimAt(0.8f, 0.0f);
        Weapon* const bazooka = shooter->weapon;
        co_await pressFire(2);
        co_await until([&] { return bazooka->isTurnEnding(); }, 400);
        const Team* const other =
            theModuleManager->getTeamManager()->getTeams()[0]; // the last of the list has the turn
        other->getWorms().back()->applyDamage(1000.0f);
        co_await frames(3);
        EXPECT_EQ(world::activeWorm(), shooter);
        co_await until([&] { return world::activeWorm() != shooter; }, 200);
        EXPECT_EQ(world::activeWorm()->getTeam(), other);
    });
}

TEST_F(Lifetimes, TheNextRoundBeginsAmidRocketsSmokeAndHeldWeapons) {
    play([]() -> Script {
        for (int round = 0; round < 20; ++round) {
            co_await frames(20);
            co_await takeWeapon(4);
            headless::keyDown('E');
            co_await aimAt(-1.5f, 0.0f);
            co_await pressFire(2);
            EXPECT_EQ(rocketsInFlight(), 5) << round;
            co_await frames(5);
            // The waiting team ends, and Enter comes while the rockets fall and the overview shows them.
            theModuleManager->getTeamManager()->getTeams()[0]->getWorms()[0]->applyDamage(1000.0f);
            co_await frames(3);
            EXPECT_EQ(teamsLeft(), 1);
            headless::tapKey(VK_RETURN);
            co_await frames(2);
            EXPECT_EQ(teamsLeft(), 2) << round;
            EXPECT_EQ(rocketsInFlight(), 0);
            headless::keyUp('E');
        }
    });
}

TEST_F(Lifetimes, TheGameQuitsInAnyState) {
    const auto quitWith = [this](const std::function<void()>& quit, const std::function<Script()>& before) {
        play([&]() -> Script {
            co_await before();
            quit();
            co_await frames(3);
            ADD_FAILURE() << "the game went on";
        });
    };
    const std::vector<std::function<Script()>> states = {
        []() -> Script { co_await takeWeapon(0); },
        []() -> Script {
            co_await takeWeapon(0);
            headless::leftButton(true);
            co_await frames(10);
        },
        []() -> Script {
            co_await takeWeapon(2);
            co_await pressFire(2);
            co_await frames(5);
        },
        []() -> Script {
            co_await takeWeapon(4);
            headless::keyDown('E');
            co_await aimAt(-1.2f, 0.0f);
            co_await pressFire(2);
        },
        []() -> Script {
            co_await takeWeapon(0);
            co_await aimAt(-1.5f, 0.0f);
            co_await pressFire(1);
            co_await until([] { return world::countNodes("explosion") == 1; }, 100);
        },
        []() -> Script {
            world::worm("A1")->applyDamage(1000.0f);
            world::worm("B1")->applyDamage(1000.0f);
            co_await frames(3);
        },
    };
    for (const auto& state : states) {
        quitWith([] { headless::keyDown(VK_ESCAPE); }, state);
        quitWith([] { headless::closeWindow(); }, state);
    }
}

TEST_F(Lifetimes, FramesOfManySecondsAreSurvived) {
    play([]() -> Script {
        for (const int weapon : {0, 2}) {
            co_await takeWeapon(weapon);
            co_await aimAt(0.8f, 0.0f);
            co_await pressFire(3);
            const Worm* const shooter = world::activeWorm();
            for (const unsigned pause : {4900u, 100u, 6000u, 3000u}) {
                headless::advance(pause);
                co_await frames(2);
            }
            co_await until([&] { return world::activeWorm() != shooter; }, 400);
        }
    });
}

} // namespace
