#include "game/armoury/beam.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "core/teams/team.h"
#include "game/play/worm.h"

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
