#pragma once

// What holds between the records of a mesh whenever nobody is at work on it. Costs as much as looking at every face;
// runs after each carve where expectations are checked, and in tests.

#include <string>

class csgMesh;

/// The first promise that is broken, in words; empty when the mesh is sound:
///
/// - every slot of every part holds a face, inside the boxes of its run and of the face itself;
/// - a face's corners are three places, know the face, and are found at their place by the index;
/// - a vertex knows no other faces;
/// - no status and no adjacency is left over from a carve.
///
/// That every edge is met once in each direction is no promise of a mesh: files may hold open ones (csg_measure.h).
std::string brokenPromiseOf(const csgMesh& mesh);
