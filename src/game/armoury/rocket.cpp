#include "game/armoury/rocket.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "game/effects/particle_system.h"
#include "game/play/world_laws.h"
#include "render/view/milkshape_model.h"

namespace {

/// World units per second².
constexpr std::int32_t rocketLifetime = 5000;
constexpr Detonation rocketDetonation{"./csg/sphere", 10.0f, 80.0f, 10.0f};

constexpr const char* missileSound = "sound/sfx/Missile.wav";
constexpr int missileChannel = 1;

} // namespace

Rocket::Rocket(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy)
    : Projectile(position, startVelocity, firedBy, rocketLifetime) {
    logLine("Rocket constructed\n");
    model = addModel(*this, "rocket");
    SceneNode* const root = theModuleManager->getSceneRoot();
    smoke = new ParticleSystem("smoke");
    smokeWatch = std::make_unique<NodeWatch>(*smoke);
    root->addChild(smoke);
    setPosition(position);
    root->addChild(this);
    theModuleManager->getSoundControl()->play(missileSound, true, missileChannel);
}

Rocket::~Rocket() {
    // At shutdown the sound goes before the scene.
    if (SoundControl* const sound = theModuleManager->getSoundControl())
        sound->stop(missileSound);
    logLine("Rocket destructed\n");
}

void Rocket::update() {
    SceneNode::update();
    pointAlongFlight();
    fly(gravity);
    leaveSmoke();
    if (isBelowLevel())
        vanish(missileSound);
    else if (packet.foundCollision || isTooOld())
        explode(rocketDetonation, missileSound);
}

/// Turns the model's Y axis into the direction of flight. A vertical flight leaves the two other axes zero.
void Rocket::pointAlongFlight() {
    const Vector3 d = normalized(velocity);
    const Vector3 r = normalized(d.cross(Vector3(0.0f, 1.0f, 0.0f)));
    const Vector3 u = normalized(d.cross(r));
    rotationMatrix = Matrix({r.x, r.y, r.z, 0, d.x, d.y, d.z, 0, u.x, u.y, u.z, 0, 0, 0, 0, 1});
}

void Rocket::leaveSmoke() {
    if (!smokeWatch->isGone())
        smoke->emit(packet.worldPosition.x, packet.worldPosition.y, packet.worldPosition.z);
}
