#include "core/scene/collision_object.h"

#include "core/base/log.h"

CollisionObject::CollisionObject() {
    logLine("Collision Object Construct\n");
}

CollisionObject::~CollisionObject() {
    logLine("Collision Object Destruct\n");
}

int CollisionObject::getCollisionType() {
    return collisionType;
}

void CollisionObject::collide(CollisionPacket* /*packet*/) {}
