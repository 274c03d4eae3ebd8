#include "game/armoury/grenade.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "game/collision/collision_detection.h"
#include "game/effects/test_node.h"
#include "game/play/world_laws.h"

namespace {

/// World units per second².
constexpr std::int32_t grenadeLifetime = 5000;
constexpr float bodySize = 0.2f;
constexpr const char* craterFile = "./csg/sphere";
constexpr float craterHalfSize = 10.0f;

} // namespace

Grenade::Grenade(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy)
    : Projectile(position, startVelocity, firedBy, grenadeLifetime) {
    logLine("Grenade constructed\n");
    body = new Testnode("Rocket", bodySize);
    addChild(body);
    body->setPosition(0.0f, 0.0f, 0.0f);
    theModuleManager->getSceneRoot()->addChild(this);
    setPosition(position);
}

Grenade::~Grenade() {
    logLine("Grenade destructed\n");
}

void Grenade::update() {
    SceneNode::update();
    SceneNode* const root = theModuleManager->getSceneRoot();
    const float frameTime = theModuleManager->getTimer()->getFrameTime();
    packet.worldPosition = getWorldPosition();
    packet.worldVelocity = velocity * frameTime;
    velocity += gravity * frameTime;
    collision->moveAndBounce(&packet, root, &velocity);
    setPosition(packet.worldPosition);
    if (!isTooOld())
        return;
    const Vector3 centre = getPosition();
    carveCrater(craterFile, BoundingBox(centre - craterHalfSize, centre + craterHalfSize), centre, root);
    root->deleteChild(this);
}
