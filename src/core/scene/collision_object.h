#pragma once

struct CollisionPacket;

/// What the collision service asks of an obstacle. Never destroyed through this type.
class CollisionObject {
public:
    CollisionObject();
    CollisionObject(const CollisionObject&) = delete;
    CollisionObject& operator=(const CollisionObject&) = delete;

    /// 0: takes no part in collisions; 1: terrain; 2: a worm.
    virtual int getCollisionType();
    /// Tests the obstacle against a mover's sweep and records a nearer contact in its packet.
    virtual void collide(CollisionPacket* packet);

protected:
    ~CollisionObject();

    int collisionType = 0;
};
