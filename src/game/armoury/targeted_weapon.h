#pragma once

#include "game/collision/collision_packet.h"
#include "game/play/weapon.h"

class Camera;

/// The base of the weapons that act where the view's centre points: a worm-sized ray from the active camera finds the
/// target, and the HUD shows a marker in the overview. A ray that begins inside another worm's body has no target: it
/// would end inside it too, and a worm beamed there could never leave. Without a camera or a current worm the weapon
/// does nothing at all.
class TargetedWeapon : public Weapon {
protected:
    using Weapon::Weapon;

    bool showMarks() override;
    /// Casts the ray; the target is then in `targetPacket`, and the HUD's marker is armed, when this is true.
    [[nodiscard]] bool findTarget();

    CollisionPacket targetPacket;

private:
    bool isInsideAnotherWorm(const Vector3& centre) const;
};
