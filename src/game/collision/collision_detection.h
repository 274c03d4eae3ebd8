#pragma once

// Moves everything that moves: an axis-aligned ellipsoid is swept along a displacement against the triangles of the
// terrain (from their front sides only) and the bodies of worms; the earliest contact wins.
//
// The owner of a packet sets `radius` once, then before each move `worldPosition` (the centre) and `worldVelocity` (the
// displacement of this move), and copies `worldPosition` back afterwards. A displacement of zero finds no contact. No
// `collide` may begin another move: there is one recursion depth, and one set of sweep fields in the packet.
// Obstacles answer through CollisionObject; terrain calls `checkTriangle`, worms `checkSphere`. Cost: a walk of the
// tree for each sweep, and the triangles near the sweep.

#include "render/math/vector3.h"

#include <cstdint>

class BoundingBox;
class SceneNode;
struct CollisionPacket;

class CollisionDetection {
public:
    /// Registers itself.
    CollisionDetection();
    ~CollisionDetection();
    CollisionDetection(const CollisionDetection&) = delete;
    CollisionDetection& operator=(const CollisionDetection&) = delete;

    /// Moves until the first contact.
    void moveToContact(CollisionPacket* packet, SceneNode* root);
    /// Moves, sliding along what is met, in up to six sweeps.
    void moveAndSlide(CollisionPacket* packet, SceneNode* root);
    /// Moves until the first contact and there reflects the caller's velocity (units per second).
    void moveAndBounce(CollisionPacket* packet, SceneNode* root, Vector3* velocity);

    /// Tests one triangle, corners in ellipsoid space, counter-clockwise from its front.
    void checkTriangle(CollisionPacket* packet, const Vector3& p1, const Vector3& p2, const Vector3& p3);
    /// Tests a sphere of radius 1 in ellipsoid space.
    void checkSphere(CollisionPacket* packet, const Vector3& centre);

private:
    Vector3 sweepToContact(CollisionPacket* packet, const Vector3& position, const Vector3& displacement,
                           SceneNode* root);
    Vector3 sweepAndSlide(CollisionPacket* packet, const Vector3& position, const Vector3& displacement,
                          SceneNode* root);
    void testNode(CollisionPacket* packet, SceneNode* node, const BoundingBox& box);

    /// Slide steps taken in the current move.
    std::uint32_t recursionDepth = 0;
};

/// The smaller root of a·x² + b·x + c between 0 and limit, both exclusive, else the larger one; false when neither is.
bool lowestRoot(float a, float b, float c, float limit, float& root);

/// Whether a point of the plane of a triangle lies in it.
bool pointInTriangle(const Vector3& point, const Vector3& a, const Vector3& b, const Vector3& c);
