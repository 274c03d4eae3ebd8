// Each weapon from key and button alone, with the shipped models, sounds and crater solids, on the flat slab (top at
// height 10) where its numbers can be told beforehand; and once round on the shipped island.

#include "game/armoury/dynamite_projectile.h"
#include "game/armoury/rocket.h"
#include "game/armoury/shotgun_bullet.h"
#include "game/effects/explosion.h"
#include "render/view/hud.h"
#include "support/scenario.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace {

unsigned now() {
    return headless::frameCount() * 16;
}

const Hud& hud() {
    return *theModuleManager->getHud();
}

constexpr const char* chargingSound = "sound/sfx/ROCKETPOWERUP.wav";

class Weapons : public FlatLevel {
protected:
    Weapons() { data.useShippedContent(); }
};

TEST_F(Weapons, AFullChargeLeavesByItselfAndThePowerBarKeepsItUntilTheButtonIsReleased) {
    playRound([]() -> Script {
        co_await takeWeapon(0);
        co_await aimAt(0.8f, 0.0f);
        EXPECT_FALSE(hud().isCrosshairVisible() || hud().isPowerBarVisible());
        headless::keyDown('Q');
        co_await frames(2);
        EXPECT_TRUE(hud().isCrosshairVisible() && hud().isPowerBarVisible());
        EXPECT_EQ(hud().getPower(), 0.0f);
        headless::leftButton(true);
        co_await frames(1); // the charge begins
        co_await frames(30);
        EXPECT_NEAR(hud().getPower(), 0.48f, 0.017f);
        co_await until([] { return !nodesOf<Rocket>().empty(); }, 60);
        const float atLaunch = hud().getPower();
        EXPECT_NEAR(atLaunch, 1.008f, 0.001f) << "the first frame after a second";
        EXPECT_NEAR(nodesOf<Rocket>().at(0)->getVelocity().length(), 100.8f, 0.3f);
        co_await frames(10);
        EXPECT_FLOAT_EQ(hud().getPower(), atLaunch);
        headless::leftButton(false);
        co_await frames(2);
        EXPECT_EQ(hud().getPower(), 0.0f);
    });
}

TEST_F(Weapons, ABazookaPutAwayForgetsItsCharge) {
    playRound([]() -> Script {
        co_await takeWeapon(0);
        const Weapon* const bazooka = world::activeWorm()->weapon;
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
        EXPECT_NEAR(nodesOf<Rocket>().at(0)->getVelocity().length(), 48.0f, 3.5f);
    });
}

TEST_F(Weapons, LosingTheKeyboardFiresAndPressesNothing) {
    playRound([]() -> Script {
        const Worm* const shooter = world::activeWorm();
        co_await takeWeapon(0);
        const Weapon* const bazooka = shooter->weapon;
        co_await aimAt(0.8f, 0.0f);
        // Some desktops give the keys and the button back before they say that the keyboard goes, some after.
        for (const bool keysFirst : {false, true}) {
            headless::keyDown(VK_F2);
            headless::keyDown('W');
            headless::leftButton(true);
            co_await frames(10);
            if (!keysFirst)
                headless::post(WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, 0));
            headless::keyUp(VK_F2);
            headless::keyUp('W');
            headless::leftButton(false);
            if (keysFirst)
                headless::post(WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, 0));
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

TEST_F(Weapons, TheBeamerTakesTheWormToItsTargetUnlessTheRayBeginsInsideAnotherAndTheTurnEnds) {
    playRound([]() -> Script {
        Worm* const worm = world::activeWorm();
        Worm& enemy = waitingWorm();
        worm->setPosition(-20.0f, 15.1f, 10.0f);
        co_await takeWeapon(3);
        EXPECT_FALSE(hud().isMarkerVisible());
        headless::keyDown('E');
        co_await aimAt(-1.2f, 0.3f);
        EXPECT_TRUE(hud().isMarkerArmed());
        const Vector3 place = worm->getPosition();
        const Vector3 camera = place + Vector3(0.0f, 70.0f, 0.0f);
        enemy.setPosition(camera + Vector3(2.0f, 7.0f, -1.0f));
        co_await frames(2);
        EXPECT_FALSE(hud().isMarkerArmed());
        headless::leftButton(true);
        co_await frames(3);
        EXPECT_EQ(worm->weapon->getShotsFired(), 0u);
        EXPECT_EQ((worm->getPosition() - place).length(), 0.0f);
        enemy.setPosition(camera + Vector3(4.5f, 7.0f, -1.0f)); // beside it
        co_await until([&] { return worm->weapon->getShotsFired() == 1; }, 3);
        const unsigned beamed = now();
        const float reach = 70.0f / std::tan(1.2f);
        EXPECT_NEAR(worm->getPosition().x, place.x - reach * std::sin(0.3f), 0.3f);
        EXPECT_NEAR(worm->getPosition().z, place.z + reach * std::cos(0.3f), 2.5f);
        EXPECT_NEAR(worm->getPosition().y, 15.0f, 0.3f);
        EXPECT_TRUE(worm->weapon->isTurnEnding()) << "the pause begins in the same frame";
        EXPECT_EQ(worm->getTeam()->getWeaponEntry(3).ammo, 0);
        headless::leftButton(false);
        headless::keyUp('E');
        co_await until([&] { return world::activeWorm() == &enemy; }, 200);
        EXPECT_EQ(now() - beamed, 2016u);
    });
}

TEST_F(Weapons, DynamiteGoesOffWhenItsFuseHasBurntDown) {
    playRound([]() -> Script {
        const Worm* const worm = world::activeWorm();
        co_await takeWeapon(2);
        co_await aimAt(0.0f, 0.0f);
        headless::leftButton(true);
        co_await until([] { return !nodesOf<DynamiteProjectile>().empty(); }, 5);
        const unsigned lit = now();
        headless::leftButton(false);
        co_await frames(200);
        // It fell from 3 units in front of the worm's centre to the ground, where its sphere of radius 1 rests.
        const DynamiteProjectile& stick = *nodesOf<DynamiteProjectile>().at(0);
        EXPECT_NEAR(stick.getPosition().y, 11.0f, 0.02f);
        EXPECT_LT(stick.getVelocity().y, -30.0f) << "its velocity is never cleared";
        co_await until([] { return nodesOf<DynamiteProjectile>().empty(); }, 200);
        EXPECT_EQ(now() - lit, 5008u) << "the first frame after five seconds";
        EXPECT_NEAR(worm->getHealth(), 100.0f - (1.0f - 5.0f / 15.0f) * 90.0f, 1.0f);
        EXPECT_GT(world::landFaces(), 12u);
        EXPECT_EQ(nodesOf<Explosion>().size(), 1u);
        co_await until([&] { return worm->getTeam()->getWeaponEntry(2).ammo == 0; }, 3);
    });
}

TEST_F(Weapons, TheShotgunFiresTwoShotsMoreThanAPauseApartAndAHitTakesAboutTwentyOne) {
    playRound([]() -> Script {
        Worm* const shooter = world::activeWorm();
        Worm& enemy = waitingWorm();
        const Vector3 offset = enemy.getWorldPosition() - shooter->getWorldPosition();
        co_await frames(40); // 1500 ms since the shotgun was made
        co_await fire(1, 0.0f, 2, std::atan2(-offset.x, offset.z));
        Weapon* const shotgun = shooter->weapon;
        EXPECT_EQ(shotgun->getShotsFired(), 1u);
        EXPECT_EQ(nodesOf<ShotgunBullet>().size(), 1u);
        const unsigned first = now();
        co_await until([] { return nodesOf<ShotgunBullet>().empty(); }, 10);
        EXPECT_NEAR(100.0f - enemy.getHealth(), (1.0f - 2.0f / 3.5f) * 50.0f, 1.5f);
        EXPECT_TRUE(enemy.jumping);
        co_await frames(45);
        co_await pressFire(2);
        EXPECT_EQ(shotgun->getShotsFired(), 1u) << "too soon";
        headless::leftButton(true);
        co_await until([&] { return shotgun->getShotsFired() == 2; }, 100);
        EXPECT_NEAR(now() - first, 1500.0, 48.0);
        headless::leftButton(false);
        co_await until([&] { return shotgun->isTurnEnding(); }, 100);
        EXPECT_EQ(shooter->getTeam()->getWeaponEntry(1).ammo, 1);
        EXPECT_EQ(nodesOf<Explosion>().size(), 0u);
        co_await awaitNextTurn();
        EXPECT_EQ(world::activeWorm(), &enemy);
    });
}

TEST_F(Weapons, TheAirstrikeDropsFiveRocketsAndPassesTheTurnOnce) {
    playRound([]() -> Script {
        const Worm* const shooter = world::activeWorm();
        const Worm* const enemy = &waitingWorm();
        headless::keyDown('E');
        co_await fire(4, 0.8f); // at the sky
        EXPECT_TRUE(hud().isMarkerVisible());
        EXPECT_FALSE(hud().isMarkerArmed());
        EXPECT_TRUE(nodesOf<Rocket>().empty());

        co_await aimAt(-1.2f, 0.0f);
        EXPECT_TRUE(hud().isMarkerArmed());
        co_await pressFire(1);
        const auto rockets = nodesOf<Rocket>();
        EXPECT_EQ(rockets.size(), 5u);
        // The target is a worm's body on the ground: height 15; the camera stands 70 above the worm and looks down.
        const Vector3 target = shooter->getPosition() + Vector3(0.0f, 0.0f, 70.0f / std::tan(1.2f));
        float height = 15.0f + 80.0f;
        for (const Rocket* const rocket : rockets) {
            const Vector3 start = rocket->getPosition();
            EXPECT_NEAR(start.y, height, 1.0f);
            EXPECT_NEAR(start.x, target.x, 8.0f);
            EXPECT_NEAR(start.z, target.z, 10.0f);
            height += 10.0f;
        }
        headless::keyUp('E');
        EXPECT_EQ(headless::playingOn(1), "sound/sfx/bomber.wav");
        co_await until([&] { return world::activeWorm() == enemy; }, 600);
        EXPECT_EQ(shooter->getTeam()->getWeaponEntry(4).ammo, 0);
        const auto bomberStops = [] {
            return std::ranges::count_if(headless::soundCalls(), [](const headless::SoundCall& call) {
                return call.call == "FSOUND_Stream_Stop" && call.file == "sound/sfx/bomber.wav";
            });
        };
        co_await until([] { return nodesOf<Rocket>().empty(); }, 600);
        EXPECT_EQ(bomberStops(), 1);
        co_await frames(300);
        EXPECT_EQ(world::activeWorm(), enemy) << "the turn passed once";
        EXPECT_GT(world::landFaces(), 12u);
    });
}

/// On which channel a sound was played, in which mode, and whether anything stopped it.
using Played = std::tuple<int, bool, bool>;

TEST(WeaponsOnTheIsland, EveryWeaponPassesTheTurnOnceToTheOtherTeamAndSoundsAsTheTableSays) {
    const ShippedData data;
    std::string order;
    std::map<std::string, Played> played;
    playRound([&]() -> Script {
        co_await holdKey('W', 10);
        co_await holdKey(VK_SPACE, 2);
        co_await until([] { return !world::activeWorm()->jumping; }, 300);
        for (int turn = 0; turn < 10; ++turn) {
            const Worm* const worm = world::activeWorm();
            const Team* const team = worm->getTeam();
            const int weapon = turn / 2;
            if (weapon >= 3)
                headless::keyDown('E');
            co_await fire(weapon, weapon >= 3 ? -1.2f : 0.8f, 3, worm->getYaw());
            EXPECT_EQ(worm->weapon, team->getWeapons()[static_cast<std::size_t>(weapon)]->weapon.get());
            headless::keyUp('E');
            for (int wait = 0; weapon == 1 && wait < 2; ++wait) {
                co_await frames(100);
                co_await pressFire(3);
            }
            co_await until([team] { return world::activeWorm()->getTeam() != team; }, 1000);
            order += static_cast<char>('1' + weapon);
        }
        for (const Team* const team : teams())
            for (std::size_t spent = 2; spent < 5; ++spent)
                EXPECT_EQ(team->getWeapons()[spent]->ammo, 0) << team->getName() << " " << spent;
        for (const headless::SoundCall& call : headless::soundCalls()) {
            if (call.file.empty())
                continue;
            auto& [channel, looping, stopped] = played.try_emplace(call.file, -1, false, false).first->second;
            if (call.call == "FSOUND_Stream_Play")
                channel = call.channel;
            looping = looping || call.call == "FSOUND_Stream_SetMode";
            stopped = stopped || call.call == "FSOUND_Stream_Stop";
        }
    });
    EXPECT_EQ(order, "1122334455");
    const std::map<std::string, Played> table = {
        {"sound/music/pirate1.wav", {0, true, false}},     {"sound/sfx/Explosion1.wav", {1, false, false}},
        {"sound/sfx/Walk.wav", {3, true, true}},           {"sound/sfx/WORMSPRING.wav", {3, false, false}},
        {"sound/sfx/ROCKETPOWERUP.wav", {1, true, false}}, {"sound/sfx/ROCKETPOWERRELEASE.wav", {2, false, false}},
        {"sound/sfx/Missile.wav", {1, true, true}},        {"sound/sfx/fuse.wav", {1, true, true}},
        {"sound/sfx/ShotGunFire.wav", {1, false, false}},  {"sound/sfx/bomber.wav", {1, true, true}},
        {"sound/sfx/Teleport.wav", {1, false, false}},
    };
    EXPECT_EQ(played, table);
}

} // namespace
