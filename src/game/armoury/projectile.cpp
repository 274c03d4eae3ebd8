#include "game/armoury/projectile.h"

#include "core/base/data_error.h"
#include "core/base/expect.h"
#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "core/services/timer.h"
#include "csg/land/csg_object.h"
#include "game/armoury/blast.h"
#include "game/collision/collision_detection.h"
#include "game/effects/explosion.h"

namespace {

/// World units.
constexpr float lowestHeight = -5.0f;
constexpr float explosionSize = 10.0f;

} // namespace

Projectile::Projectile(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy,
                       std::int32_t lifetimeMs)
    : SceneNode("<no name>"),
      OwnedShot(firedBy),
      velocity(startVelocity),
      collision(theModuleManager->getCollisionDetection()),
      birthTime(theModuleManager->getTimer()->getLastTick()),
      lifetime(lifetimeMs) {
    expect(lifetimeMs > 0);
    logLine("Projectile constructed\n");
    packet.worldPosition = position;
    packet.worldVelocity = startVelocity;
    packet.radius = Vector3(1.0f, 1.0f, 1.0f);
}

Projectile::~Projectile() {
    logLine("Projectile destructed\n");
    takeLeave();
}

void Projectile::fly(const Vector3& gravity) {
    const float frameTime = theModuleManager->getTimer()->getFrameTime();
    velocity += gravity * frameTime;
    packet.worldPosition = getWorldPosition();
    packet.worldVelocity = velocity * frameTime;
    collision->moveToContact(&packet, theModuleManager->getSceneRoot());
    setPosition(packet.worldPosition);
}

bool Projectile::isTooOld() const {
    return ticksBetween(birthTime, theModuleManager->getTimer()->getLastTick()) > lifetime;
}

void Projectile::detonate(const Detonation& detonation) {
    SceneNode* const root = theModuleManager->getSceneRoot();
    const Vector3 centre = getPosition();
    const BoundingBox box(centre - detonation.craterHalfSize, centre + detonation.craterHalfSize);
    carveCrater(detonation.craterFile, box, centre, root);
    Blast(centre, detonation.blastStrength, detonation.blastRadius).applyTo(root);
}

bool Projectile::isBelowLevel() const {
    return packet.worldPosition.y < lowestHeight;
}

void Projectile::explode(const Detonation& detonation, const char* flightSound) {
    const Vector3 centre = getPosition();
    detonate(detonation);
    theModuleManager->getSceneRoot()->addChild(new Explosion("explosion", centre, explosionSize));
    vanish(flightSound);
}

void Projectile::vanish(const char* flightSound) {
    theModuleManager->getSoundControl()->stop(flightSound);
    theModuleManager->getSceneRoot()->deleteChild(this);
}

void Projectile::carveCrater(const std::string& csgFile, const BoundingBox& box, const Vector3& position,
                             SceneNode* node) {
    csgObject* const land = node->asCsgNode();
    if (land != nullptr && box.intersects(node->getWorldBounds())) {
        csgObject tool;
        if (!tool.load(csgFile)) {
            sayDataFault(csgFile + ".csg", tool.getLoadFault());
        } else {
            tool.translate(static_cast<double>(position.x), static_cast<double>(position.y),
                           static_cast<double>(position.z));
            land->subtract(tool);
        }
    }
    node->forEachChild([&](SceneNode* child) { carveCrater(csgFile, box, position, child); });
}
