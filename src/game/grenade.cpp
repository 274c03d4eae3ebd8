#include "game/grenade.h"

#include "core/log.h"
#include "core/module_manager.h"
#include "core/timer.h"
#include "game/collision_detection.h"
#include "game/test_node.h"

namespace {

/// World units per second².
const Vector3 gravity(0.0f, -10.0f, 0.0f);
constexpr std::int32_t grenadeLifetime = 5000;
constexpr float bodySize = 0.2f;
constexpr const char* craterFile = "./csg/sphere";
constexpr float craterHalfSize = 10.0f;

} // namespace

Grenade::Grenade(const Vector3& position, const Vector3& startVelocity, Weapon* firedBy)
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
