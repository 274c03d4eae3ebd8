#pragma once

#include "game/armoury/projectile.h"

class MilkShapeModel;

/// A burning stick of dynamite: falls, lies where it lands, and goes off when its fuse has burnt down; contact does not
/// set it off. Its velocity is never cleared, so it drops fast when the ground under it is blown away. Adds itself to
/// the scene root.
class DynamiteProjectile : public Projectile {
public:
    DynamiteProjectile(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy);
    ~DynamiteProjectile() override;

    void update() override;

private:
    MilkShapeModel* model;
};
