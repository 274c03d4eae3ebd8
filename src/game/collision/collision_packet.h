#pragma once

#include "render/math/vector3.h"

/// What a mover hands to the collision service with every move, and what it gets back. Ellipsoid space is the world
/// divided component by component by `radius`: in it the mover is a sphere of radius 1.
struct CollisionPacket {
    /// The mover's radii, world units; set once by the owner.
    Vector3 radius{0.0f, 0.0f, 0.0f};
    /// Displacement asked for in this move, world units (not per second).
    Vector3 worldVelocity{0.0f, 0.0f, 0.0f};
    /// The mover's centre, world units: where the move starts, and afterwards where it ended.
    Vector3 worldPosition{0.0f, 0.0f, 0.0f};
    /// Displacement of the current sweep, ellipsoid space.
    Vector3 velocity{0.0f, 0.0f, 0.0f};
    /// The same scaled to length 1; zero stays zero.
    Vector3 normalizedVelocity{0.0f, 0.0f, 0.0f};
    /// Start of the current sweep, ellipsoid space.
    Vector3 basePoint{0.0f, 0.0f, 0.0f};
    /// Whether the last sweep hit something.
    bool foundCollision = false;
    /// How far the sweep gets before that hit, in ellipsoid space; means nothing without one.
    double nearestDistance = 0.0;
    /// Point of the nearest hit, ellipsoid space; the other's centre when it is a worm.
    Vector3 intersectionPoint{0.0f, 0.0f, 0.0f};
};
