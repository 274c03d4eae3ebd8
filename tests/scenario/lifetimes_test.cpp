// Things that end while others still know them. Meant to be run under the address sanitizer as well.

#include "csg/land/csg_object.h"
#include "game/armoury/rocket.h"
#include "game/effects/explosion.h"
#include "game/effects/particle_system.h"
#include "render/camera/camera.h"
#include "support/scenario.h"
#include "support/solids.h"

#include <tuple>

namespace {

std::size_t rocketsInFlight() {
    return nodesOf<Rocket>().size();
}

/// The view key is held, and shows what it should of the worm that has the turn.
void expectView(int key) {
    const Worm* const worm = world::activeWorm();
    const Camera* const camera = key == 'Q'   ? worm->getAimCamera()
                                 : key == 'E' ? worm->getOverviewCamera()
                                              : worm->getFollowCamera();
    EXPECT_EQ(theModuleManager->getCamera(), camera);
}

/// Nearly straight down, at the worm itself; and up, over the edge of the slab.
constexpr float downward = -1.5f;
constexpr float upward = 1.3f;

constexpr const char* chargingSound = "sound/sfx/ROCKETPOWERUP.wav";

/// The two ways in which much time passes between one frame and the next.
enum class LongFrame { plain, minimised };

Script passSeconds(LongFrame way, unsigned seconds) {
    const unsigned before = headless::frameCount();
    unsigned idles = 0;
    if (way == LongFrame::minimised) {
        headless::minimiseWindow();
        headless::onIdle([&] {
            if (++idles == 100) {
                headless::advance(seconds * 1000);
                headless::restoreWindow();
            }
        });
    } else {
        headless::advance(seconds * 1000);
    }
    // The frame in which the window comes back still has the clock of the one before.
    const unsigned count = way == LongFrame::minimised ? 2 : 1;
    co_await frames(count);
    EXPECT_EQ(headless::frameCount(), before + count);
    headless::onIdle(nullptr);
}

class Lifetimes : public FlatLevel {
protected:
    Lifetimes() { data.useShippedContent(); }

    void writeTwoAgainstTwo() { data.writeTeams({{"A", {"A1", "A2"}, 2}, {"B", {"B1", "B2"}, 2}}); }
};

TEST_F(Lifetimes, TheShootersTeamEndsWhileFourOfItsRocketsFly) {
    playRound([]() -> Script {
        headless::keyDown('E');
        co_await fire(4, downward);
        headless::keyUp('E');
        EXPECT_EQ(rocketsInFlight(), 5u);
        // The first rocket to go off ends the worm; with it go its team and the airstrike.
        world::activeWorm()->applyDamage(99.0f);
        co_await until([] { return teams().size() == 1; }, 600);
        EXPECT_GE(rocketsInFlight(), 3u);
        for (const Rocket* const rocket : nodesOf<Rocket>())
            EXPECT_EQ(rocket->getOwner(), nullptr);
        co_await until([] { return rocketsInFlight() == 0; }, 600);
        co_await frames(400);
    });
}

TEST_F(Lifetimes, TheActiveWormEndsAmidItsShotsOrInItsOwnBlastInEachView) {
    data.writeTeams({{"A", {"A1", "A2", "A3", "A4"}, 4}, {"B", {"B1", "B2", "B3", "B4"}, 4}});
    playRound([]() -> Script {
        for (const auto& [view, index, held] :
             {std::tuple{'Q', 0, true}, {'E', 0, false}, {'E', 1, true}, {'Q', 0, false}, {'E', 0, true}}) {
            Worm* const shooter = world::activeWorm();
            const Team* const team = shooter->getTeam();
            const std::size_t worms = team->getWorms().size();
            headless::keyDown(view);
            co_await takeWeapon(index);
            co_await aimAt(downward, 0.0f);
            const Weapon* const weapon = shooter->weapon;
            headless::leftButton(true);
            co_await frames(held ? 5 : 1);
            EXPECT_TRUE(weapon->isCharging());
            EXPECT_EQ(headless::playingOn(1) == chargingSound, index == 0);
            EXPECT_EQ(weapon->getProjectilesFinished(), index == 1 ? 1u : 0u);
            headless::leftButton(held);
            shooter->applyDamage(held ? 1000.0f : 99.0f);
            co_await until([&] { return team->getWorms().size() < worms; }, 200);
            EXPECT_NE(headless::playingOn(1), chargingSound);
            // No charge, no first shot of two and no rocket that ended its shooter is left for the next hand.
            const Worm* const next = world::activeWorm();
            EXPECT_NE(next->getTeam(), team);
            EXPECT_FALSE(weapon->isCharging());
            EXPECT_EQ(weapon->getShotsFired() + weapon->getProjectilesFinished(), 0u);
            co_await frames(2);
            expectView(view);
            headless::leftButton(false);
            headless::keyUp(view);
            co_await frames(300);
            expectView(0);
            EXPECT_EQ(world::activeWorm(), next) << "the turn passed once";
        }
    });
}

TEST_F(Lifetimes, TheNextRoundBeginsAmidRocketsSmokeAndHeldWeaponsFromEachView) {
    playRound([]() -> Script {
        for (int round = 0; round < 20; ++round) {
            const int view = round % 2 == 0 ? 'Q' : 'E';
            const bool strike = round % 4 == 3;
            headless::keyDown(view);
            co_await takeWeapon(strike ? 4 : 0);
            co_await aimAt(downward, 0.0f);
            headless::leftButton(true);
            co_await frames(5);
            EXPECT_TRUE(world::activeWorm()->weapon->isCharging());
            EXPECT_EQ(rocketsInFlight(), strike ? 5u : 0u);
            kill(waitingWorm());
            co_await frames(2);
            EXPECT_EQ(teams().size(), 1u);
            EXPECT_EQ(headless::playingOn(1) == chargingSound, !strike);
            headless::tapKey(VK_RETURN);
            co_await frames(3);
            EXPECT_EQ(teams().size(), 2u) << round;
            EXPECT_EQ(headless::playingOn(1), "");
            // Keys and button are still held: they are the next worm's, which has nothing in its hand.
            expectView(view);
            EXPECT_EQ(world::activeWorm()->weapon, nullptr);
            headless::leftButton(false);
            headless::keyUp(view);
            co_await frames(60);
            EXPECT_EQ(rocketsInFlight(), 0u);
            expectView(0);
        }
    });
}

TEST_F(Lifetimes, TheGameQuitsInAnyState) {
    struct State {
        int weapon;
        int view;
        float pitch;
        unsigned pressed;  ///< frames with the button down
        unsigned released; ///< frames after that; 0 leaves it down
        int deaths = 0;
    };
    for (const State& state : std::initializer_list<State>{
             {0, 0, upward, 10, 0},
             {0, 'Q', upward, 10, 0},
             {0, 0, downward, 2, 40}, // in its explosion
             {2, 0, 0.0f, 2, 5},
             {3, 'E', -1.2f, 2, 1},
             {4, 'E', -1.2f, 2, 1},
             {1, 'Q', 0.0f, 3, 0, 1}, // the banner is up, and the winner aims
             {0, 0, 0.0f, 1, 3, 2},
         }) {
        for (const bool byKey : {false, true})
            playRound([&]() -> Script {
                if (state.view != 0)
                    headless::keyDown(state.view);
                co_await takeWeapon(state.weapon);
                co_await aimAt(state.pitch, 0.0f);
                for (const Team* const team : std::vector(teams().begin(), teams().begin() + state.deaths))
                    kill(*team->getWorms()[0]);
                headless::leftButton(true);
                co_await frames(state.pressed);
                headless::leftButton(state.released == 0);
                co_await frames(state.released);
                EXPECT_EQ(nodesOf<Explosion>().size(), state.released == 40 ? 1u : 0u);
                if (byKey)
                    headless::keyDown(VK_ESCAPE);
                else
                    headless::closeWindow();
                co_await frames(3);
                ADD_FAILURE() << "the game went on";
            });
    }
}

TEST_F(Lifetimes, WhatFliesBurnsOrWaitsEndsOnceInALongFrame) {
    for (const LongFrame way : {LongFrame::plain, LongFrame::minimised})
        playRound([way]() -> Script {
            const Worm* const first = world::activeWorm();
            const Worm& second = waitingWorm();
            co_await fire(0, upward, 70);
            EXPECT_EQ(rocketsInFlight(), 1u);
            EXPECT_EQ(nodesOf<ParticleSystem>().size(), 1u);
            // The smoke's last puff is now older than its time-out, and it has its turn before the rocket has.
            co_await passSeconds(way, 6);
            EXPECT_EQ(nodesOf<ParticleSystem>().size(), 0u);
            EXPECT_EQ(rocketsInFlight(), 0u);
            EXPECT_EQ(nodesOf<Explosion>().size(), 1u);
            co_await awaitNextTurn();
            co_await frames(300);
            EXPECT_EQ(world::activeWorm(), &second) << "the turn passed once";

            co_await fire(2, 0.0f);
            co_await frames(20);
            EXPECT_EQ(world::landFaces(), 12u);
            co_await passSeconds(way, 6); // the fuse
            const std::size_t cratered = world::landFaces();
            EXPECT_GT(cratered, 12u);
            EXPECT_LT(second.getHealth(), 100.0f);
            co_await frames(5);
            EXPECT_EQ(nodesOf<Explosion>().size(), 1u);
            EXPECT_EQ(world::activeWorm(), &second);
            co_await passSeconds(way, 6); // the explosion and the turn's pause
            EXPECT_EQ(nodesOf<Explosion>().size(), 0u);
            co_await frames(2);
            EXPECT_EQ(world::activeWorm(), first);
            co_await passSeconds(way, 6);
            co_await frames(200);
            EXPECT_EQ(world::activeWorm(), first) << "the turn passed once";
            EXPECT_EQ(world::landFaces(), cratered);
        });
}

TEST_F(Lifetimes, AStrikeGoesOffInOneFrameOnTwoSolidsAndTheWormsBetween) {
    // Made twice as high, raised and turned about X and then Y, the ridge runs along X and rises 6 above the slab.
    data.writeSolid("ridge", boxData({-3.0, -99.0, -4.0}, {3.0, 99.0, 4.0}));
    data.write("level/flat.lev", "2\nslab 1 1 1 0 0 0 0 0 0\nridge 1 1 2 1.5707963 1.5707963 0 0 8 0\n");
    writeTwoAgainstTwo();
    for (const LongFrame way : {LongFrame::plain, LongFrame::minimised})
        playRound([way]() -> Script {
            // The nearest to the ridge are the one that shoots and one of the others, on either side of it.
            Worm* const shooter = world::activeWorm();
            Worm& victim = waitingWorm();
            const Team* const others = victim.getTeam();
            shooter->setPosition(0.0f, 15.1f, -6.0f);
            victim.setPosition(0.0f, 15.1f, 6.0f);
            shooter->applyDamage(95.0f);
            victim.applyDamage(95.0f);
            headless::keyDown('E');
            co_await fire(4, downward, 1);
            EXPECT_EQ(rocketsInFlight(), 5u);
            std::vector<double> volumes;
            for (const csgObject* const solid : nodesOf<csgObject>())
                volumes.push_back(volumeOf(*solid));
            co_await passSeconds(way, 4);
            EXPECT_EQ(rocketsInFlight(), 0u);
            EXPECT_EQ(nodesOf<Explosion>().size(), 5u);
            EXPECT_EQ(volumes.size(), 2u);
            EXPECT_NEAR(nodesOf<csgObject>().at(1)->getLocalBounds().max.y, 16.0f, 0.01f);
            for (std::size_t i = 0; i < volumes.size(); ++i)
                EXPECT_LT(volumeOf(*nodesOf<csgObject>().at(i)), volumes[i] - 100.0);
            co_await frames(2);
            EXPECT_EQ(others->getWorms().size(), 1u);
            EXPECT_EQ(teams().size(), 2u);
            headless::keyUp('E');
            co_await frames(300);
            EXPECT_EQ(world::activeWorm()->getTeam(), others) << "the turn passed once";
        });
}

TEST_F(Lifetimes, AStrikeBeginsWhileThatOfADeadWormFallsAndAnotherDiesInItsPause) {
    writeTwoAgainstTwo();
    playRound([]() -> Script {
        float x = -60.0f;
        for (const Team* const team : teams()) {
            team->getWorms()[0]->setPosition(x, 15.1f, -60.0f);
            team->getWorms()[1]->setPosition(x, 15.1f, 0.0f);
            x += 120.0f;
        }
        Worm* const shooter = world::activeWorm();
        const Team* const team = shooter->getTeam();
        const WeaponEntry& strike = *team->getWeapons()[4];
        headless::keyDown('E');
        co_await fire(4, -1.2f, 1);
        kill(*shooter);
        co_await frames(2);
        EXPECT_EQ(strike.ammo, 1) << "a turn that ends with its worm costs nothing";
        EXPECT_NE(world::activeWorm()->getTeam(), team);
        co_await fire(3, -1.2f, 1);
        co_await awaitNextTurn(200);
        EXPECT_EQ(world::activeWorm()->getTeam(), team);
        co_await fire(4, -1.2f, 1);
        EXPECT_GT(rocketsInFlight(), 5u);
        co_await until([&] { return strike.weapon->isTurnEnding(); }, 600);
        kill(waitingWorm());
        co_await frames(3);
        EXPECT_EQ(teams().back(), team);
        co_await until([] { return rocketsInFlight() == 0; }, 600);
        EXPECT_EQ(strike.ammo, 0);
        EXPECT_EQ(strike.weapon->getProjectilesFinished(), 4u) << "all but the one that ended the turn";
        headless::keyUp('E');
        co_await frames(300);
        EXPECT_EQ(teams().size(), 2u);
        EXPECT_NE(world::activeWorm()->getTeam(), team) << "the turn passed once";
    });
}

TEST_F(Lifetimes, AWormWithoutHealthBeamsItselfToItsEnd) {
    playRound([]() -> Script {
        headless::keyDown('E');
        co_await takeWeapon(3);
        co_await aimAt(-1.2f, 0.0f);
        // The weapon has its turn before the worm looks at its health, and the worm ends inside the weapon's update.
        headless::leftButton(true);
        kill(*world::activeWorm());
        co_await frames(1);
        EXPECT_EQ(teams().size(), 1u);
        EXPECT_EQ(headless::playingOn(1), "sound/sfx/Teleport.wav") << "it beamed";
        headless::leftButton(false);
        co_await frames(200);
        EXPECT_EQ(teams().size(), 1u);
    });
}

} // namespace
