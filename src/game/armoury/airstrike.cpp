#include "game/armoury/airstrike.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "game/armoury/rocket.h"
#include "platform/crt_random.h"

namespace {

constexpr int rocketsPerStrike = 5;
/// Height of the lowest rocket above the target, and from each to the next, world units.
constexpr float dropHeight = 80.0f;
constexpr float dropSpacing = 10.0f;
/// Width of the random shift of each rocket in x and z, world units.
constexpr double scatter = 15.0;
/// The small z component keeps the rocket's orientation well defined in an almost vertical flight.
const Vector3 dropVelocity(0.0f, -1.0f, 0.01f);

constexpr const char* bomberSound = "sound/sfx/bomber.wav";
constexpr int bomberChannel = 1;

float randomScatter() {
    return static_cast<float>((crtRandFraction() - 0.5) * scatter);
}

} // namespace

Airstrike::Airstrike(Team* owningTeam) : TargetedWeapon(owningTeam, index, "airstrike", "Airstrike constructed") {}

Airstrike::~Airstrike() {
    logLine("Airstrike destructed\n");
    // The team may end before its rockets do.
    if (hasProjectilesInFlight())
        Airstrike::lastProjectileGone();
}

void Airstrike::lastProjectileGone() {
    // At shutdown the sound goes before the scene.
    if (SoundControl* const sound = theModuleManager->getSoundControl())
        sound->stop(bomberSound);
}

void Airstrike::fire() {
    if (!findTarget() || !isTriggerPulled())
        return;
    charging = true;
    fired = true;
    dropRockets();
    theModuleManager->getSoundControl()->play(bomberSound, true, bomberChannel);
}

void Airstrike::dropRockets() {
    Vector3 column = targetPacket.worldPosition;
    column.y += dropHeight;
    for (int i = 0; i < rocketsPerStrike; ++i) {
        Vector3 start = column;
        start.x += randomScatter();
        start.z += randomScatter();
        start.y += static_cast<float>(i) * dropSpacing;
        new Rocket(start, dropVelocity, this);
        ++shotsFired;
    }
}
