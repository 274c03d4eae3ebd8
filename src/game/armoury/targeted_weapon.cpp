#include "game/armoury/targeted_weapon.h"

#include "core/services/module_manager.h"
#include "core/teams/team.h"
#include "game/collision/collision_detection.h"
#include "game/play/world_laws.h"
#include "game/play/worm.h"
#include "render/camera/camera.h"
#include "render/view/hud.h"

namespace {

/// World units.
constexpr float rayLength = 1000.0f;

} // namespace

bool TargetedWeapon::showMarks() {
    const Camera* const camera = theModuleManager->getCamera();
    const Worm* const worm = team->getCurrentWorm();
    if (camera == nullptr || worm == nullptr)
        return false;
    if (camera == worm->getOverviewCamera())
        theModuleManager->getHud()->showTargetMarker();
    return true;
}

bool TargetedWeapon::findTarget() {
    const Camera& camera = *theModuleManager->getCamera();
    // As wide as a worm, so that a target is a place where one can stand.
    targetPacket.radius = wormBodyRadii;
    targetPacket.worldPosition = camera.getWorldPosition();
    targetPacket.worldVelocity = normalized(camera.getViewDirection()) * rayLength;
    if (isInsideAnotherWorm(targetPacket.worldPosition))
        return false;
    theModuleManager->getCollisionDetection()->moveToContact(&targetPacket, theModuleManager->getSceneRoot());
    if (targetPacket.foundCollision)
        theModuleManager->getHud()->armTargetMarker();
    return targetPacket.foundCollision;
}

bool TargetedWeapon::isInsideAnotherWorm(const Vector3& centre) const {
    bool inside = false;
    theModuleManager->getSceneRoot()->forEachChild([&](SceneNode* node) {
        const Worm* const worm = node->asWorm();
        inside = inside || (worm != nullptr && worm != team->getCurrentWorm() && worm->overlaps(centre));
    });
    return inside;
}
