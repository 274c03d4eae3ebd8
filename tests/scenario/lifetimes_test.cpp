// Things that end while others still know them. Meant to be run under the address sanitizer as well.

#include "core/module_manager.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "csg/csg_object.h"
#include "game/projectile.h"
#include "game/rocket.h"
#include "game/weapon.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "render/camera.h"
#include "support/play.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/world_hash.h"

#include <gtest/gtest.h>

#include <algorithm>

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

bool isViewOf(const Worm& worm, const Camera* camera) {
    return camera != nullptr && camera->getParent() == &worm && theModuleManager->getCamera() == camera;
}

/// The two ways in which much time passes between one frame and the next.
enum class LongFrame { plain, minimised };

Script passSeconds(LongFrame way, unsigned seconds) {
    if (way == LongFrame::minimised) {
        headless::minimiseWindow();
        headless::onIdle([seconds] {
            headless::advance(seconds * 1000);
            headless::restoreWindow();
            headless::onIdle(nullptr);
        });
    } else {
        headless::advance(seconds * 1000);
    }
    // The frame in which the window comes back still has the clock of the one before.
    co_await frames(way == LongFrame::minimised ? 2 : 1);
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
            co_await takeWeapon(0);
            headless::keyDown('Q');
            headless::leftButton(true);
            co_await frames(10);
        },
        []() -> Script {
            co_await takeWeapon(3);
            headless::keyDown('E');
            co_await aimAt(-1.2f, 0.0f);
            co_await pressFire(2);
        },
        []() -> Script { // the banner is up, and the winner aims
            co_await takeWeapon(1);
            headless::keyDown('Q');
            theModuleManager->getTeamManager()->getTeams()[0]->getWorms()[0]->applyDamage(1000.0f);
            co_await frames(3);
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

TEST_F(Lifetimes, ARocketMeetsItsLongFrameAfterItsSmokeHasEnded) {
    for (const LongFrame way : {LongFrame::plain, LongFrame::minimised})
        play([way]() -> Script {
            const Worm* const shooter = world::activeWorm();
            co_await takeWeapon(0);
            co_await aimAt(1.3f, 0.0f);
            co_await pressFire(70);
            EXPECT_EQ(rocketsInFlight(), 1);
            EXPECT_EQ(world::countNodes("smoke"), 1);
            // The smoke's last puff is now older than its time-out, and it has its turn before the rocket has.
            co_await passSeconds(way, 6);
            EXPECT_EQ(world::countNodes("smoke"), 0);
            EXPECT_EQ(rocketsInFlight(), 0);
            EXPECT_EQ(world::countNodes("explosion"), 1);
            co_await awaitNextTurn();
            const Worm* const next = world::activeWorm();
            EXPECT_NE(next->getTeam(), shooter->getTeam());
            co_await frames(300);
            EXPECT_EQ(world::activeWorm(), next) << "the turn passed once";
        });
}

TEST_F(Lifetimes, WhatBurnsOrWaitsEndsOnceInALongFrame) {
    for (const LongFrame way : {LongFrame::plain, LongFrame::minimised})
        play([way]() -> Script {
            const Worm* const shooter = world::activeWorm();
            co_await takeWeapon(2);
            co_await aimAt(0.0f, 0.0f);
            co_await pressFire(2);
            const std::size_t faces = world::landFaces();
            co_await frames(20);
            co_await passSeconds(way, 6); // the fuse
            EXPECT_EQ(world::countNodes("explosion"), 1);
            const std::size_t cratered = world::landFaces();
            EXPECT_GT(cratered, faces);
            const float health = shooter->getHealth();
            EXPECT_LT(health, 100.0f);
            co_await frames(5);
            EXPECT_EQ(world::countNodes("explosion"), 1);
            EXPECT_EQ(world::activeWorm(), shooter);
            co_await passSeconds(way, 6); // the explosion and the turn's pause
            EXPECT_EQ(world::countNodes("explosion"), 0);
            co_await frames(2);
            const Worm* const next = world::activeWorm();
            EXPECT_NE(next, shooter);
            co_await passSeconds(way, 6);
            co_await frames(200);
            EXPECT_EQ(world::activeWorm(), next) << "the turn passed once";
            EXPECT_EQ(world::landFaces(), cratered);
        });
}

TEST_F(Lifetimes, AStrikeGoesOffInOneFrameOnTwoSolidsAndTheWormsBetween) {
    // The ridge stands in the slab and rises 6 above it.
    data.writeSolid("ridge", boxData({-99.0, 0.0, -3.0}, {99.0, 16.0, 3.0}));
    data.write("level/flat.lev", "2\nslab 1 1 1 0 0 0 0 0 0\nridge 1 1 1 0 0 0 0 0 0\n");
    data.writeTeams({{"A", {"A1", "A2"}, 2}, {"B", {"B1", "B2"}, 2}});
    for (const LongFrame way : {LongFrame::plain, LongFrame::minimised})
        play([way]() -> Script {
            std::vector<const csgObject*> solids;
            for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
                if (const csgObject* const land = node->asCsgNode())
                    solids.push_back(land);
            EXPECT_EQ(solids.size(), 2u);
            Worm* const shooter = world::activeWorm();
            // The nearest to the ridge are the one that shoots and one of the others, on either side of it.
            const Team* const others = theModuleManager->getTeamManager()->getTeams()[0];
            Worm* const victim = others->getWorms()[0];
            const std::string name = victim->getWormName();
            shooter->setPosition(0.0f, 15.1f, -6.0f);
            victim->setPosition(0.0f, 15.1f, 6.0f);
            shooter->applyDamage(95.0f);
            victim->applyDamage(95.0f);
            co_await takeWeapon(4);
            headless::keyDown('E');
            co_await aimAt(-1.5f, 0.0f);
            co_await pressFire(1);
            EXPECT_EQ(rocketsInFlight(), 5);
            std::vector<double> volumes;
            for (const csgObject* const solid : solids)
                volumes.push_back(volumeOf(*solid));
            co_await passSeconds(way, 4);
            EXPECT_EQ(rocketsInFlight(), 0);
            EXPECT_EQ(world::countNodes("explosion"), 5);
            for (std::size_t i = 0; i < solids.size(); ++i)
                EXPECT_LT(volumeOf(*solids[i]), volumes[i] - 100.0);
            co_await frames(2);
            EXPECT_EQ(world::worm(name), nullptr);
            EXPECT_EQ(others->getWorms().size(), 1u);
            EXPECT_EQ(teamsLeft(), 2);
            headless::keyUp('E');
            co_await frames(300);
            EXPECT_EQ(world::activeWorm()->getTeam(), others) << "the turn passed once";
        });
}

TEST_F(Lifetimes, AShooterThatEndsBeforeItsRocketLeavesNoFinishedShotBehind) {
    data.writeTeams({{"A", {"A1", "A2"}, 2}, {"B", {"B1", "B2"}, 2}});
    play([]() -> Script {
        Worm* const shooter = world::activeWorm();
        const Team* const team = shooter->getTeam();
        co_await takeWeapon(0);
        const Weapon* const bazooka = shooter->weapon;
        co_await aimAt(1.3f, 0.0f);
        co_await pressFire(60);
        EXPECT_EQ(rocketsInFlight(), 1);
        shooter->applyDamage(1000.0f);
        co_await frames(2);
        co_await until([] { return rocketsInFlight() == 0; }, 400);
        EXPECT_EQ(bazooka->getProjectilesFinished(), 0u);
        co_await fireBazooka(0.8f, 0.0f, 10); // the other team's
        const Worm* const heir = world::activeWorm();
        EXPECT_EQ(heir->getTeam(), team);
        co_await takeWeapon(0);
        co_await aimAt(1.3f, 0.0f);
        co_await pressFire(60);
        co_await frames(180);
        EXPECT_EQ(rocketsInFlight(), 1);
        EXPECT_EQ(world::activeWorm(), heir) << "its turn passed with its rocket in the air";
    });
}

TEST_F(Lifetimes, AStrikeBeginsWhileThatOfADeadWormStillFalls) {
    data.writeTeams({{"A", {"A1", "A2"}, 2}, {"B", {"B1", "B2"}, 2}});
    play([]() -> Script {
        float x = -60.0f;
        for (const Team* const team : theModuleManager->getTeamManager()->getTeams()) {
            team->getWorms()[0]->setPosition(x, 15.1f, -60.0f);
            team->getWorms()[1]->setPosition(x, 15.1f, 0.0f);
            x += 120.0f;
        }
        Worm* const shooter = world::activeWorm();
        const Team* const team = shooter->getTeam();
        const WeaponEntry& strike = *team->getWeapons()[4];
        headless::keyDown('E');
        co_await takeWeapon(4);
        co_await aimAt(-1.2f, 0.0f);
        co_await pressFire(1);
        shooter->applyDamage(1000.0f);
        co_await frames(2);
        EXPECT_EQ(strike.ammo, 1) << "a turn that ends with its worm costs nothing";
        const Worm* const other = world::activeWorm();
        EXPECT_NE(other->getTeam(), team);
        co_await takeWeapon(3);
        co_await aimAt(-1.2f, 0.0f);
        co_await pressFire(1);
        co_await until([&] { return world::activeWorm() != other; }, 200);
        EXPECT_EQ(world::activeWorm()->getTeam(), team);
        co_await takeWeapon(4);
        co_await aimAt(-1.2f, 0.0f);
        co_await pressFire(1);
        EXPECT_GT(rocketsInFlight(), 5);
        co_await until([] { return rocketsInFlight() == 0; }, 600);
        EXPECT_EQ(strike.ammo, 0);
        EXPECT_EQ(strike.weapon->getProjectilesFinished(), 4u) << "all but the one that ended the turn";
        headless::keyUp('E');
        co_await frames(300);
        EXPECT_EQ(teamsLeft(), 2);
        EXPECT_NE(world::activeWorm()->getTeam(), team) << "the turn passed once";
    });
}

TEST_F(Lifetimes, TheNextRoundBeginsFromEachViewWithAWeaponChargingInTheHand) {
    play([]() -> Script {
        for (const int view : {int{'Q'}, int{'E'}}) {
            const Worm* const winner = world::activeWorm();
            co_await takeWeapon(0);
            headless::keyDown(view);
            headless::leftButton(true);
            co_await frames(5);
            EXPECT_TRUE(winner->weapon->isCharging());
            EXPECT_TRUE(isViewOf(*winner, view == 'Q' ? winner->getAimCamera() : winner->getOverviewCamera()));
            theModuleManager->getTeamManager()->getTeams()[0]->getWorms()[0]->applyDamage(1000.0f);
            co_await frames(2);
            EXPECT_EQ(teamsLeft(), 1);
            headless::tapKey(VK_RETURN);
            co_await frames(3);
            EXPECT_EQ(teamsLeft(), 2);
            // Keys and button are still held: they are the next worm's, which has nothing in its hand.
            const Worm* const first = world::activeWorm();
            EXPECT_TRUE(isViewOf(*first, view == 'Q' ? first->getAimCamera() : first->getOverviewCamera()));
            EXPECT_EQ(first->weapon, nullptr);
            headless::leftButton(false);
            headless::keyUp(view);
            co_await frames(60);
            EXPECT_EQ(rocketsInFlight(), 0);
            EXPECT_TRUE(isViewOf(*first, first->getFollowCamera()));
        }
    });
}

TEST_F(Lifetimes, TheActiveWormEndsInItsOwnBlastInEachView) {
    data.writeTeams({{"A", {"A1", "A2", "A3"}, 3}, {"B", {"B1", "B2", "B3"}, 3}});
    play([]() -> Script {
        for (const int view : {int{'Q'}, int{'E'}}) {
            Worm* const shooter = world::activeWorm();
            const Team* const team = shooter->getTeam();
            const std::string name = shooter->getWormName();
            co_await takeWeapon(0);
            headless::keyDown(view);
            co_await aimAt(-1.5f, 0.0f);
            Weapon* const bazooka = shooter->weapon;
            shooter->applyDamage(99.0f);
            co_await pressFire(1);
            co_await until([&] { return world::worm(name) == nullptr; }, 200);
            // The rocket that ended its shooter is counted by nobody: the weapon starts anew in the next hand.
            const Worm* const next = world::activeWorm();
            EXPECT_NE(next->getTeam(), team);
            co_await frames(2);
            EXPECT_TRUE(isViewOf(*next, view == 'Q' ? next->getAimCamera() : next->getOverviewCamera()));
            EXPECT_EQ(bazooka->getShotsFired(), 0u);
            EXPECT_EQ(bazooka->getProjectilesFinished(), 0u);
            headless::keyUp(view);
            co_await frames(300);
            EXPECT_EQ(world::activeWorm(), next) << "the turn passed once";
        }
    });
}

TEST_F(Lifetimes, AWormWithoutHealthBeamsItselfToItsEnd) {
    play([]() -> Script {
        Worm* const worm = world::activeWorm();
        const std::string name = worm->getWormName();
        co_await takeWeapon(3);
        headless::keyDown('E');
        co_await aimAt(-1.2f, 0.0f);
        // The weapon has its turn before the worm looks at its health, and the worm ends inside the weapon's update.
        headless::clearSoundCalls();
        headless::leftButton(true);
        worm->applyDamage(1000.0f);
        co_await frames(1);
        EXPECT_EQ(world::worm(name), nullptr);
        const auto& calls = headless::soundCalls();
        EXPECT_TRUE(std::any_of(calls.begin(), calls.end(), [](const auto& call) {
            return call.file == "sound/sfx/Teleport.wav";
        })) << "it beamed";
        EXPECT_EQ(teamsLeft(), 1);
        headless::leftButton(false);
        headless::keyUp('E');
        co_await frames(200);
        EXPECT_EQ(teamsLeft(), 1);
    });
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
