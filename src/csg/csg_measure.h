#pragma once

// Measures of a mesh, for tools and tests: whether it is closed, and how much it holds.

#include <cstddef>

class csgMesh;

/// By the divergence theorem; means something for closed meshes only.
double volumeOf(const csgMesh& mesh);
double areaOf(const csgMesh& mesh);
/// Edges, taken by vertex identity, that are not used exactly once in each direction. 0 when the mesh is closed.
std::size_t openEdgesOf(const csgMesh& mesh);
