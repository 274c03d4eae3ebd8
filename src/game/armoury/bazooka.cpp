#include "game/armoury/bazooka.h"

#include "core/base/log.h"
#include "core/services/input_control.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "game/armoury/rocket.h"
#include "render/view/hud.h"

namespace {

/// The rocket leaves by itself when the charge exceeds this, ms.
constexpr std::uint32_t longestCharge = 1000;
/// Milliseconds of charge for one unit per second of launch speed.
constexpr double chargePerSpeed = 10.0;

constexpr const char* powerUpSound = "sound/sfx/ROCKETPOWERUP.wav";
constexpr int powerUpChannel = 1;
constexpr const char* releaseSound = "sound/sfx/ROCKETPOWERRELEASE.wav";
constexpr int releaseChannel = 2;

/// What the power bar measures: the bar is full at 1.
float seconds(std::uint32_t milliseconds) {
    return static_cast<float>(milliseconds / 1000.0);
}

} // namespace

Bazooka::Bazooka(Team* owningTeam) : Weapon(owningTeam, index, "bazooka", "Bazooka constructed") {}

Bazooka::~Bazooka() {
    logLine("Bazooka destructed\n");
    if (isBuildingUp())
        Bazooka::chargeForgotten();
}

void Bazooka::chargeForgotten() {
    // At shutdown the sound goes before the scene.
    if (SoundControl* const sound = theModuleManager->getSoundControl())
        sound->stop(powerUpSound);
}

bool Bazooka::showMarks() {
    if (isAimView()) {
        Hud* const hud = theModuleManager->getHud();
        hud->showCrosshair();
        hud->showPowerBar();
        hud->setPower(fired && input->isLeftButtonDown() ? seconds(launchCharge) : 0.0f);
    }
    return true;
}

void Bazooka::fire() {
    if (isTriggerPulled()) {
        chargeStart = getNow();
        theModuleManager->getSoundControl()->play(powerUpSound, true, powerUpChannel);
        charging = true;
    }
    if (!charging)
        return;
    if (fired)
        return;
    const std::uint32_t charge = getNow() - chargeStart;
    theModuleManager->getHud()->setPower(seconds(charge));
    if (!input->isLeftButtonDown() || charge > longestCharge)
        launch(charge);
}

void Bazooka::launch(std::uint32_t charge) {
    theModuleManager->getSoundControl()->play(releaseSound, false, releaseChannel);
    launchCharge = charge;
    const auto speed = static_cast<float>(launchCharge / chargePerSpeed);
    // The scene root owns the rocket from here on.
    new Rocket(getMuzzle(), getAim() * speed, this);
    ++shotsFired;
    chargeStart = 0;
    fired = true;
}
