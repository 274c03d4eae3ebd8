#pragma once

// The base of everything that is fired: a child of the scene root that flies through the collision service, detonates
// and destroys itself through the root from inside its own `update` (nothing of it is touched afterwards).

#include "core/scene/scene_node.h"
#include "game/collision/collision_packet.h"
#include "game/play/projectile_owner.h"

#include <cstdint>
#include <string>

class CollisionDetection;

/// What a kind of projectile does to the land and the worms where it goes off.
struct Detonation {
    /// Tool solid, without its extension.
    const char* craterFile;
    /// Half-edge of the box that landscape must meet to be cut, world units.
    float craterHalfSize;
    /// Damage at the centre.
    float blastStrength;
    /// World units.
    float blastRadius;
};

class Projectile : public SceneNode, public OwnedShot {
public:
    /// Position and velocity in world units (per second); lifetime in ms. The owner is told of the projectile's end and
    /// may be null.
    Projectile(const Vector3& position, const Vector3& startVelocity, ProjectileOwner* firedBy,
               std::int32_t lifetimeMs);
    ~Projectile() override;

    const Vector3& getVelocity() const { return velocity; }
    const CollisionPacket& getPacket() const { return packet; }

    /// Cuts the tool solid, moved to a position, out of every landscape node of the subtree whose box meets the given
    /// one. A tool that cannot be loaded cuts nothing.
    void carveCrater(const std::string& csgFile, const BoundingBox& box, const Vector3& position, SceneNode* node);

protected:
    /// Advances by one frame under a gravity (units per second²) until the first contact.
    void fly(const Vector3& gravity);
    /// Cuts the crater, then hurts and throws the worms, at the projectile's position.
    void detonate(const Detonation& detonation);
    /// Whether the lifetime has run out.
    bool isTooOld() const;
    /// Whether it has left the level downwards, where nothing goes off.
    bool isBelowLevel() const;
    /// Goes off with an explosion to be seen, ends the sound of its flight, and destroys itself.
    void explode(const Detonation& detonation, const char* flightSound);
    /// Ends the sound of its flight and destroys itself.
    void vanish(const char* flightSound);

    Vector3 velocity;
    CollisionDetection* collision;
    CollisionPacket packet;
    /// Tick of the frame it was fired in, ms.
    std::uint32_t birthTime;
    /// ms
    std::int32_t lifetime;
};
