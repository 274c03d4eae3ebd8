#pragma once

// Takes vertices out of a mesh that its shape does not need: those in the middle of a flat patch, and those on a
// straight edge between two of them.
//
// Craters that overlap cut each other's walls and what is left of flat land into ever more pieces, though the corners
// that matter stay as few. A vertex whose faces lie in one plane, or in two that meet in a line through it, is drawn
// into a neighbour of that patch or along that line: two faces fewer, and the surface and its texture are what they
// were. Nothing is taken out where a face would be turned over, become a sliver, or meet another one twice.

#include "csg/solid/csg_bounds.h"
#include "csg/solid/csg_face_places.h"

#include <cstddef>
#include <vector>

class csgMesh;
class csgVertex;

class csgJoiner {
public:
    /// `carved`: the box of what was cut out; vertices of the faces that meet it are looked at.
    csgJoiner(csgMesh& joinedMesh, const csgBounds& carved) : mesh(joinedMesh), where(carved) {}

    void run();

private:
    /// Faces of a vertex that lie in one plane, the largest of them first.
    using Patch = std::vector<const csgFace*>;

    void locateFaces();
    [[nodiscard]] bool takeOut(csgVertex& vertex);
    [[nodiscard]] bool draw(csgVertex& vertex, csgVertex& into, const std::vector<Patch>& patches);

    csgMesh& mesh;
    const csgBounds where;
    csgFacePlaces places;
};
