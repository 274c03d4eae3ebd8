#include "game/armoury/dynamite_projectile.h"
#include "game/play/world_laws.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "render/view/milkshape_model.h"

namespace {

/// World units per second².
constexpr std::int32_t fuseTime = 5000;
constexpr Detonation dynamiteDetonation{"./csg/sphereDynamite", 15.0f, 90.0f, 15.0f};

constexpr const char* fuseSound = "sound/sfx/fuse.wav";
constexpr int fuseChannel = 1;

} // namespace

DynamiteProjectile::DynamiteProjectile(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy)
    : Projectile(position, startVelocity, firedBy, fuseTime) {
    logLine("DynamiteProjectile constructed\n");
    model = addModel(*this, "dynamiteprojectile");
    setPosition(position);
    theModuleManager->getSceneRoot()->addChild(this);
    theModuleManager->getSoundControl()->play(fuseSound, true, fuseChannel);
}

DynamiteProjectile::~DynamiteProjectile() {
    logLine("DynamiteProjectile destructed\n");
    // At shutdown the sound goes before the scene.
    if (SoundControl* const sound = theModuleManager->getSoundControl())
        sound->stop(fuseSound);
}

void DynamiteProjectile::update() {
    SceneNode::update();
    fly(gravity);
    if (isBelowLevel())
        vanish(fuseSound);
    else if (isTooOld())
        explode(dynamiteDetonation, fuseSound);
}
