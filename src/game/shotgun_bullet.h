#pragma once

#include "game/projectile.h"

/// An invisible bullet that flies straight, without gravity, and goes off at the first contact or after its lifetime.
/// Adds itself to the scene root.
class ShotgunBullet : public Projectile {
public:
    ShotgunBullet(const Vector3& position, const Vector3& startVelocity, Weapon* firedBy);
    ~ShotgunBullet() override;

    void update() override;
};
