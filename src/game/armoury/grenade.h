#pragma once

#include "game/armoury/projectile.h"

class Testnode;

/// A bouncing projectile that cuts a crater after its lifetime, without a blast, an effect or a sound. No weapon fires
/// it yet. Adds itself to the scene root.
class Grenade : public Projectile {
public:
    Grenade(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy);
    ~Grenade() override;

    void update() override;

private:
    Testnode* body;
};
