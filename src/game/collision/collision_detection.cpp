#include "game/collision/collision_detection.h"

#include "core/base/expect.h"
#include "core/base/log.h"
#include "core/scene/scene_node.h"
#include "core/services/module_manager.h"
#include "game/collision/collision_packet.h"
#include "game/collision/plane.h"

namespace {

/// Distance kept between a mover and what it touched, and the shortest slide, in ellipsoid space. Larger: worms hover;
/// smaller: rounding lets them sink in.
constexpr float contactMargin = 0.005f;
/// A sweep is refused beyond this many slide steps: six sweeps a move.
constexpr std::uint32_t maximumRecursionDepth = 5;
/// Below this reflected speed, in ellipsoid space, a bounce turns straight back.
constexpr float bounceFloor = 0.5f;

/// Where the mover is before and after a sweep, as one box in world units.
BoundingBox sweptBox(const CollisionPacket& packet, const Vector3& position, const Vector3& displacement) {
    BoundingBox box((position - 1.0f) * packet.radius, (position + 1.0f) * packet.radius);
    box.extend((position + displacement - 1.0f) * packet.radius);
    box.extend((position + displacement + 1.0f) * packet.radius);
    return box;
}

/// Where a mover stops that found a contact: short of it by the margin. Pulls the contact back by the same.
Vector3 stopBeforeContact(CollisionPacket& packet, const Vector3& position, const Vector3& displacement) {
    if (packet.nearestDistance < static_cast<double>(contactMargin))
        return position;
    const Vector3 advance =
        normalized(displacement) * static_cast<float>(packet.nearestDistance - static_cast<double>(contactMargin));
    packet.intersectionPoint -= normalized(advance) * contactMargin;
    return packet.basePoint + advance;
}

} // namespace

CollisionDetection::CollisionDetection() {
    theModuleManager->setCollisionDetection(this);
    logLine("Collision Detection constructed\n");
}

CollisionDetection::~CollisionDetection() {
    logLine("Collision Detection destructed\n");
}

void CollisionDetection::moveToContact(CollisionPacket* packet, SceneNode* root) {
    expect(root != nullptr);
    expect(packet->radius.x > 0.0f && packet->radius.y > 0.0f && packet->radius.z > 0.0f);
    recursionDepth = 0;
    const Vector3 final =
        sweepToContact(packet, packet->worldPosition / packet->radius, packet->worldVelocity / packet->radius, root);
    packet->worldPosition = final * packet->radius;
}

void CollisionDetection::moveAndSlide(CollisionPacket* packet, SceneNode* root) {
    recursionDepth = 0;
    const Vector3 final =
        sweepAndSlide(packet, packet->worldPosition / packet->radius, packet->worldVelocity / packet->radius, root);
    packet->worldPosition = final * packet->radius;
}

void CollisionDetection::moveAndBounce(CollisionPacket* packet, SceneNode* root, Vector3* velocity) {
    recursionDepth = 0;
    const Vector3 final =
        sweepToContact(packet, packet->worldPosition / packet->radius, packet->worldVelocity / packet->radius, root);
    packet->worldPosition = final * packet->radius;
    if (!packet->foundCollision)
        return;
    const Vector3 n = final - packet->intersectionPoint;
    Vector3 reflected = *velocity / packet->radius;
    reflected -= reflected * n * n * 2.0f;
    if (reflected.length() >= bounceFloor)
        *velocity = reflected * packet->radius;
    else
        *velocity = *velocity * -1.0f;
}

Vector3 CollisionDetection::sweepToContact(CollisionPacket* packet, const Vector3& position,
                                           const Vector3& displacement, SceneNode* root) {
    if (recursionDepth > maximumRecursionDepth)
        return position;
    packet->velocity = displacement;
    packet->normalizedVelocity = normalized(displacement);
    packet->basePoint = position;
    packet->foundCollision = false;
    testNode(packet, root, sweptBox(*packet, position, displacement));
    if (!packet->foundCollision)
        return position + displacement;
    return stopBeforeContact(*packet, position, displacement);
}

Vector3 CollisionDetection::sweepAndSlide(CollisionPacket* packet, const Vector3& position, const Vector3& displacement,
                                          SceneNode* root) {
    if (recursionDepth > maximumRecursionDepth)
        return position;
    const Vector3 newBase = sweepToContact(packet, position, displacement, root);
    if (!packet->foundCollision)
        return newBase;
    const Vector3 destination = position + displacement;
    const Plane slidingPlane(packet->intersectionPoint, normalized(newBase - packet->intersectionPoint));
    const Vector3 newDestination =
        destination - slidingPlane.normal * static_cast<float>(slidingPlane.signedDistanceTo(destination));
    const Vector3 newDisplacement = newDestination - packet->intersectionPoint;
    if (newDisplacement.length() < contactMargin)
        return newBase;
    ++recursionDepth;
    return sweepAndSlide(packet, newBase, newDisplacement, root);
}

void CollisionDetection::testNode(CollisionPacket* packet, SceneNode* node, const BoundingBox& box) {
    if (node->getCollisionType() != 0 && box.intersects(node->getWorldBounds()))
        node->collide(packet);
    node->forEachChild([&](SceneNode* child) { testNode(packet, child, box); });
}
