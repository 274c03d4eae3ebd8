#include "game/armoury/blast.h"

#include "core/base/expect.h"
#include "core/scene/scene_node.h"
#include "game/play/worm.h"

namespace {

/// Speed of the throw away from the centre, and its vertical speed, per strength and inverse radius.
constexpr float throwFactor = 200.0f;
constexpr float liftFactor = 60.0f;

} // namespace

void Blast::applyTo(SceneNode* node) const {
    expect(radius > 0.0f && strength >= 0.0f);
    hit(*node);
    node->forEachChild([this](SceneNode* child) { applyTo(child); });
}

void Blast::hit(SceneNode& node) const {
    Damageable* const target = node.getDamageableNode();
    if (target == nullptr)
        return;
    const Vector3 offset = node.getWorldPosition() - position;
    const float distance = offset.length();
    if (!(distance <= radius))
        return;
    target->applyDamage((1.0f - distance / radius) * strength);
    if (Worm* const worm = node.asWorm()) {
        worm->jumping = true;
        worm->jumpVelocity = normalized(offset) / radius * strength * throwFactor;
        worm->jumpVelocity.y = strength / radius * liftFactor;
    }
}
