#include "game/armoury/dynamite.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "game/armoury/dynamite_projectile.h"
#include "render/view/hud.h"

Dynamite::Dynamite(Team* owningTeam) : Weapon(owningTeam, index, "dynamite", "Dynamite constructed") {}

Dynamite::~Dynamite() {
    logLine("Dynamite destructed\n");
}

bool Dynamite::showMarks() {
    if (isAimView())
        theModuleManager->getHud()->showCrosshair();
    return true;
}

void Dynamite::fire() {
    if (!isTriggerPulled())
        return;
    charging = true;
    new DynamiteProjectile(getMuzzle(), Vector3(0.0f, 0.0f, 0.0f), this);
    ++shotsFired;
    fired = true;
}
