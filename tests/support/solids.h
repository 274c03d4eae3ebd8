#pragma once

// Closed solids to test with, and measures of them.

#include "csg/solid/csg_measure.h"
#include "csg/solid/csg_mesh.h"
#include "csg/solid/csg_mesh_data.h"

#include <cstdint>
#include <utility>
#include <vector>

/// Box from (x0,y0,z0) to (x1,y1,z1): 12 faces, outward.
csgMeshData boxData(const csgVector& low, const csgVector& high);
/// A tetrahedron, the simplest closed solid.
csgMeshData tetrahedronData(double size);
/// Sphere of 20 * 4^subdivisions faces round the origin.
csgMeshData sphereData(int subdivisions, double radius);
/// Island of cells x cells columns, `width` units wide, its surface hilly, its underside flat: 4 cells^2 + 8 cells
/// faces.
csgMeshData islandData(int cells, double width, std::uint32_t seed);

/// Sum over the bits of all positions, texture coordinates, normals and statuses, in order.
std::uint64_t hashOf(const csgMesh& mesh);

/// Coordinates of a point as (along the axis, first across, second across); the axes are 0, 1 and 2 in turn.
csgVector turned(const csgVector& p, int axis);
/// Whether the line along `axis` at (u, v), as `turned` names them, misses the box.
bool isBeside(const csgBounds& box, int axis, double u, double v);
/// Stretches of that line that lie inside the mesh, by parity, in order.
std::vector<std::pair<double, double>> columnAlong(const csgMesh& mesh, int axis, double u, double v);
/// The same for the vertical line through (x, z), bottom to top.
std::vector<std::pair<double, double>> columnOf(const csgMesh& mesh, double x, double z);
/// Length of what the mesh holds of the vertical line through (x, z).
double columnLength(const csgMesh& mesh, double x, double z);
/// Length of `land` that is left when the `holes` are cut out of it; stretches as columnOf gives them.
double lengthWithout(const std::vector<std::pair<double, double>>& land, std::vector<std::pair<double, double>> holes);
