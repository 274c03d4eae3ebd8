#include "game/armoury/shotgun_bullet.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"

namespace {

/// ms
constexpr std::int32_t bulletLifetime = 1000;
constexpr Detonation bulletDetonation{"./csg/shotgunsphere", 3.5f, 50.0f, 3.5f};

} // namespace

ShotgunBullet::ShotgunBullet(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy)
    : Projectile(position, startVelocity, firedBy, bulletLifetime) {
    logLine("ShotgunBullet constructed\n");
    setPosition(position);
    theModuleManager->getSceneRoot()->addChild(this);
}

ShotgunBullet::~ShotgunBullet() {
    logLine("ShotgunBullet destructed\n");
}

void ShotgunBullet::update() {
    SceneNode::update();
    fly(Vector3(0.0f, 0.0f, 0.0f));
    if (!packet.foundCollision && !isTooOld())
        return;
    detonate(bulletDetonation);
    theModuleManager->getSceneRoot()->deleteChild(this);
}
