#include "core/scene/damageable.h"

void Damageable::applyDamage(float amount) {
    health -= amount;
    if (health < 0.0f)
        health = 0.0f;
}
