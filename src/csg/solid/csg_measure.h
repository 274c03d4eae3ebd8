#pragma once

// Measures of a mesh, for tools and tests: whether it is closed, and how much it holds.

#include <cstddef>

class csgMesh;

/// By the divergence theorem; means something for closed meshes only.
double volumeOf(const csgMesh& mesh);
double areaOf(const csgMesh& mesh);
/// Edges, taken by vertex identity, that are not used exactly once in each direction. 0 when the mesh is closed.
std::size_t openEdgesOf(const csgMesh& mesh);

/// The open edges, and how far they are from one another. The gap is what a mover would have to fit through; cost grows
/// with the square of the number of open edges.
struct OpenEdges {
    std::size_t count = 0; ///< as openEdgesOf counts
    /// Of their uses, those without one the other way; none where a solid only touches itself along an edge.
    std::size_t unpaired = 0;
    double widestGap = 0.0; ///< largest distance of an open edge from those that run the other way, along its length
};
OpenEdges measureOpenEdges(const csgMesh& mesh);
