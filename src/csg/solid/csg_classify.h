#pragma once

// Where a face lies with respect to another, closed solid: a ray from its centre along its normal looks for the nearest
// face of that solid. Only faces whose box the ray meets are examined; nothing else can hold the point of a hit. The
// answer is one of the statuses of csg_status.h, or csgStatus::unclassified when the nearest face is grazed. A ray that
// starts in a face's plane and runs along it draws from the game's random stream to get free.

#include "csg/solid/csg_face_list.h"
#include "csg/solid/csg_status.h"
#include "csg/solid/csg_vector.h"

#include <vector>

/// The parts of a solid.
using csgParts = std::vector<csgFaceList>;

/// Status of a point that faces `direction` (a unit vector) with respect to the solid.
csgStatus castRay(const csgVector& point, const csgVector& direction, const csgParts& solid);

/// Status of the face by its own ray.
csgStatus castOwnRay(const csgFace& face, const csgParts& solid);

/// Gives the face the status of its own ray; a grazing ray leaves the status as it was.
void classifyByRay(csgFace& face, const csgParts& solid);

/// True when two more rays from the face's centre, in general directions, say the same as `status`. Coplanar statuses
/// are confirmed by the centre lying on the surface: which way it faces is no matter of those directions.
[[nodiscard]] bool confirmStatus(const csgFace& face, csgStatus status, const csgParts& solid);

/// True for a thin face that, by rays from several of its points, lies partly inside and partly outside: its cut pieces
/// were too small to be made.
[[nodiscard]] bool straddles(const csgFace& face, const csgParts& solid);
