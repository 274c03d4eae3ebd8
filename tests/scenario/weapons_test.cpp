// Each weapon from key and button alone, with the shipped models, sounds and crater solids, on the flat slab (top at
// height 10) where its numbers can be told beforehand; and once round on the shipped island.

#include "core/module_manager.h"
#include "core/team.h"
#include "core/team_manager.h"
#include "game/dynamite_projectile.h"
#include "game/rocket.h"
#include "game/shotgun_bullet.h"
#include "game/weapon.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "render/hud.h"
#include "support/play.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/world_hash.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace {

template <class Kind>
std::vector<Kind*> nodesOfKind() {
    std::vector<Kind*> found;
    for (SceneNode* const node : theModuleManager->getSceneRoot()->getChildren())
        if (auto* const match = dynamic_cast<Kind*>(node))
            found.push_back(match);
    return found;
}

unsigned now() {
    return headless::frameCount() * 16;
}

int ammoOf(const Worm& worm, std::size_t index) {
    return worm.getTeam()->getWeapons()[index]->ammo;
}

const Hud& hud() {
    return *theModuleManager->getHud();
}

class Weapons : public testing::Test {
protected:
    Weapons() {
        data.writeFlatLevel({{"A", {"A1"}, 1}, {"B", {"B1"}, 1}});
        data.useShippedContent();
    }

    /// Plays a script once the worms stand.
    void play(const std::function<Script()>& script, unsigned seed = 1000) {
        PlaySettings settings;
        settings.startTick = seed;
        const int status = playGame(
            [&script]() -> Script {
                co_await frames(60);
                co_await script();
            },
            settings);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(headless::openHandles(), headless::OpenHandles{});
        for (const std::string& problem : headless::problems())
            ADD_FAILURE() << problem;
    }

    static Worm* enemyOf(const Worm& worm) { return world::worm(worm.getWormName() == "A1" ? "B1" : "A1"); }

    TestData data;
};

TEST_F(Weapons, ThePowerBarShowsTheChargeAndKeepsItUntilTheButtonIsReleased) {
    play([]() -> Script {
        co_await takeWeapon(0);
        co_await aimAt(0.8f, 0.0f);
        headless::keyDown('Q');
        co_await frames(2);
        EXPECT_TRUE(hud().isCrosshairVisible() && hud().isPowerBarVisible());
        EXPECT_EQ(hud().getPower(), 0.0f);
        headless::leftButton(true);
        co_await frames(1); // the charge begins
        co_await frames(30);
        EXPECT_NEAR(hud().getPower(), 0.48f, 0.017f);
        co_await until([] { return !nodesOfKind<Rocket>().empty(); }, 60);
        const float atLaunch = hud().getPower();
        EXPECT_GT(atLaunch, 1.0f);
        co_await frames(10);
        EXPECT_FLOAT_EQ(hud().getPower(), atLaunch);
        headless::leftButton(false);
        co_await frames(2);
        EXPECT_EQ(hud().getPower(), 0.0f);
        headless::keyUp('Q');
        co_await frames(2);
        EXPECT_FALSE(hud().isPowerBarVisible());
    });
}

constexpr const char* chargingSound = "sound/sfx/ROCKETPOWERUP.wav";

TEST_F(Weapons, ABazookaPutAwayForgetsItsCharge) {
    play([]() -> Script {
        const Worm* const shooter = world::activeWorm();
        co_await takeWeapon(0);
        const Weapon* const bazooka = shooter->weapon;
        co_await aimAt(0.8f, 0.0f); // at the sky, where a strike has no target
        headless::leftButton(true);
        co_await frames(10);
        co_await takeWeapon(0);
        EXPECT_TRUE(bazooka->isCharging()) << "its own key changes nothing";
        EXPECT_EQ(headless::playingOn(1), chargingSound);
        co_await takeWeapon(4);
        EXPECT_FALSE(bazooka->isCharging());
        EXPECT_EQ(headless::playingOn(1), "");
        headless::leftButton(false);
        co_await frames(180);
        co_await takeWeapon(0);
        co_await frames(5);
        EXPECT_EQ(bazooka->getShotsFired(), 0u) << "it goes off by itself";
        co_await pressFire(30);
        const auto rockets = nodesOfKind<Rocket>();
        EXPECT_EQ(rockets.size(), 1u);
        for (const Rocket* const rocket : rockets)
            EXPECT_NEAR(rocket->getVelocity().length(), 48.0f, 3.5f);
    });
}

TEST_F(Weapons, AChargeIsHeardNoLongerThanItLasts) {
    play([]() -> Script {
        for (const bool shooterEnds : {false, true}) {
            Worm* const shooter = world::activeWorm();
            co_await takeWeapon(0);
            headless::leftButton(true);
            co_await frames(5);
            EXPECT_EQ(headless::playingOn(1), chargingSound);
            (shooterEnds ? shooter : enemyOf(*shooter))->applyDamage(1000.0f);
            co_await frames(2);
            EXPECT_EQ(headless::playingOn(1), shooterEnds ? "" : chargingSound);
            headless::tapKey(VK_RETURN);
            co_await frames(2);
            EXPECT_EQ(theModuleManager->getTeamManager()->getTeamCount(), 2);
            EXPECT_EQ(headless::playingOn(1), "");
            headless::leftButton(false);
            co_await frames(60);
        }
    });
}

/// What a desktop says when the keyboard goes to another window; some give the keys and the button back before it says
/// so, some after.
void loseKeyboard(bool keysFirst) {
    const auto giveBack = [] {
        for (const int key : {int{VK_F2}, int{'W'}})
            headless::keyUp(key);
        headless::leftButton(false);
    };
    if (keysFirst)
        giveBack();
    headless::post(WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, 0));
    if (!keysFirst)
        giveBack();
}

TEST_F(Weapons, LosingTheKeyboardFiresAndPressesNothing) {
    play([]() -> Script {
        const Worm* const shooter = world::activeWorm();
        co_await takeWeapon(0);
        const Weapon* const bazooka = shooter->weapon;
        co_await aimAt(0.8f, 0.0f);
        for (const bool keysFirst : {false, true}) {
            headless::keyDown(VK_F2);
            headless::keyDown('W');
            headless::leftButton(true);
            co_await frames(10);
            loseKeyboard(keysFirst);
            co_await frames(3);
            EXPECT_FALSE(bazooka->isCharging());
            EXPECT_EQ(headless::playingOn(1), "");
            EXPECT_EQ(hud().getMessage(), "") << "F2 was not pressed";
            const Vector3 place = shooter->getPosition();
            co_await frames(10);
            EXPECT_EQ(shooter->getPosition().z, place.z);
        }
        // A window that is minimised may hear nothing else.
        headless::leftButton(true);
        co_await frames(10);
        headless::minimiseWindow();
        headless::onIdle([] {
            headless::restoreWindow();
            headless::onIdle(nullptr);
        });
        co_await frames(3);
        EXPECT_EQ(bazooka->getShotsFired(), 0u);
        headless::leftButton(false);
        co_await pressFire(20);
        EXPECT_EQ(bazooka->getShotsFired(), 1u);
    });
}

TEST_F(Weapons, ARayFromInsideAWormHasNoTarget) {
    play([]() -> Script {
        Worm* const worm = world::activeWorm();
        Worm* const enemy = enemyOf(*worm);
        worm->setPosition(-20.0f, 15.1f, 10.0f);
        co_await takeWeapon(3);
        headless::keyDown('E');
        co_await aimAt(-1.2f, 0.0f);
        EXPECT_TRUE(hud().isMarkerArmed());
        const Vector3 place = worm->getPosition();
        const Vector3 camera = place + Vector3(0.0f, 70.0f, 0.0f);
        enemy->setPosition(camera + Vector3(2.0f, 7.0f, -1.0f));
        co_await frames(2);
        EXPECT_FALSE(hud().isMarkerArmed());
        headless::leftButton(true);
        co_await frames(3);
        EXPECT_EQ(worm->weapon->getShotsFired(), 0u);
        EXPECT_EQ((worm->getPosition() - place).length(), 0.0f);
        enemy->setPosition(camera + Vector3(4.5f, 7.0f, -1.0f)); // beside it
        co_await frames(3);
        EXPECT_EQ(worm->weapon->getShotsFired(), 1u);
        EXPECT_GT((worm->getPosition() - place).length(), 20.0f);
        headless::leftButton(false);
        headless::keyUp('E');
    });
}

TEST_F(Weapons, DynamiteGoesOffWhenItsFuseHasBurntDown) {
    play([]() -> Script {
        const Worm* const worm = world::activeWorm();
        co_await takeWeapon(2);
        co_await aimAt(0.0f, 0.0f);
        headless::leftButton(true);
        co_await until([] { return !nodesOfKind<DynamiteProjectile>().empty(); }, 5);
        const unsigned lit = now();
        headless::leftButton(false);
        Vector3 stick(0, 0, 0);
        co_await until(
            [&] {
                const auto sticks = nodesOfKind<DynamiteProjectile>();
                if (!sticks.empty())
                    stick = sticks[0]->getPosition();
                return sticks.empty();
            },
            400);
        EXPECT_GT(now() - lit, 5000u);
        EXPECT_LT(now() - lit, 5050u);
        // It fell from 3 units in front of the worm's centre to the ground, where its sphere of radius 1 rests.
        const Vector3 offset = worm->getWorldPosition() - stick;
        EXPECT_NEAR(stick.y, 11.0f, 0.02f);
        EXPECT_NEAR(worm->getHealth(), 100.0f - (1.0f - 5.0f / 15.0f) * 90.0f, 1.0f) << "at " << offset.length();
        EXPECT_GT(world::landFaces(), 12u);
        EXPECT_EQ(world::countNodes("explosion"), 1);
        co_await until([&] { return ammoOf(*worm, 2) == 0; }, 3);
    });
}

TEST_F(Weapons, TheShotgunFiresTwoShotsMoreThanAPauseApart) {
    play([]() -> Script {
        Worm* const shooter = world::activeWorm();
        co_await frames(40); // 1500 ms since the shotgun was made
        co_await takeWeapon(1);
        co_await aimAt(0.8f, 0.0f);
        Weapon* const shotgun = shooter->weapon;
        co_await pressFire(2);
        EXPECT_EQ(shotgun->getShotsFired(), 1u);
        EXPECT_EQ(nodesOfKind<ShotgunBullet>().size(), 1u);
        const unsigned first = now();
        co_await frames(55);
        co_await pressFire(2);
        EXPECT_EQ(shotgun->getShotsFired(), 1u) << "too soon";
        headless::leftButton(true);
        co_await until([&] { return shotgun->getShotsFired() == 2; }, 100);
        EXPECT_GT(now() - first, 1500u - 48u);
        headless::leftButton(false);
        co_await until([&] { return shotgun->isTurnEnding(); }, 100);
        EXPECT_EQ(ammoOf(*shooter, 1), 1);
        EXPECT_EQ(world::countNodes("explosion"), 0);
        co_await awaitNextTurn();
        EXPECT_EQ(world::activeWorm(), enemyOf(*shooter));
    });
}

TEST_F(Weapons, ADirectHitOfTheShotgunTakesAboutTwentyOne) {
    play([]() -> Script {
        Worm* const shooter = world::activeWorm();
        Worm* const enemy = enemyOf(*shooter);
        const Vector3 offset = enemy->getWorldPosition() - shooter->getWorldPosition();
        co_await frames(40);
        co_await takeWeapon(1);
        co_await aimAt(0.0f, std::atan2(-offset.x, offset.z));
        co_await pressFire(2);
        co_await until([] { return nodesOfKind<ShotgunBullet>().empty(); }, 80);
        EXPECT_NEAR(100.0f - enemy->getHealth(), (1.0f - 2.0f / 3.5f) * 50.0f, 1.5f);
        EXPECT_TRUE(enemy->jumping);
    });
}

TEST_F(Weapons, TheAirstrikeDropsFiveRocketsAndPassesTheTurnOnce) {
    play([]() -> Script {
        Worm* const shooter = world::activeWorm();
        const Worm* const enemy = enemyOf(*shooter);
        co_await takeWeapon(4);
        headless::keyDown('E');
        co_await aimAt(0.8f, 0.0f); // at the sky
        EXPECT_TRUE(hud().isMarkerVisible());
        EXPECT_FALSE(hud().isMarkerArmed());
        co_await pressFire(3);
        EXPECT_TRUE(nodesOfKind<Rocket>().empty());

        co_await aimAt(-1.2f, 0.0f);
        EXPECT_TRUE(hud().isMarkerArmed());
        const unsigned lowestCuts = static_cast<unsigned>(world::landFaces());
        co_await pressFire(1);
        auto rockets = nodesOfKind<Rocket>();
        EXPECT_EQ(rockets.size(), 5u);
        // The target is a worm's body on the ground: height 15; the camera stands 70 above the worm and looks down.
        const float reach = 70.0f / std::tan(1.2f);
        for (std::size_t i = 0; i < rockets.size(); ++i) {
            const Vector3 start = rockets[i]->getPosition();
            EXPECT_NEAR(start.y, 15.0f + 80.0f + 10.0f * static_cast<float>(i), 1.0f);
            EXPECT_NEAR(start.x, shooter->getPosition().x, 8.0f);
            EXPECT_NEAR(start.z, shooter->getPosition().z + reach, 10.0f);
        }
        headless::keyUp('E');
        EXPECT_EQ(headless::playingOn(1), "sound/sfx/bomber.wav");
        co_await until([&] { return world::activeWorm() == enemy; }, 600);
        EXPECT_EQ(ammoOf(*shooter, 4), 0);
        co_await until([] { return nodesOfKind<Rocket>().empty(); }, 600);
        bool bomberStopped = false;
        for (const headless::SoundCall& call : headless::soundCalls())
            bomberStopped = bomberStopped || (call.call == "FSOUND_Stream_Stop" && call.file == "sound/sfx/bomber.wav");
        EXPECT_TRUE(bomberStopped);
        co_await frames(300);
        EXPECT_EQ(world::activeWorm(), enemy) << "the turn passed once";
        EXPECT_GT(world::landFaces(), lowestCuts);
    });
}

TEST_F(Weapons, TheBeamerTakesTheWormToItsTargetAndTheTurnEnds) {
    play([]() -> Script {
        Worm* const worm = world::activeWorm();
        co_await takeWeapon(3);
        headless::keyDown('E');
        co_await aimAt(-1.2f, 0.0f);
        Vector3 expected = worm->getPosition();
        expected.z += 70.0f / std::tan(1.2f);
        headless::leftButton(true);
        co_await until([&] { return worm->weapon != nullptr && worm->weapon->getShotsFired() == 1; }, 5);
        const unsigned beamed = now();
        EXPECT_NEAR(worm->getPosition().x, expected.x, 0.3f);
        EXPECT_NEAR(worm->getPosition().z, expected.z, 2.5f);
        EXPECT_NEAR(worm->getPosition().y, 15.0f, 0.3f);
        EXPECT_TRUE(worm->weapon->isTurnEnding()) << "the pause begins in the same frame";
        EXPECT_EQ(ammoOf(*worm, 3), 0);
        headless::leftButton(false);
        headless::keyUp('E');
        co_await until([&] { return world::activeWorm() != worm; }, 200);
        EXPECT_GE(now() - beamed, 2000u - 16u);
        EXPECT_LE(now() - beamed, 2050u);
    });
}

TEST_F(Weapons, ABeamIntoDeathEndsWormTeamAndWeaponInsideTheWeaponsUpdate) {
    // The land reaches down to -20: a worm beamed to the foot of its side stands below the height at which worms die.
    data.writeSolid("slab", boxData({-100.0, -200.0, -100.0}, {100.0, 10.0, 100.0}));
    data.writeSolid("floor", boxData({-400.0, -230.0, -400.0}, {400.0, -210.0, 400.0}));
    data.write("level/flat.lev", "2\nslab 1 1 1 0 0 0 0 0 0\nfloor 1 1 1 0 0 0 0 0 0\n");
    bool found = false;
    for (unsigned seed = 1; seed < 40 && !found; ++seed) {
        play(
            [&found]() -> Script {
                Worm* const worm = world::activeWorm();
                if (worm == nullptr)
                    co_return;
                // Near the edge in +Z the view's ray passes over it and meets the floor far below.
                if (worm->getPosition().z < 75.0f)
                    co_return;
                found = true;
                const std::string name = worm->getWormName();
                co_await takeWeapon(3);
                headless::keyDown('E');
                co_await aimAt(-0.9f, 0.0f);
                EXPECT_TRUE(hud().isMarkerArmed());
                headless::leftButton(true);
                co_await until([&] { return world::worm(name) == nullptr; }, 5);
                EXPECT_EQ(theModuleManager->getTeamManager()->getTeamCount(), 1);
                headless::leftButton(false);
                headless::keyUp('E');
                co_await frames(200);
            },
            seed);
    }
    EXPECT_TRUE(found) << "no seed put the active worm near the edge";
}

TEST(WeaponsOnTheIsland, EveryWeaponPassesTheTurnOnceToTheOtherTeam) {
    const ShippedData data;
    std::string order;
    const int status = playGame([&order]() -> Script {
        co_await frames(150);
        for (int turn = 0; turn < 10; ++turn) {
            const Worm* const worm = world::activeWorm();
            if (worm == nullptr || theModuleManager->getTeamManager()->getTeamCount() < 2)
                co_return;
            const Team* const team = worm->getTeam();
            const int weapon = turn / 2;
            co_await takeWeapon(weapon);
            EXPECT_EQ(worm->weapon, team->getWeapons()[static_cast<std::size_t>(weapon)]->weapon.get());
            if (weapon >= 3)
                headless::keyDown('E');
            co_await aimAt(weapon >= 3 ? -1.2f : 0.8f, worm->getYaw());
            co_await pressFire(3);
            headless::keyUp('E');
            for (int wait = 0; weapon == 1 && wait < 2; ++wait) {
                co_await frames(100);
                co_await pressFire(3);
            }
            co_await until([team] { return world::activeWorm() == nullptr || world::activeWorm()->getTeam() != team; },
                           1000);
            order += static_cast<char>('1' + weapon);
        }
        for (const Team* const team : theModuleManager->getTeamManager()->getTeams())
            for (std::size_t spent = 2; spent < 5; ++spent)
                EXPECT_EQ(team->getWeapons()[spent]->ammo, 0) << team->getName() << " " << spent;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(order, "1122334455");
    for (const std::string& problem : headless::problems())
        ADD_FAILURE() << problem;
}

TEST_F(Weapons, EverySoundIsPlayedAsTheTableSays) {
    struct Played {
        int channel = -1;
        bool looping = false;
    };
    std::map<std::string, Played> played;
    std::map<std::string, int> stopped;
    play([&]() -> Script {
        co_await holdKey('W', 10);
        co_await holdKey(VK_SPACE, 2);
        co_await until([] { return !world::activeWorm()->jumping; }, 300);
        for (const int weapon : {0, 1, 2, 3, 4}) {
            const Worm* const worm = world::activeWorm();
            co_await takeWeapon(weapon);
            if (weapon >= 3)
                headless::keyDown('E');
            co_await aimAt(weapon >= 3 ? -1.2f : 0.9f, 0.0f);
            co_await pressFire(3);
            co_await frames(100);
            if (weapon == 1)
                co_await pressFire(3);
            headless::keyUp('E');
            co_await until([&] { return world::activeWorm() != worm; }, 2000);
            co_await until([] { return nodesOfKind<Rocket>().empty(); }, 1000);
        }
        for (const headless::SoundCall& call : headless::soundCalls()) {
            if (call.call == "FSOUND_Stream_Play")
                played[call.file].channel = call.channel;
            if (call.call == "FSOUND_Stream_SetMode")
                played[call.file].looping = true;
            if (call.call == "FSOUND_Stream_Stop")
                ++stopped[call.file];
        }
    });
    const std::map<std::string, std::pair<int, bool>> table = {
        {"sound/music/pirate1.wav", {0, true}},     {"sound/sfx/Explosion1.wav", {1, false}},
        {"sound/sfx/Walk.wav", {3, true}},          {"sound/sfx/WORMSPRING.wav", {3, false}},
        {"sound/sfx/ROCKETPOWERUP.wav", {1, true}}, {"sound/sfx/ROCKETPOWERRELEASE.wav", {2, false}},
        {"sound/sfx/Missile.wav", {1, true}},       {"sound/sfx/fuse.wav", {1, true}},
        {"sound/sfx/ShotGunFire.wav", {1, false}},  {"sound/sfx/bomber.wav", {1, true}},
        {"sound/sfx/Teleport.wav", {1, false}},
    };
    for (const auto& [file, expected] : table) {
        ASSERT_TRUE(played.contains(file)) << file;
        EXPECT_EQ(played[file].channel, expected.first) << file;
        EXPECT_EQ(played[file].looping, expected.second) << file;
    }
    EXPECT_EQ(played.size(), table.size());
    for (const char* const file : {"sound/sfx/Walk.wav", "sound/sfx/Missile.wav", "sound/sfx/fuse.wav"})
        EXPECT_GE(stopped[file], 1) << file;
    for (const char* const file : {"sound/sfx/Explosion1.wav", "sound/sfx/WORMSPRING.wav", "sound/sfx/Teleport.wav"})
        EXPECT_EQ(stopped[file], 0) << file;
}

} // namespace
