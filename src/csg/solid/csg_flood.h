#pragma once

// Classification of the faces of a mesh with respect to another one: rays for a few, spread from corner to corner as
// far as the cut lets them.
//
// Only faces whose box meets the other mesh's box are looked at ("near"); all others lie outside, and so do their
// corners, from which the outside spreads first. A cut with a gap lets a status leak through. Therefore every near face
// that took its status from a corner sends its own ray; where that disagrees, two more rays decide. Faces that were cut
// in part only are asked at several points whether they straddle the surface.

#include "csg/solid/csg_status.h"

#include <cstddef>
#include <vector>

class csgFace;
class csgMesh;
class csgVertex;
struct csgBounds;

class csgFlood {
public:
    csgFlood(csgMesh& floodedMesh, const csgMesh& otherMesh) : mesh(floodedMesh), other(otherMesh) {}

    /// Leaves every near face with a status from 2 to 6, or 1 where only grazing rays would answer.
    void run();

    /// The faces of a mesh whose boxes meet `box`, in order.
    static std::vector<csgFace*> facesMeeting(const csgMesh& mesh, const csgBounds& box);

private:
    void linkCorners();
    void spreadFromOutside();
    void classify();
    void verify();
    void markStraddlers();
    void spread(csgVertex& from, csgStatus status);

    csgMesh& mesh;
    const csgMesh& other;
    std::vector<csgFace*> near;
    std::vector<bool> hasOwnRay; ///< beside near: the status is that of the face's own ray
    std::vector<csgVertex*> pending;
};
