#include "game/armoury/shotgun.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "game/armoury/shotgun_bullet.h"
#include "render/view/hud.h"

namespace {

/// A shot must come later than this after the one before, ms.
constexpr std::uint32_t shotSpacing = 1500;
/// World units per second.
constexpr float bulletSpeed = 1000.0f;

constexpr const char* shotSound = "sound/sfx/ShotGunFire.wav";
constexpr int shotChannel = 1;

} // namespace

Shotgun::Shotgun(Team* owningTeam)
    : Weapon(owningTeam, index, "shotgun", "shotgun constructed"), lastShotTime(getNow()) {
    shotsPerTurn = 2;
}

Shotgun::~Shotgun() {
    logLine("Shotgun destructed\n");
}

bool Shotgun::showMarks() {
    if (isAimView())
        theModuleManager->getHud()->showCrosshair();
    return true;
}

void Shotgun::fire() {
    if (!isTriggerPulled() || getNow() - lastShotTime <= shotSpacing)
        return;
    lastShotTime = getNow();
    charging = true;
    new ShotgunBullet(getMuzzle(), getAim() * bulletSpeed, this);
    ++shotsFired;
    fired = true;
    theModuleManager->getSoundControl()->play(shotSound, false, shotChannel);
}
