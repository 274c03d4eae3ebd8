#include "game/targeted_weapon.h"

#include "core/module_manager.h"
#include "core/team.h"
#include "game/collision_detection.h"
#include "game/worm.h"
#include "render/camera.h"
#include "render/hud.h"

namespace {

/// World units.
constexpr float rayLength = 1000.0f;
/// A worm's body, so that a target is a place where one can stand.
const Vector3 rayRadius(2.0f, 5.0f, 2.0f);

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
    targetPacket.radius = rayRadius;
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
