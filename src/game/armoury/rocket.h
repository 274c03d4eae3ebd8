#pragma once

#include "game/armoury/projectile.h"

#include <memory>

class MilkShapeModel;
class ParticleSystem;

/// A rocket of the bazooka or the airstrike: falls under gravity, trails smoke, goes off at the first contact or after
/// its lifetime, and vanishes below the level. Adds itself to the scene root.
class Rocket : public Projectile {
public:
    Rocket(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy);
    ~Rocket() override;

    void update() override;

private:
    void pointAlongFlight();
    void leaveSmoke();

    MilkShapeModel* model;
    /// A child of the scene root that ends by itself, perhaps before the rocket does.
    ParticleSystem* smoke;
    std::unique_ptr<NodeWatch> smokeWatch;
};
