#pragma once

#include "game/armoury/projectile.h"

/// An invisible bullet that flies straight, without gravity, and goes off at the first contact or after its lifetime.
/// Adds itself to the scene root.
class ShotgunBullet : public Projectile {
public:
    ShotgunBullet(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy);
    ~ShotgunBullet() override;

    void update() override;
};
