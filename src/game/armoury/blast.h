#pragma once

#include "render/math/vector3.h"

class SceneNode;

/// The effect of one explosion on what takes damage: used once, then discarded.
struct Blast {
    /// World units.
    Vector3 position;
    /// Damage at the centre; falls off linearly to 0 at the radius.
    float strength;
    /// World units; beyond it nothing is hurt or thrown.
    float radius;

    Blast(const Vector3& centre, float damage, float reach) : position(centre), strength(damage), radius(reach) {}

    /// Hurts every damageable node of the subtree within the radius and throws the worms among them. The throw depends
    /// on the direction alone, not on the distance.
    void applyTo(SceneNode* node) const;

private:
    void hit(SceneNode& node) const;
};
