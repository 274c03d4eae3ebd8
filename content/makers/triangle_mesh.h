#pragma once

#include "vec3.h"

#include <array>
#include <string>
#include <vector>

/// Triangles over shared points; corners run counter-clockwise seen from outside.
struct TriangleMesh {
    std::vector<Vec3> points;
    std::vector<std::array<int, 3>> triangles;
};

/// Twice the area times the outward direction of triangle t.
Vec3 triangleCross(const TriangleMesh& mesh, const std::array<int, 3>& t);

/// Rounds every coordinate to a multiple of 1/perUnit, so that it is short in text and read back exactly.
void quantize(TriangleMesh& mesh, double perUnit);

/// The mesh without its separate pieces of fewer triangles: crumbs in the air and bubbles in the rock.
TriangleMesh withoutCrumbs(const TriangleMesh& mesh, int leastTriangles);

/// What the game's solids must be: every edge used exactly once in each direction, no edge shorter than 0.05, no
/// triangle smaller than 0.01, positive volume. Returns a sentence about the first fault, empty when there is none.
std::string findSolidFault(const TriangleMesh& mesh);
