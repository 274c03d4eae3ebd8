#pragma once

// Divides faces far longer than a tool before the tool is taken out of their mesh.
//
// A cut joins what it leaves of a face to the face's far corners. On a plank or a slab of two triangles a side each
// crater adds a fan of needles that runs the length of it, every later crater meets all fans of before, and faces
// multiply. So a long face that a tool meets is halved until its pieces are no longer than a few tools: always at the
// middle of its longest edge, together with every face on that edge, and after a neighbour whose own longest edge is
// longer still. The surface stays what it was, no vertex comes to stand on somebody's edge, and no angle becomes
// smaller than half the smallest there was (halving the longest edge, after M.-C. Rivara).

#include "csg/solid/csg_bounds.h"
#include "csg/solid/csg_face_places.h"
#include "csg/solid/csg_tex_coord.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

class csgFace;
class csgFaceList;
class csgMesh;
class csgVertex;

/// Faces longer than this many times the tool's longest side are divided. Larger: more needles; smaller: faces of
/// ordinary land, of some twenty units a side, would be divided as well.
inline constexpr double csgLongFace = 3.5;

class csgDivider {
public:
    /// `tool`: the box of what is going to be cut out.
    csgDivider(csgMesh& dividedMesh, const csgBounds& tool);

    void run();

private:
    bool isTooLong(const csgFace& face) const;
    [[nodiscard]] bool halve(const csgFace& face);
    [[nodiscard]] bool splitEdge(csgVertex& a, csgVertex& b, const std::vector<csgFace*>& ring);
    void append(csgFaceList& list, const std::array<csgVertex*, 3>& corners, const std::array<csgTexCoord, 3>& tex);

    csgMesh& mesh;
    const csgBounds where;
    double longest;                                ///< edge that may stay
    std::vector<csgFace*> pending;                 ///< too long, or no longer there
    csgFacePlaces places;                          ///< of all faces; empty until needed
    std::vector<std::unique_ptr<csgFace>> divided; ///< so that no new face gets the address of an old one
};
