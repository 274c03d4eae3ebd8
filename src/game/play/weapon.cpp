#include "game/play/weapon.h"

#include "core/base/expect.h"
#include "core/base/log.h"
#include "core/services/input_control.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "core/teams/team.h"
#include "core/teams/team_manager.h"
#include "game/play/worm.h"
#include "render/view/hud.h"
#include "render/view/milkshape_model.h"

namespace {

/// Pause between the end of the last projectile and the next turn, ms.
constexpr std::uint32_t turnPause = 2000;
/// How far in front of the worm shots begin, world units.
constexpr float muzzleOffset = 3.0f;

} // namespace

Weapon::Weapon(Team* owningTeam, int index, const std::string& modelName, const char* constructionLine)
    : SceneNode("<no name>"), team(owningTeam), input(theModuleManager->getInputControl()), weaponIndex(index) {
    expect(owningTeam != nullptr && index >= 0);
    logLine("Weapon constructed\n");
    logLine("%s\n", constructionLine);
    model = addModel(*this, modelName);
}

Weapon::~Weapon() {
    logLine("Weapon destructed\n");
}

void Weapon::update() {
    const NodeWatch self(*this);
    SceneNode::update();
    theModuleManager->getHud()->setSelectedWeapon(weaponIndex);
    if (!showMarks())
        return;
    if (shotsFired >= shotsPerTurn) {
        endTurn();
        return;
    }
    if (input->wasKeyboardLost())
        forgetCharge();
    fire();
    if (!self.isGone())
        releaseButton();
}

void Weapon::releaseButton() {
    if (!input->isLeftButtonDown() && fired && charging) {
        fired = false;
        charging = false;
    }
}

void Weapon::endTurn() {
    if (turnEnding) {
        if (getNow() - turnEndTime > turnPause)
            passTurn();
        return;
    }
    if (projectilesFinished < shotsPerTurn)
        return;
    projectilesFinished = 0;
    turnEndTime = getNow();
    turnEnding = true;
    int& ammo = team->getWeaponEntry(static_cast<std::size_t>(weaponIndex)).ammo;
    if (ammo > 0)
        --ammo;
}

void Weapon::passTurn() {
    shotsFired = 0;
    turnEnding = false;
    if (Worm* const worm = team->getCurrentWorm()) {
        worm->setActive(false);
        worm->weapon = nullptr;
        worm->removeChild(this);
    }
    if (Team* const next = theModuleManager->getTeamManager()->nextTeam())
        next->nextWorm();
}

void Weapon::projectileFinished() {
    ++projectilesFinished;
    if (!hasProjectilesInFlight())
        lastProjectileGone();
}

void Weapon::forgetCharge() {
    if (!isBuildingUp())
        return;
    charging = false;
    chargeForgotten();
}

void Weapon::abandonTurn() {
    forgetCharge();
    if (hasProjectilesInFlight()) {
        disownProjectiles();
        lastProjectileGone();
    }
    shotsFired = 0;
    turnEnding = false;
    projectilesFinished = 0;
    charging = false;
    fired = false;
}

bool Weapon::isAimView() const {
    const Worm* const worm = team->getCurrentWorm();
    return worm != nullptr && theModuleManager->getCamera() == worm->getAimCamera();
}

bool Weapon::isTriggerPulled() const {
    return !charging && !fired && input->isLeftButtonDown();
}

Vector3 Weapon::getMuzzle() const {
    return getWorldPosition() + getAim() * muzzleOffset;
}

const Vector3& Weapon::getAim() const {
    return team->getCurrentWorm()->getAimDirection();
}

std::uint32_t Weapon::getNow() const {
    return theModuleManager->getTimer()->getLastTick();
}
