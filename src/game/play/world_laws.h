#pragma once

// What holds for whoever is on the moor.

#include "render/math/vector3.h"

/// Radii of a worm's body, an ellipsoid, in world units.
inline const Vector3 wormBodyRadii(2.0f, 5.0f, 2.0f);
/// By which what is fired falls, units per second²; a worm falls at a constant speed.
inline const Vector3 gravity(0.0f, -10.0f, 0.0f);
/// A worm below this height is lost.
inline constexpr float deathHeight = -10.0f;
