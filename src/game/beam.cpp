#include "game/beam.h"

#include "core/log.h"
#include "core/module_manager.h"
#include "core/sound_control.h"
#include "core/team.h"
#include "game/worm.h"

namespace {

constexpr const char* teleportSound = "sound/sfx/Teleport.wav";
constexpr int teleportChannel = 1;

} // namespace

Beam::Beam(Team* owningTeam) : TargetedWeapon(owningTeam, index, "beamer", "Beam constructed") {}

Beam::~Beam() {
    logLine("Beam destructed\n");
}

void Beam::fire() {
    if (!findTarget() || !isTriggerPulled())
        return;
    ++shotsFired;
    ++projectilesFinished;
    charging = true;
    fired = true;
    Worm* const worm = team->getCurrentWorm();
    worm->setPosition(targetPacket.worldPosition);
    worm->update();
    // Nothing of the weapon from here on.
    theModuleManager->getSoundControl()->play(teleportSound, false, teleportChannel);
}
